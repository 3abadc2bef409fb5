// SPDX-License-Identifier: GPL-3.0-or-later
#include "firmware/FlashProgress.h"

#include <QRegularExpression>

#include <algorithm>

namespace flash {

namespace {

constexpr double cDownloadShare = 30.0;

/// The band of a stage in the upgrade's progress: where it begins and what one percent is worth.
struct Band
{
    double begin;
    double perPercent;
};

constexpr Band cBootBand{30.0, 0.2};
constexpr Band cLogoBand{50.0, 0.2};
constexpr Band cExecBand{70.0, 0.3};

const QRegularExpression& percentage()
{
    static const QRegularExpression expression(QStringLiteral("(\\d+)%"));
    return expression;
}

int progressIn(Band band, int percent)
{
    return int(band.begin + band.perPercent * percent);
}

double fractionOf(qint64 received, qint64 total)
{
    return std::clamp(double(received) / double(total), 0.0, 1.0);
}

} // namespace

QStringList writeArguments(const QString& address, const QString& path)
{
    return {QStringLiteral("-p"), QStringLiteral("spiflash-write"), address, path};
}

QStringList readArguments(const QString& address, qint64 size, const QString& path)
{
    return {QStringLiteral("-p"), QStringLiteral("spiflash-read"), address, QString::number(size), path};
}

std::optional<int> percentIn(const QString& output)
{
    const QRegularExpressionMatch match = percentage().match(output);
    if (!match.hasMatch())
        return std::nullopt;
    bool fits = false;
    const int percent = match.capturedRef(1).toInt(&fits);
    return fits ? std::min(percent, 100) : 100;
}

int overallProgress(int stage, int percent)
{
    switch (stage) {
    case cBoot:
        return progressIn(cBootBand, percent);
    case cLogo:
        return progressIn(cLogoBand, percent);
    case cExec:
        return progressIn(cExecBand, percent);
    default:
        return 0;
    }
}

int downloadProgress(int index, int count, qint64 received, qint64 total)
{
    return int((index + fractionOf(received, total)) / count * cDownloadShare);
}

int downloadPercent(qint64 received, qint64 total)
{
    return int(fractionOf(received, total) * 100);
}

bool reportsWritten(const QString& output)
{
    QString last;
    for (auto matches = percentage().globalMatch(output); matches.hasNext();)
        last = matches.next().captured(1);
    return last == QLatin1String("100");
}

} // namespace flash
