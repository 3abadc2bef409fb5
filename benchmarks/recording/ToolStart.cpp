// SPDX-License-Identifier: GPL-3.0-or-later
// Time of a whole run of "quorvel-cli list", against an empty program with Qt Core.
#include "benchmarks/services/Measure.h"

#include <QCoreApplication>
#include <QProcess>

namespace {

constexpr int cRuns = 41;
constexpr double cHighestRatio = 1.5;

void runProgram(const QString& program, const QStringList& arguments)
{
    QProcess process;
    process.start(program, arguments);
    if (!process.waitForFinished() || process.exitStatus() != QProcess::NormalExit)
        std::abort();
}

} // namespace

/// The operands are the paths of quorvel-cli and of the empty program.
int main(int argc, char** argv)
{
    const QCoreApplication app(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.size() != 3)
        return 1;
    const Comparison measured = compare(
        cRuns, [&] { runProgram(arguments[1], {QStringLiteral("list")}); },
        [&] { runProgram(arguments[2], {}); });
    return report("quorvel-cli list, from start to end", "empty program", measured, cHighestRatio) ? 0 : 2;
}
