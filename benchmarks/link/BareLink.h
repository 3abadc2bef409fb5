// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "app/GenToolbox.h"
#include "hid/HidLink.h"
#include "system/SystemManager.h"

#include <QTemporaryDir>

/// A link with its settings store, in a home folder of its own. There is no system manager, because its
/// background work would be measured too.
class BareLink
{
public:
    BareLink()
    {
        qputenv("HOME", QFile::encodeName(m_home.path()));
        m_toolbox = std::make_unique<GenToolbox>(nullptr);
        delete m_toolbox->systemManager();
    }

    HidLink* operator->() const { return m_toolbox->hidLink(); }
    HidLink& operator*() const { return *m_toolbox->hidLink(); }

private:
    const QTemporaryDir m_home;
    std::unique_ptr<GenToolbox> m_toolbox;
};
