// SPDX-License-Identifier: GPL-3.0-or-later
#include "hid/HidLink.h"
#include "storage/DataFolders.h"
#include "tests/support/FileSizeLimit.h"
#include "tests/support/TestCase.h"

#include <QtTest>

class HidLinkCurvesTest : public TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        TestCase::init();
        QDir(folders::curves()).removeRecursively();
        QFile::remove(folders::curves());
        m_link = std::make_unique<HidLink>(nullptr, nullptr);
        m_link->setClock([this] { return m_now.toMSecsSinceEpoch(); });
    }

    void archiveIsWrittenAndLoadedBack()
    {
        QSignalSpy archived(m_link.get(), &HidLink::curveArchived);
        QSignalSpy loaded(m_link.get(), &HidLink::curveArchiveLoaded);
        const QString path = m_link->archiveCurrentCurve({1.5, 2}, {0.25, "no number", 0.75}, 0.5);
        QCOMPARE(path, folders::curves() + QStringLiteral("/curve_20260301_140509.json"));
        QCOMPARE(archived.value(0), QVariantList{path});
        QVERIFY(QFile::exists(folders::curves() + QStringLiteral("/curve_20260301_140509.csv")));

        const QVariantMap expected{{"filePath", path},
                                   {"createdAt", "2026-03-01T14:05:09"},
                                   {"deviceId", QString()},
                                   {"deviceVersion", QString()},
                                   {"sampleIntervalSec", 0.5},
                                   {"voltageSamples", QVariantList{1.5, 2.0}},
                                   {"currentSamples", QVariantList{0.25, 0.0, 0.75}}};
        QCOMPARE(m_link->loadCurveArchive(path), expected);
        QCOMPARE(loaded.value(0), QVariantList{path});
        // Nothing recorded is a curve as well.
        const QString empty = m_link->archiveCurrentCurve({}, {}, 0.08);
        QCOMPARE(m_link->loadCurveArchive(empty).value("voltageSamples"), QVariant(QVariantList()));
    }

    void failuresAreReported_data()
    {
        const test::Table<QString, QString> table("message", "fault");
        table.row("no folder", "Failed to create archive directory: ", "folder");
        table.row("full disk", "Failed to write curve archive: ", "disk");
        table.row("missing file", "Failed to open curve archive: ", "missing");
        table.row("no archive", "Invalid curve archive: ", "invalid");
        table.row("nothing to show", "File does not exist: ", "reveal");
    }

    void failuresAreReported()
    {
        QFETCH(QString, message);
        QFETCH(QString, fault);
        QSignalSpy errors(m_link.get(), &HidLink::errorOccurred);
        const QString folder = folders::curves();
        QString path = folder + QStringLiteral("/curve_20260301_140509.json");
        if (fault == QLatin1String("folder")) {
            path = folder;
            QVERIFY(QDir().rmdir(folder));
            QFile inPlaceOfTheFolder(folder);
            QVERIFY(inPlaceOfTheFolder.open(QIODevice::WriteOnly));
            QCOMPARE(m_link->archiveCurrentCurve({1}, {1}, 0.08), QString());
        } else if (fault == QLatin1String("disk")) {
            if (!test::FileSizeLimit::isSupported())
                QSKIP("the size of files cannot be limited here");
            const test::FileSizeLimit diskFull(16);
            QCOMPARE(m_link->archiveCurrentCurve({1}, {1}, 0.08), QString());
            QVERIFY(!QFile::exists(path));
        } else if (fault == QLatin1String("missing")) {
            QCOMPARE(m_link->loadCurveArchive(path), QVariantMap());
        } else if (fault == QLatin1String("invalid")) {
            m_link->archiveCurrentCurve({1}, {1}, 0.08);
            path.replace(QLatin1String(".json"), QLatin1String(".csv"));
            QCOMPARE(m_link->loadCurveArchive(path), QVariantMap());
        } else {
            QVERIFY(!m_link->revealPath(path));
            // Nothing to show is no fault.
            QVERIFY(!m_link->revealPath(QString()));
        }
        QCOMPARE(errors.count(), 1);
        QCOMPARE(errors.value(0), QVariantList{message + path});
    }

private:
    const QDateTime m_now{QDate(2026, 3, 1), QTime(14, 5, 9)};
    std::unique_ptr<HidLink> m_link;
};

QUORVEL_TEST_MAIN(HidLinkCurvesTest, QCoreApplication)
#include "tst_HidLinkCurves.moc"
