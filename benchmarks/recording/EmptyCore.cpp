// SPDX-License-Identifier: GPL-3.0-or-later
// The least that a program with Qt Core does.
#include <QCoreApplication>

int main(int argc, char** argv)
{
    const QCoreApplication app(argc, argv);
    return 0;
}
