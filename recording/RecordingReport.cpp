// SPDX-License-Identifier: GPL-3.0-or-later
#include "recording/RecordingReport.h"

#include "recording/RecordingText.h"
#include "recording/ReportData.h"
#include "storage/TimeText.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QLocale>
#include <QSaveFile>

#include <cmath>

using namespace recording;

/// The linker would leave out the resources of a static library. Not in a namespace, as Q_INIT_RESOURCE()
/// wants.
static void initReportResources()
{
    Q_INIT_RESOURCE(report);
}

namespace {

/// A table in the report has as many rows at most; a browser takes long to lay out more.
constexpr size_t cMostRows = 500;

QByteArray resource(const QString& name)
{
    QFile file(QStringLiteral(":/report/") + name);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

QString escaped(const QString& text)
{
    return text.toHtmlEscaped();
}

/// Returns \a value with \a decimals and \a unit, "–" for NaN.
QString valueText(double value, const QString& unit)
{
    constexpr int cDecimals = 3;
    return std::isfinite(value) ? QLocale().toString(value, 'f', cDecimals) + QLatin1Char(' ') + unit
                                : QStringLiteral("–");
}

/// Makes the parts of the page.
class ReportPage
{
    Q_DECLARE_TR_FUNCTIONS(RecordingReport)

public:
    ReportPage(RecordingReader& reader, const report::Data& data) : m_reader(reader), m_data(data) {}

    QByteArray html();

private:
    struct Row
    {
        QString name;
        Quantity quantity;
        QString unit;
    };

    QString wall(Time at) { return timeText(m_reader.wallTime(at)); }
    QString title();
    QString head();
    QString overview();
    QString supply(Supply supply);
    QString charts() const;
    QString gaps();
    QString marks();
    QString multimeter();
    QString remainder(size_t count) const;
    QString foot() const;
    static QString fact(const QString& name, const QString& value);
    static QString supplyName(Supply supply) { return supply == Supply::Main ? tr("Main") : tr("Type-C"); }
    bool isShown(Supply supply) const;

    RecordingReader& m_reader;
    const report::Data& m_data;
};

QString ReportPage::title()
{
    return tr("Recording of %1").arg(wall(m_data.info.start.at));
}

QString ReportPage::fact(const QString& name, const QString& value)
{
    return QStringLiteral("<div><dt>%1</dt><dd>%2</dd></div>\n").arg(escaped(name), escaped(value));
}

bool ReportPage::isShown(Supply supply) const
{
    return m_data.isUsed(supply) || (supply == Supply::Main && !m_data.isUsed(Supply::TypeC));
}

QString ReportPage::head()
{
    const QString device = (m_data.info.deviceId + QLatin1Char(' ') + m_data.info.deviceVersion).trimmed();
    return QStringLiteral("<h1>%1</h1>\n<p class=\"dim\">%2</p>\n")
        .arg(escaped(title()),
             escaped(device.isEmpty() ? tr("The instrument did not say its name.") : device));
}

QString ReportPage::overview()
{
    Time inGaps{0};
    for (const Gap& gap : m_data.gaps)
        inGaps += gap.to.value_or(m_data.info.duration) - gap.from;
    QString facts =
        fact(tr("Start"), wall(m_data.info.start.at)) + fact(tr("End"), wall(m_data.info.duration)) +
        fact(tr("Duration"), durationText(m_data.info.duration)) +
        fact(tr("Measurements"), QLocale().toString(m_data.info.rows)) +
        fact(tr("Gaps"), m_data.gaps.empty()
                             ? tr("None")
                             : tr("%1, together %2")
                                   .arg(QLocale().toString(static_cast<qulonglong>(m_data.gaps.size())),
                                        durationText(inGaps))) +
        fact(tr("Ended by"), m_data.info.endReason == EndReason::None ? tr("Still running, or interrupted")
                                                                      : endReasonText(m_data.info.endReason));
    if (m_data.info.interval > Time(0))
        facts += fact(tr("Stored every"),
                      QLocale().toString(std::chrono::duration<double>(m_data.info.interval).count()) +
                          QStringLiteral(" s"));
    return QStringLiteral("<section><dl>\n%1</dl></section>\n").arg(facts);
}

QString ReportPage::supply(Supply which)
{
    const bool main = which == Supply::Main;
    std::vector<Row> rows{
        {tr("Voltage"), main ? Quantity::MainVoltage : Quantity::TypeCVoltage, QStringLiteral("V")},
        {tr("Current"), main ? Quantity::MainCurrent : Quantity::TypeCCurrent, QStringLiteral("A")},
        {tr("Power"), main ? Quantity::MainPower : Quantity::TypeCPower, QStringLiteral("W")}};
    if (!main) {
        rows.push_back({QStringLiteral("D+"), Quantity::DPlus, QStringLiteral("V")});
        rows.push_back({QStringLiteral("D−"), Quantity::DMinus, QStringLiteral("V")});
        rows.push_back({QStringLiteral("CC1"), Quantity::CC1, QStringLiteral("V")});
        rows.push_back({QStringLiteral("CC2"), Quantity::CC2, QStringLiteral("V")});
    }
    QString table = QStringLiteral("<table><tr><th></th><th>%1</th><th>%2</th><th>%3</th></tr>\n")
                        .arg(escaped(tr("Minimum")), escaped(tr("Mean")), escaped(tr("Maximum")));
    for (const Row& row : rows) {
        const Extent& extent = m_data.extent(row.quantity);
        table += QStringLiteral("<tr><td>%1</td><td>%2</td><td>%3</td><td>%4</td></tr>\n")
                     .arg(escaped(row.name), valueText(extent.minimum, row.unit),
                          valueText(extent.mean, row.unit), valueText(extent.maximum, row.unit));
    }
    const Delivered& delivered = m_data.info.of(which);
    const std::optional<double> difference = counterDifference(delivered);
    QString totals = fact(tr("Charge"), chargeText(delivered.chargeMah)) +
                     fact(tr("Energy"), energyText(delivered.energyWh)) +
                     fact(tr("Instrument's counter"), chargeText(delivered.counterMah));
    QString warning;
    if (difference && counterDiffers(delivered))
        warning = QStringLiteral("<p class=\"warning\">%1</p>")
                      .arg(escaped(tr("The charge differs from the instrument's own counter by %1 %.")
                                       .arg(QLocale().toString(*difference * 100, 'f', 1))));
    return QStringLiteral("<section><h2><span class=\"key %1\"></span>%2</h2>\n<div class=\"wide\">%3</table>"
                          "</div>\n<dl class=\"totals\">%4</dl>%5</section>\n")
        .arg(main ? QStringLiteral("main") : QStringLiteral("type-c"), escaped(supplyName(which)), table,
             totals, warning);
}

QString ReportPage::charts() const
{
    if (m_data.points.empty())
        return QStringLiteral("<section><p>%1</p></section>\n")
            .arg(escaped(tr("The recording has no measurements.")));
    QString blocks;
    const std::array<std::array<QString, 3>, 3> quantities{
        {{QStringLiteral("voltage"), tr("Voltage"), QStringLiteral("V")},
         {QStringLiteral("current"), tr("Current"), QStringLiteral("A")},
         {QStringLiteral("power"), tr("Power"), QStringLiteral("W")}}};
    for (const auto& [id, name, unit] : quantities)
        blocks +=
            QStringLiteral("<div class=\"chart-block\"><div class=\"chart-head\"><b>%1 (%2)</b>"
                           "<span class=\"legend\" id=\"%3-legend\"></span></div>"
                           "<div class=\"chart\" id=\"%3\" role=\"img\" aria-label=\"%1\"></div></div>\n")
                .arg(escaped(name), unit, id);
    QString keys;
    for (const Supply supply : {Supply::Main, Supply::TypeC})
        if (isShown(supply))
            keys += QStringLiteral("<span><span class=\"key %1\"></span>%2</span> ")
                        .arg(supply == Supply::Main ? QStringLiteral("main") : QStringLiteral("type-c"),
                             escaped(supplyName(supply)));
    if (!m_data.gaps.empty())
        keys += QStringLiteral("<span><span class=\"key gap\"></span>%1</span>").arg(escaped(tr("Gap")));
    QString note = tr("Every measurement is a point.");
    if (m_data.step > Time(0))
        note = tr("A point stands for %1 s: the line is the mean, the band reaches from the minimum to the "
                  "maximum.")
                   .arg(std::chrono::duration_cast<std::chrono::seconds>(m_data.step).count());
    return QStringLiteral("<section class=\"charts\"><div class=\"toolbar\"><span>%1</span>"
                          "<button id=\"everything\" class=\"screen-only\">%2</button></div>\n%3"
                          "<p class=\"dim\">%4 <span class=\"screen-only\">%5</span></p></section>\n")
        .arg(keys, escaped(tr("Show everything")), blocks, escaped(note),
             escaped(tr("Drag across a chart to zoom in. Hold Shift and drag to move. Double-click to show "
                        "everything.")));
}

QString ReportPage::remainder(size_t count) const
{
    return count <= cMostRows
               ? QString()
               : QStringLiteral("<p class=\"dim\">%1</p>")
                     .arg(escaped(tr("The first %1 of %2 are shown.").arg(cMostRows).arg(count)));
}

QString ReportPage::gaps()
{
    if (m_data.gaps.empty())
        return {};
    QString rows;
    for (size_t i = 0; i < std::min(cMostRows, m_data.gaps.size()); ++i) {
        const Gap& gap = m_data.gaps[i];
        QString reason = gapReasonText(gap.reason);
        if (!gap.detail.isEmpty())
            reason += QStringLiteral(" (%1)").arg(gap.detail);
        rows += QStringLiteral(
                    "<tr><td>%1</td><td class=\"text\">%2</td><td>%3</td><td class=\"text\">%4</td></tr>\n")
                    .arg(wall(gap.from), gap.to ? wall(*gap.to) : escaped(tr("End of the recording")),
                         durationText(gap.to.value_or(m_data.info.duration) - gap.from), escaped(reason));
    }
    return QStringLiteral(
               "<section class=\"long\"><h2>%1</h2><div class=\"wide\"><table><tr><th>%2</th>"
               "<th class=\"text\">%3</th><th>%4</th><th class=\"text\">%5</th></tr>\n%6</table></div>"
               "%7</section>\n")
        .arg(escaped(tr("Gaps")), escaped(tr("From")), escaped(tr("To")), escaped(tr("Duration")),
             escaped(tr("Reason")), rows, remainder(m_data.gaps.size()));
}

QString ReportPage::marks()
{
    if (m_data.marks.empty())
        return {};
    QString rows;
    for (size_t i = 0; i < std::min(cMostRows, m_data.marks.size()); ++i)
        rows += QStringLiteral("<tr><td>%1</td><td class=\"text\">%2</td></tr>\n")
                    .arg(wall(m_data.marks[i].at), escaped(m_data.marks[i].text));
    return QStringLiteral(
               "<section class=\"long\"><h2>%1</h2><table><tr><th>%2</th><th class=\"text\">%3</th>"
               "</tr>\n%4</table>%5</section>\n")
        .arg(escaped(tr("Marks")), escaped(tr("Time")), escaped(tr("Text")), rows,
             remainder(m_data.marks.size()));
}

QString ReportPage::multimeter()
{
    if (m_data.multimeter.empty())
        return {};
    QString rows;
    for (size_t i = 0; i < std::min(cMostRows, m_data.multimeter.size()); ++i)
        rows += QStringLiteral("<tr><td>%1</td><td class=\"text\">%2</td></tr>\n")
                    .arg(wall(m_data.multimeter[i].at), escaped(m_data.multimeter[i].text));
    return QStringLiteral(
               "<section class=\"long\"><h2>%1</h2><table><tr><th>%2</th><th class=\"text\">%3</th>"
               "</tr>\n%4</table>%5</section>\n")
        .arg(escaped(tr("Multimeter")), escaped(tr("Time")), escaped(tr("Reading")), rows,
             remainder(m_data.multimeter.size()));
}

QString ReportPage::foot() const
{
    return QStringLiteral("<p class=\"dim\">%1</p>\n")
        .arg(escaped(tr("%1, recorded by %2. Charge and energy are integrated over the measurements, without "
                        "the gaps.")
                         .arg(QFileInfo(m_data.info.path).fileName(), m_data.info.program)));
}

QByteArray ReportPage::html()
{
    QString supplies;
    for (const Supply which : {Supply::Main, Supply::TypeC})
        if (isShown(which))
            supplies += supply(which);
    const QString body = head() + overview() + QStringLiteral("<div class=\"supplies\">\n") + supplies +
                         QStringLiteral("</div>\n") + charts() + gaps() + marks() + multimeter() + foot();
    return "<!DOCTYPE html>\n<html lang=\"" + QLocale().bcp47Name().toUtf8() +
           "\">\n<head>\n<meta charset=\"utf-8\">\n"
           "<meta name=\"viewport\" content=\"width=device-width, initial-scale=1\">\n"
           "<!--\n" +
           resource(QStringLiteral("NOTICE")) + "-->\n<title>" + escaped(title()).toUtf8() +
           "</title>\n<style>\n" + resource(QStringLiteral("dygraph.css")) + '\n' +
           resource(QStringLiteral("report.css")) + "</style>\n</head>\n<body>\n<main>\n" + body.toUtf8() +
           "</main>\n<script type=\"application/json\" id=\"data\">" +
           report::chartJson(m_data, {supplyName(Supply::Main), supplyName(Supply::TypeC)}) +
           "</script>\n<script>\n" + resource(QStringLiteral("dygraph.js")) + "\n</script>\n<script>\n" +
           resource(QStringLiteral("report.js")) + "</script>\n</body>\n</html>\n";
}

} // namespace

recording::Error report::write(const QString& path, const QString& target)
{
    initReportResources();
    RecordingReader reader;
    if (!reader.open(path))
        return reader.error();
    const report::Data data = report::collect(reader);
    const QByteArray html = ReportPage(reader, data).html();
    if (reader.error())
        return reader.error();
    QSaveFile file(target);
    if (!file.open(QIODevice::WriteOnly) || file.write(html) != html.size() || !file.commit())
        return {file.error() == QFileDevice::OpenError || file.error() == QFileDevice::PermissionsError
                    ? Failure::NoPermission
                    : Failure::InputOutput,
                target, file.errorString()};
    return {};
}

QString report::defaultTarget(const QString& path)
{
    const QFileInfo info(path);
    return info.dir().filePath(info.completeBaseName() + QStringLiteral(".html"));
}
