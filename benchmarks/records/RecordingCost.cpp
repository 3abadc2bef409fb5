// SPDX-License-Identifier: GPL-3.0-or-later
// Recording one reading with a full persistent history, against serialising and writing the same rows.
#include "benchmarks/services/Measure.h"
#include "instrument/MultimeterHistory.h"
#include "instrument/MultimeterReading.h"

#include <QJsonDocument>
#include <QSaveFile>
#include <QTemporaryDir>

namespace {

constexpr int cRuns = 201;
constexpr double cHighestRatio = 1.3;

} // namespace

int main()
{
    const QTemporaryDir folder;
    const QString ours = folder.filePath(QStringLiteral("ours.json"));
    const QString plain = folder.filePath(QStringLiteral("plain.json"));
    const QDateTime now = QDateTime::currentDateTime();
    MultimeterHistory history;
    const auto record = [&history, &now] {
        history.record(MultimeterReading::Voltage, QStringLiteral("1.234V"), now, true);
    };
    for (int i = 0; i < MultimeterHistory::cMaxRows; ++i)
        record();
    const QJsonArray rows = QJsonArray::fromVariantList(history.persistentHistory());

    bool complete = true;
    const Comparison measured = compare(
        cRuns,
        [&] {
            record();
            complete = history.save(ours) && complete;
        },
        [&] {
            QSaveFile file(plain);
            const QByteArray text = QJsonDocument(rows).toJson(QJsonDocument::Indented);
            complete = file.open(QIODevice::WriteOnly) && file.write(text) == text.size() && file.commit() &&
                       complete;
        });
    if (!complete) {
        std::fprintf(stderr, "a file could not be written\n");
        return 1;
    }
    return report("recording one reading, full history", "QJsonDocument", measured, cHighestRatio) ? 0 : 2;
}
