// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QList>
#include <QString>
#include <QStringList>

/**
 * hidapi without hardware. A program that links this library first calls these functions instead of the real
 * ones. The functions below script the devices, their reports and their failures, from any thread.
 *
 * The path identifies a device. A device can be open several times; the first reader gets a report.
 */
namespace fakehid {

/// One entry of the enumeration. The defaults are a device that opens and stays silent.
struct Device
{
    QByteArray path; ///< empty: enumerated without a path
    int interfaceNumber = 0;
    unsigned short usagePage = 0xFF00;
    unsigned short usage = 0x0001;
    unsigned short releaseNumber = 0x0100;
    QString manufacturer; ///< null: the device does not say
    QString product;
    QString serial;
    /// Number of attempts to open that fail first; negative: all.
    int failingOpens = 0;
    /// Advice of the system about a failed attempt; see platform::hidAccessAdvice().
    QString accessAdvice;
};

/// An empty bus, no failures, counters at zero. Call it while no handle is open.
void reset();

/// Adds \a device at the end of the enumeration.
void plugIn(const Device& device);
/// Removes the device. Reads and writes on its open handles fail from now on, as with real hardware.
void unplug(const QByteArray& path);

/// Queues one report for the next reads of the device.
void send(const QByteArray& path, const QByteArray& report);
/// Makes reads fail with \a errorText after the queued reports have been read.
void failReads(const QByteArray& path, const QString& errorText);
/// Makes writes fail, or work again.
void failWrites(const QByteArray& path, bool fail);
/// Makes hid_init fail \a times.
void failInit(int times);

/// Returns the output reports written to the device, in order, with the leading report id.
QList<QByteArray> written(const QByteArray& path);
/// Returns true while a read of the device waits for a report.
bool readPending(const QByteArray& path);
/// Calls of the program since reset().
struct Record
{
    int initCalls = 0;
    int exitCalls = 0;
    int enumerations = 0;
    /// The paths given to hid_open_path, in order, failed ones included.
    QStringList openedPaths;
    /// Enumerations not yet freed, and device handles not yet closed.
    int openEnumerations = 0;
    int openHandles = 0;
    /// Uses of a closed handle, second closes and a blocking mode never chosen, in words.
    QStringList misuses;
};
Record record();

} // namespace fakehid
