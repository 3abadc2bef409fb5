// SPDX-License-Identifier: GPL-3.0-or-later
#include "qmlsupport/DesignFonts.h"

#include <QFont>
#include <QFontDatabase>
#include <QFontMetrics>
#include <QGuiApplication>

namespace design {

QString normalFontFamily()
{
    return QStringLiteral("Microsoft YaHei");
}

QString boldFontFamily()
{
    return QStringLiteral("Microsoft YaHei UI Bold");
}

QString fixedFontFamily()
{
    if (qGuiApp == nullptr)
        return QStringLiteral("Consolas");
    return QFontDatabase::systemFont(QFontDatabase::FixedFont).family();
}

double fontDescent(int pointSize)
{
    return QFontMetrics(QFont(normalFontFamily(), pointSize)).descent();
}

} // namespace design
