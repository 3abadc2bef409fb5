// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/FlashTool.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <QStandardPaths>

QString platform::flashToolPath()
{
    const QString shipped =
        QCoreApplication::applicationDirPath() + QStringLiteral("/plugins/sunxi-tools/sunxi-fel");
    if (QFileInfo(shipped).isExecutable())
        return shipped;
    const QString installed = QStandardPaths::findExecutable(QStringLiteral("sunxi-fel"));
    return installed.isEmpty() ? shipped : installed;
}
