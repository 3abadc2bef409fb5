// SPDX-License-Identifier: GPL-3.0-or-later
#include "upgrade/UpdateVersion.h"

#include <QStringList>

bool isNewerVersion(const QString& current, const QString& latest)
{
    const QStringList currentParts = current.split(QLatin1Char('.'));
    const QStringList latestParts = latest.split(QLatin1Char('.'));
    const int count = qMax(currentParts.size(), latestParts.size());
    for (int i = 0; i < count; ++i) {
        // value() gives an empty text past the end and toLongLong() 0 for anything but a number.
        const qlonglong c = currentParts.value(i).toLongLong();
        const qlonglong l = latestParts.value(i).toLongLong();
        if (l != c)
            return l > c;
    }
    return false;
}
