// SPDX-License-Identifier: GPL-3.0-or-later
// Writing a curve archive (JSON and CSV) and loading it back, against plain QJsonDocument on the same data.
// The floor of writing saves the same two files, with a prepared text for the table.
#include "benchmarks/services/Measure.h"
#include "instrument/CurveArchive.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QSaveFile>
#include <QTemporaryDir>

#include <random>

namespace {

constexpr double cHighestRatio = 1.3;
constexpr double cSampleIntervalSec = 0.08;
constexpr double cHighestGrowth = 1.3;

/// Returns readings as an instrument sends them: single precision, from 0 to \a top.
QVariantList readings(int count, double top, unsigned seed)
{
    std::mt19937 generator(seed);
    std::uniform_real_distribution<float> reading(0, float(top));
    QVariantList samples;
    for (int i = 0; i < count; ++i)
        samples.append(double(reading(generator)));
    return samples;
}

bool write(const QString& path, const QByteArray& text)
{
    QSaveFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(text) == text.size() && file.commit();
}

struct CurveCosts
{
    Comparison write;
    Comparison load;
};

CurveCosts measure(int samples, int runs, bool& complete)
{
    const QTemporaryDir folder;
    const QString ours = folder.filePath(QStringLiteral("ours.json"));
    const QString plain = folder.filePath(QStringLiteral("plain.json"));
    const QString plainTable = folder.filePath(QStringLiteral("plain.csv"));
    const QVariantList volts = readings(samples, 12, 1);
    const QVariantList amperes = readings(samples, 6, 2);
    CurveArchive archive;
    archive.sampleIntervalSec = cSampleIntervalSec;
    archive.voltageSamples = volts;
    archive.currentSamples = amperes;
    const QByteArray table = archive.toCsv();
    CurveCosts costs;
    costs.write = compare(
        runs, [&] { complete = archive.save(ours) && complete; },
        [&] {
            const QJsonObject object{
                {QStringLiteral("sample_interval_sec"), cSampleIntervalSec},
                {QStringLiteral("voltage_samples"), QJsonArray::fromVariantList(volts)},
                {QStringLiteral("current_samples"), QJsonArray::fromVariantList(amperes)}};
            complete = write(plain, QJsonDocument(object).toJson(QJsonDocument::Indented)) && complete;
            complete = write(plainTable, table) && complete;
        });
    costs.load = compare(
        runs,
        [&] {
            CurveArchive loaded;
            complete = CurveArchive::load(ours, loaded) == CurveArchive::LoadStatus::Loaded && complete;
            complete = loaded.toMap(ours).size() == 7 && complete;
        },
        [&] {
            QFile file(ours);
            complete = file.open(QIODevice::ReadOnly) && complete;
            const QJsonObject object = QJsonDocument::fromJson(file.readAll()).object();
            const QVariantMap map{
                {QStringLiteral("voltageSamples"),
                 object.value(QStringLiteral("voltage_samples")).toArray().toVariantList()},
                {QStringLiteral("currentSamples"),
                 object.value(QStringLiteral("current_samples")).toArray().toVariantList()}};
            complete = map.size() == 2 && complete;
        });
    return costs;
}

/// Compares the growth of the cost per sample with that of the floor. Large texts cost every program more
/// memory traffic.
bool reportGrowth(const char* name, const Comparison& few, const Comparison& many)
{
    const double growth = many.ratio() / few.ratio();
    std::printf("%-44s growth against the floor's %4.2fx (aim at most %.1fx)\n", name, growth,
                cHighestGrowth);
    return growth <= cHighestGrowth;
}

} // namespace

int main()
{
    // The wave page keeps at most this many samples. Larger archives are loaded but never written.
    constexpr int cFew = 3000;
    constexpr int cMany = 300000;
    bool complete = true;
    const CurveCosts few = measure(cFew, 101, complete);
    const CurveCosts many = measure(cMany, 11, complete);
    if (!complete) {
        std::fprintf(stderr, "an archive could not be written or read\n");
        return 1;
    }
    bool met = report("archive of 3,000 samples, write", "QJsonDocument", few.write, cHighestRatio);
    met = report("archive of 3,000 samples, load", "QJsonDocument", few.load, cHighestRatio) && met;
    met = report("archive of 300,000 samples, load", "QJsonDocument", many.load, cHighestRatio) && met;
    met = reportGrowth("archive load, 300,000 against 3,000", few.load, many.load) && met;
    return met ? 0 : 2;
}
