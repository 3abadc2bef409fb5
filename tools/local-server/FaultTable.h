// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <QStringList>

#include <condition_variable>
#include <map>
#include <mutex>
#include <optional>

/// A fault in the answer to a path.
struct Fault
{
    enum class Kind {
        None,
        Slow,      ///< value: bytes per second, 16384 by default
        Stalled,   ///< half of the body, then nothing more
        Truncated, ///< half of the announced body, then the end of the connection
        NoLength,  ///< no Content-Length
        Status,    ///< value: HTTP status, 500 by default
        Redirect,  ///< to the same content at another address
        Loop,      ///< a redirect to itself
        Garbage,   ///< random bytes in the place of the content
        Huge,      ///< a body without end
        Never      ///< no answer at all
    };

    Kind kind = Kind::None;
    /// See the kinds; 0 means the kind's default.
    int value = 0;

    /// Parses "KIND" or "KIND:VALUE"; names() lists the kinds. Empty when \a text is neither.
    static std::optional<Fault> fromText(const QString& text);
    static QStringList names();
    QString toText() const;
};

/**
 * The faults of each path. Every function may be called from any thread.
 *
 * A path that ends in "*" matches every path with that beginning; the longest match counts.
 */
class FaultTable
{
public:
    void set(const QString& path, const Fault& fault);
    /// Removes the fault of \a path, or all faults when it is empty. Answers that hang continue.
    void clear(const QString& path = {});
    Fault find(const QString& path) const;
    /// One line "PATH KIND" per entry.
    QStringList describe() const;

    /// Blocks until the table changes or until stop(), for at most \a timeoutMs.
    void waitForChange(int timeoutMs) const;
    /// Wakes all waiting threads; later waits return at once.
    void stop();
    bool isStopped() const;

private:
    /// Guards the members below.
    mutable std::mutex m_mutex;
    mutable std::condition_variable m_changed;
    std::map<QString, Fault> m_faults;
    unsigned m_generation = 0;
    bool m_stopped = false;
};
