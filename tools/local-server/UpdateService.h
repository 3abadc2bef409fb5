// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <atomic>
#include <optional>

/**
 * Answers version checks and provides the installer. Every function may be called from any thread.
 */
class UpdateService
{
public:
    enum class Mode {
        Newer,         ///< a newer version with everything right
        Same,          ///< the version that asks
        Older,         ///< an older one
        Ignored,       ///< a newer one under a number of its own, for "Ignore this version"
        None,          ///< "need_update" is false
        Malformed,     ///< the answer is no JSON
        WrongHash,     ///< the installer has another SHA-256 than announced
        UpperCaseHash, ///< the hash in capital letters
        MissingLength, ///< the installer comes without Content-Length
        Truncated      ///< the installer breaks off in the middle
    };

    /// \a installerBytes is the size of the generated installer.
    explicit UpdateService(int installerBytes);

    static std::optional<Mode> modeFromText(const QString& text);
    static QStringList modeNames();
    void setMode(Mode mode) { m_mode = mode; }
    Mode mode() const { return m_mode; }

    /// Returns the answer to \a question, with addresses below \a baseUrl. Empty when the question is not a
    /// JSON object with "version" and "platform".
    QByteArray answer(const QByteArray& question, const QString& baseUrl) const;
    QByteArray installer() const { return m_installer; }
    static QString installerPath();

private:
    const QByteArray m_installer;
    const QString m_sha256;
    std::atomic<Mode> m_mode{Mode::Same};
};
