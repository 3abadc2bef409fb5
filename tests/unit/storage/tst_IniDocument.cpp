// SPDX-License-Identifier: GPL-3.0-or-later
#include "storage/IniDocument.h"
#include "tests/support/TestCase.h"

#include <QCoreApplication>
#include <QSettings>
#include <QTemporaryDir>
#include <QtTest>

namespace {

QSettings* openSettings(const QString& path, QObject* parent)
{
    auto* settings = new QSettings(path, QSettings::IniFormat, parent);
    settings->setIniCodec("utf-8");
    return settings;
}

} // namespace

class IniDocumentTest : public TestCase
{
    Q_OBJECT

private Q_SLOTS:
    /// Files pass between versions of the application, and the earlier ones use QSettings.
    void agreesWithQSettings_data()
    {
        const test::Table<QString, QVariant> table("path", "value");
        table.row("number", "a/n", -70000);
        table.row("real", "a/r", 0.92);
        table.row("switch", "a/b", true);
        table.row("empty", "a/e", QString(""));
        table.row("invalid", "a/i", QVariant());
        table.row("Chinese", "a/host", QString("http://测试"));
        table.row("separators", "a/s", QString("a;b,c=d # e"));
        table.row("blanks around", "a/s", QString("  x  "));
        table.row("quotes", "a/q", QString(R"("C:\new" it's)"));
        table.row("controls before digits", "a/c",
                  QString("\x01\x1F"
                          "9f\t\r\n"));
        table.row("at sign", "a/at", QString("@Invalid()"));
        table.row("key with other letters", "窗 1/x y", 1);
        table.row("nested group", "a/b/c", 1);
        table.row("no group", "alone", 1);
        table.row("group called General", "General/x", 1);
    }

    void agreesWithQSettings()
    {
        QFETCH(QString, path);
        QFETCH(QVariant, value);
        const QTemporaryDir folder;
        QObject owner;
        QSettings* theirs = openSettings(folder.filePath("theirs.ini"), &owner);
        theirs->setValue(path, value);
        theirs->sync();
        const IniDocument read(test::contentOf(folder.filePath("theirs.ini")));
        QVERIFY(read.isComplete());
        QCOMPARE(read.value(path).value_or("nothing").toString(), value.toString());

        IniDocument written;
        written.setValue(path, value);
        QVERIFY(test::writeFile(folder.filePath("ours.ini"), written.text()));
        const QSettings* ours = openSettings(folder.filePath("ours.ini"), &owner);
        QCOMPARE(ours->allKeys(), theirs->allKeys());
        QCOMPARE(ours->value(path, "nothing").toString(), value.toString());
    }

    void changesOneValueAndNothingElse()
    {
        IniDocument document("\xEF\xBB\xBF; mine\r\n[a]\r\nx = 1 ; first\r\nwhat is this\r\n\r\n; "
                             "next\r\n[b\r\ny=\"2\r\n[a]\r\nx=3");
        QVERIFY(!document.isComplete());
        QCOMPARE(document.value("a/x"), std::optional<QVariant>("3"));
        QCOMPARE(document.value("b/y"), std::optional<QVariant>("2"));
        document.setValue("a/x", 4);
        document.setValue("b/z", 5);
        document.setValue("c/w", true);
        QCOMPARE(
            document.text(),
            QByteArray(
                "\xEF\xBB\xBF; mine\r\n[a]\r\nx = 1 ; first\r\nwhat is this\r\n\r\n; next\r\n[b\r\ny=\"2\r\n"
                "z=5\r\n[a]\r\nx=4\r\n\r\n[c]\r\nw=true\r\n"));
    }
};

QUORVEL_TEST_MAIN(IniDocumentTest, QCoreApplication)
#include "tst_IniDocument.moc"
