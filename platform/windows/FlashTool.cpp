// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/FlashTool.h"

#include <QCoreApplication>

QString platform::flashToolPath()
{
    return QCoreApplication::applicationDirPath() + QStringLiteral("/plugins/sunxi-tools/sunxi-fel.exe");
}
