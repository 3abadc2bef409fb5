// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QObject>
#include <QRegularExpression>
#include <QStringList>

/**
 * Base of the test classes: a test function during which an unexpected warning is printed fails.
 *
 * A test class with an init() or cleanup() of its own calls the ones here first.
 */
class TestCase : public QObject
{
    Q_OBJECT

public:
    using QObject::QObject;

    /// Allows warnings that match \a pattern until the present test function ends.
    static void expectWarning(const QString& pattern);

protected Q_SLOTS:
    void init();
    void cleanup();
};

namespace test {

/// Points HOME, the XDG folders and the Documents and Desktop folders at a temporary folder, which is
/// removed when the process ends. Call it before the application object is created.
void isolateHome();

} // namespace test

/// The main function of a test program: a home folder of its own, an application, then the tests.
#define QUORVEL_TEST_MAIN(TestClass, Application)                                                            \
    int main(int argc, char** argv)                                                                          \
    {                                                                                                        \
        test::isolateHome();                                                                                 \
        Application app(argc, argv);                                                                         \
        TestClass testObject;                                                                                \
        return QTest::qExec(&testObject, argc, argv);                                                        \
    }
