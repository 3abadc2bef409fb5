// SPDX-License-Identifier: GPL-3.0-or-later
#include "cli/Command.h"
#include "platform/Terminal.h"
#include "storage/ApplicationInfo.h"

#include <QCoreApplication>
#include <QLocale>
#include <QLoggingCategory>
#include <QTranslator>

int main(int argc, char** argv)
{
    platform::makeBinary(stdout);
    // The standard error is for messages to the user. QT_LOGGING_RULES brings the others back.
    QLoggingCategory::setFilterRules(QStringLiteral("default.debug=false"));
    QCoreApplication app(argc, argv);
    // The lock file of a recording names it.
    QCoreApplication::setApplicationName(QStringLiteral("quorvel-cli"));
    QCoreApplication::setApplicationVersion(applicationVersion());
    QTranslator translator;
    if (QLocale().language() == QLocale::Chinese &&
        translator.load(QStringLiteral(":/localization/accessibility_cn.qm")))
        QCoreApplication::installTranslator(&translator);
    return cli::run(QCoreApplication::arguments());
}
