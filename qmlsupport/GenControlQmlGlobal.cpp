// SPDX-License-Identifier: GPL-3.0-or-later
#include "qmlsupport/GenControlQmlGlobal.h"

#include "platform/ChildProcess.h"
#include "storage/ApplicationInfo.h"

#include <QApplication>
#include <QLocale>
#include <QMessageBox>

void GenControlQmlGlobal::restartApp()
{
    // This function ends the program. The last closed window must not do that.
    QGuiApplication::setQuitOnLastWindowClosed(false);
    QApplication::closeAllWindows();
    // Program and arguments are separate, so that a path with blanks or quotes works.
    platform::ChildProcess next;
    next.setProgram(QCoreApplication::applicationFilePath());
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    // This instance still listens and has the instrument open. The new one waits for its end.
    environment.insert(QLatin1String(cRestartVariable), QStringLiteral("1"));
    next.setProcessEnvironment(environment);
    if (next.startDetached()) {
        QCoreApplication::exit(0);
        return;
    }
    // The message runs no event loop of its own, because the caller may be a QML handler.
    auto* box =
        new QMessageBox(QMessageBox::Critical, QCoreApplication::translate("QObject", "Quorvel"),
                        QCoreApplication::translate(
                            "QObject", "Quorvel could not be started again. Please start it yourself."));
    box->setAttribute(Qt::WA_DeleteOnClose);
    connect(box, &QMessageBox::finished, qApp, [] { QCoreApplication::exit(0); });
    box->show();
}

bool GenControlQmlGlobal::isChineseLanguage() const
{
    return QLocale(QLocale::Chinese).name() == QLatin1String("zh_CN");
}
