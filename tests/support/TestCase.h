// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QObject>
#include <QRegularExpression>
#include <QStringList>
#include <QtTest>

/**
 * Base of the test classes. An unexpected warning fails the test function that caused it.
 *
 * A test class with its own init() or cleanup() calls these ones first.
 */
class TestCase : public QObject
{
    Q_OBJECT

public:
    using QObject::QObject;

    /// Allows warnings that match \a pattern until the current test function ends.
    static void expectWarning(const QString& pattern);

protected Q_SLOTS:
    void init();
    void cleanup();
};

namespace test {

/// The table of a data function. The constructor takes the names of the columns in the order of their types.
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

/// Replaces the file by \a content. Returns false on failure.
bool writeFile(const QString& path, const QByteArray& content);
/// Returns the content of the file; empty when it cannot be read.
QByteArray contentOf(const QString& path);

/// Points HOME, the temporary folder and the folders of the user at a temporary folder, which is removed when
/// the process ends. Sets the language of the system to Arabic as in Egypt, which has its own digits: files
/// and logs must not use them. Call it before the application object is created.
void isolateHome();

} // namespace test

/// The main function of a test program: sets up a home folder, makes the application and runs the tests.
#define QUORVEL_TEST_MAIN(TestClass, Application)                                                            \
    int main(int argc, char** argv)                                                                          \
    {                                                                                                        \
        test::isolateHome();                                                                                 \
        Application app(argc, argv);                                                                         \
        TestClass testObject;                                                                                \
        return QTest::qExec(&testObject, argc, argv);                                                        \
    }
