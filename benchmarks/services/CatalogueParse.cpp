// SPDX-License-Identifier: GPL-3.0-or-later
// Time to read a firmware catalogue, against the time to parse its JSON only.
#include "benchmarks/services/Measure.h"
#include "firmware/FirmwareCatalogue.h"

#include <QJsonDocument>

namespace {

constexpr int cRuns = 21;
constexpr int cTypes = 10'000;
constexpr double cHighestRatio = 1.5;

QByteArray bigCatalogue()
{
    QByteArray json = "{\"firmware\":[";
    for (int i = 0; i < cTypes; ++i) {
        const QByteArray number = QByteArray::number(i);
        json += i == 0 ? "" : ",";
        json += "{\"type\":\"F1C100s revision " + number + "\",\"files\":[";
        for (const char* name : {"boot.bin", "logo.bin", "f1c100s.bin"}) {
            json += QByteArray(name) == "boot.bin" ? "" : ",";
            json += "{\"url\":\"http://127.0.0.1:8078/files/" + number + '/' + name + "\",\"name\":\"" +
                    name + "\"}";
        }
        json += "]}";
    }
    return json + "]}";
}

} // namespace

int main()
{
    const QByteArray json = bigCatalogue();
    int types = 0;
    bool parsed = true;
    const Comparison measured = compare(
        cRuns, [&] { types = FirmwareCatalogue::fromJson(json).byType.size(); },
        [&] { parsed = parsed && QJsonDocument::fromJson(json).isObject(); });
    if (types != cTypes || !parsed) {
        std::fprintf(stderr, "%d of %d types were read\n", types, cTypes);
        return 1;
    }
    return report("catalogue of 10,000 types", "QJsonDocument", measured, cHighestRatio) ? 0 : 2;
}
