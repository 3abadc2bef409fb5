// SPDX-License-Identifier: GPL-3.0-or-later
#include "cli/Console.h"

#include "platform/Terminal.h"

#include <QJsonDocument>
#include <QtGlobal>

#include <cstdio>

namespace cli::console {

namespace {

bool progressShown = false;

bool wantsColour()
{
    return platform::isTerminal(stderr) && qEnvironmentVariableIsEmpty("NO_COLOR");
}

void writeError(const QByteArray& bytes)
{
    std::fwrite(bytes.constData(), 1, static_cast<size_t>(bytes.size()), stderr);
    std::fflush(stderr);
}

} // namespace

bool write(const QByteArray& bytes)
{
    const auto size = static_cast<size_t>(bytes.size());
    return std::fwrite(bytes.constData(), 1, size, stdout) == size;
}

bool writeLine(const QString& line)
{
    return write(line.toLocal8Bit() + '\n');
}

bool writeJson(const QJsonObject& object)
{
    return write(QJsonDocument(object).toJson(QJsonDocument::Compact) + '\n') && flush();
}

bool flush()
{
    return std::fflush(stdout) == 0;
}

int fail(ExitCode code, const QString& text)
{
    endProgress();
    flush();
    const QByteArray line = "quorvel-cli: " + text.toLocal8Bit();
    writeError(wantsColour() ? "\x1b[31m" + line + "\x1b[0m\n" : line + '\n');
    return code;
}

int fail(const recording::Error& error)
{
    return fail(exitCodeOf(error.failure), recording::errorText(error));
}

void note(const QString& text)
{
    endProgress();
    writeError(text.toLocal8Bit() + '\n');
}

void showProgress(const QString& line)
{
    if (!platform::isTerminal(stderr))
        return;
    progressShown = true;
    // Back to the start of the line; what a longer line left is erased.
    writeError("\r" + line.toLocal8Bit() + "\x1b[K");
}

void endProgress()
{
    if (progressShown)
        writeError("\n");
    progressShown = false;
}

} // namespace cli::console
