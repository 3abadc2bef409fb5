// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QString>

/// Describes a packet of the host for the trace: "ui-control direction=1 layer0=4 …",
/// "curve index=0 count=2 points=1.5,2.5,…", or its length and bytes.
QString hostPacketText(const QByteArray& packet);
