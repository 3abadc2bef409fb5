// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/support/TestCase.h"
#include "upgrade/FileDigest.h"
#include "upgrade/UpdateAnswer.h"

#include <QCryptographicHash>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTemporaryDir>
#include <QtTest>

namespace {

/// JSON written with single quotes.
QByteArray json(const char* text)
{
    return QByteArray(text).replace('\'', '"');
}

} // namespace

class UpdateAnswerTest : public TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void everyMemberIsRead()
    {
        const UpdateAnswer answer = UpdateAnswer::fromJson(
            json("{'code':0,'data':{'need_update':true,'url':'http://h/p','latest_version':'1.2',"
                 "'sha256':'AB12','desc':'第一行 second','extra':[1]}}"));
        QVERIFY(answer.isValid);
        QVERIFY(answer.needUpdate);
        QCOMPARE(answer.url, QStringLiteral("http://h/p"));
        QCOMPARE(answer.latestVersion, QStringLiteral("1.2"));
        QCOMPARE(answer.sha256, QStringLiteral("AB12"));
        QCOMPARE(answer.description, QString::fromUtf8("第一行 second"));
    }

    void strangeBodies_data()
    {
        const test::Table<QByteArray, bool, bool> table("body", "valid", "needUpdate");
        table.row("empty", {}, false, false);
        table.row("web page", "<html>502</html>", false, false);
        table.row("array", json("[{'data':{'need_update':true}}]"), false, false);
        table.row("text", "\"data\"", false, false);
        table.row("truncated", json("{'data':{'need_update':true"), false, false);
        table.row("trailing garbage", json("{'data':{'need_update':true}} x"), false, false);
        table.row("no UTF-8", "{\"data\":{\"desc\":\"\xff\xfe\"}}", false, false);
        table.row("binary", QByteArray(64, '\0'), false, false);
        table.row("nesting bomb", QByteArray(100000, '['), false, false);
        table.row("empty object", "{}", true, false);
        table.row("data is no object", json("{'data':[true]}"), true, false);
        table.row("null", json("{'data':{'need_update':null}}"), true, false);
        table.row("number", json("{'data':{'need_update':1}}"), true, false);
        table.row("word", json("{'data':{'need_update':'true'}}"), true, false);
        table.row("outside data", json("{'need_update':true,'data':{}}"), true, false);
        table.row(
            "texts without an offer",
            json("{'data':{'need_update':false,'url':'u','latest_version':'9','sha256':'a','desc':'d'}}"),
            true, false);
        table.row("nothing else", json("{'data':{'need_update':true}}"), true, true);
        table.row("wrong types",
                  QByteArray(json(
                      "{'data':{'need_update':true,'url':7,'latest_version':1.2,'sha256':{},'desc':[]}}")),
                  true, true);
    }

    /// Only strings become text. Without an offer every member is empty.
    void strangeBodies()
    {
        QFETCH(QByteArray, body);
        const UpdateAnswer answer = UpdateAnswer::fromJson(body);
        QTEST(answer.isValid, "valid");
        QTEST(answer.needUpdate, "needUpdate");
        QVERIFY((answer.url + answer.latestVersion + answer.sha256 + answer.description).isEmpty());
    }

    void questionNamesVersionAndPlatform()
    {
        const QByteArray body = versionCheckBody("1.1.4");
        QVERIFY2(body.contains('\n'), "the text is indented");
        const QJsonObject question = QJsonDocument::fromJson(body).object();
        QCOMPARE(question, (QJsonObject{{"version", "1.1.4"}, {"platform", "windows"}}));
    }

    /// The size of the blocks does not change the digest. Unreadable files have no digest.
    void fileDigest()
    {
        const QTemporaryDir folder;
        const QString path = folder.filePath("package");
        for (const int size : {0, 1, 8191, 8192, 8193, 100000}) {
            QByteArray bytes(size, '\0');
            for (int i = 0; i < size; ++i)
                bytes[i] = char(i * 7);
            QVERIFY(test::writeFile(path, bytes));
            QCOMPARE(sha256OfFile(path),
                     QString(QCryptographicHash::hash(bytes, QCryptographicHash::Sha256).toHex()));
        }
        QCOMPARE(sha256OfFile(folder.filePath("absent")), QString());
        QCOMPARE(sha256OfFile(folder.path()), QString());
        QCOMPARE(sha256OfFile(QString()), QString());
    }
};

QUORVEL_TEST_MAIN(UpdateAnswerTest, QCoreApplication)
#include "tst_UpdateAnswer.moc"
