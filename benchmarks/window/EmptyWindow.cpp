// SPDX-License-Identifier: GPL-3.0-or-later
// The floor of the window benchmarks: the smallest Qt Quick program with this interface's imports.
#include <QApplication>
#include <QQmlApplicationEngine>

int main(int argc, char** argv)
{
    QCoreApplication::setAttribute(Qt::AA_EnableHighDpiScaling, true);
    QCoreApplication::setAttribute(Qt::AA_UseHighDpiPixmaps, true);
    QCoreApplication::setAttribute(Qt::AA_ShareOpenGLContexts, true);
    QApplication app(argc, argv);
    QQmlApplicationEngine engine(QUrl(QStringLiteral("qrc:/Empty.qml")));
    return engine.rootObjects().isEmpty() ? 1 : QCoreApplication::exec();
}
