// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QObject>
#include <QRegularExpression>
#include <QStringList>
#include <QtTest>

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

/// The table of a data function: its columns by name, in the order of their types, then row() for row().
template <typename... Columns>
class Table
{
public:
    template <typename... Names>
    explicit Table(Names... names)
    {
        (QTest::addColumn<Columns>(names), ...);
    }
    void row(const char* name, const Columns&... values) const { (QTest::newRow(name) << ... << values); }
};

/// Writes a file that holds just \a content; false when that fails.
bool writeFile(const QString& path, const QByteArray& content);
/// What the file holds; empty when it cannot be read.
QByteArray contentOf(const QString& path);

/// Points HOME, the temporary folder and the folders of the user at a temporary folder, which is removed when
/// the process ends. The language of the system becomes one with digits of its own, Arabic as in
/// Egypt: files and logs must not use them. Call it before the application object is created.
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
