// SPDX-License-Identifier: GPL-3.0-or-later
#include "qmlsupport/GenControlQmlGlobal.h"

#include <QApplication>
#include <QLocale>
#include <QProcess>

void GenControlQmlGlobal::restartApp()
{
    QApplication::closeAllWindows();
    // Program and arguments apart, so that a path with blanks or quotes starts too.
    QProcess::startDetached(QCoreApplication::applicationFilePath(), {});
    QCoreApplication::exit(0);
}

bool GenControlQmlGlobal::isChineseLanguage() const
{
    return QLocale(QLocale::Chinese).name() == QLatin1String("zh_CN");
}
