// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "instrument/HidHandle.h"

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <functional>
#include <vector>

/**
 * Finds the instrument among the HID devices and opens it. Keeps hidapi initialised as long as it lives, so
 * it must outlive the handles that it opened. Used on one thread.
 */
class InstrumentDiscovery
{
public:
    /// The USB ids of the instrument; nothing else decides which devices are tried.
    static constexpr unsigned short cVendorId = 0x0483;
    static constexpr unsigned short cProductId = 0x5750;
    /// Takes a line for the log of the link.
    using Log = std::function<void(const QString& line)>;

    struct Found
    {
        HidHandle device;       ///< opened for blocking reads; null when no device could be opened
        QString path;           ///< of the device
        QByteArray firstPacket; ///< a valid packet that was read while probing, or empty
    };

    /// A device on the bus with the ids of the instrument.
    struct Candidate
    {
        QString path;
        QString product; ///< as the device says it
        QString serial;  ///< as the device says it
        /// Why the system refuses to open it and what the user can do: English text of one line; empty when
        /// it may be opened.
        QString accessAdvice;
        /// Names of the other programs that have it open, as far as the system says so.
        QStringList users;
    };

    explicit InstrumentDiscovery(Log log = {});
    ~InstrumentDiscovery();
    Q_DISABLE_COPY(InstrumentDiscovery)

    /// Returns true when hidapi is ready; tries again at each call until it is.
    bool ensureHidInitialized();

    /**
     * Opens the only candidate, or the first of several that sends a valid packet, or the first one when none
     * does. Blocks for up to 300 ms for each of several candidates.
     *
     * When the system refuses access to a device, the log gets advice for the user. The console gets it once,
     * with \a askedFor at once, otherwise at the second refusal in a row: a node that was just plugged in
     * refuses until the system has set its permissions.
     */
    Found find(bool askedFor);

    /// Returns all candidates. Opens none of them for longer than a moment.
    std::vector<Candidate> candidates();

private:
    void log(const QString& line) const;
    Found search();
    HidHandle openPath(const char* path);
    QByteArray probe(hid_device* device, const QString& path) const;
    void adviseOnAccess(bool askedFor);

    const Log m_log;
    bool m_hidInitialized = false;
    /// What the user can do about the refusal of the current search; empty when nothing was refused.
    QString m_accessAdvice;
    /// Searches in a row that the system refused, and whether the console has got the advice.
    int m_accessRefusals = 0;
    bool m_accessWarned = false;
};
