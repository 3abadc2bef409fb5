// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QObject>
#include <QVariantMap>

class HidLink;

/**
 * The instrument of the QML tests, in QML "TestInstrument": a device on the fake HID bus. What it sends
 * reaches the link through the same entry as the reader's packets, before the call returns.
 */
class TestInstrument : public QObject
{
    Q_OBJECT

public:
    explicit TestInstrument(HidLink& link) : m_link(link) {}

    /// Puts the device on the bus and lets the link open it. Whether the link is connected afterwards.
    Q_INVOKABLE bool plugIn();
    /// Takes the device away, as when the cable is pulled. Whether the link is still connected.
    Q_INVOKABLE bool unplug();

    /// Sends a measurement: values by property name of the link; the others are 0.
    Q_INVOKABLE void measure(const QVariantMap& values);
    /// Sends one multimeter reading \a times over; five equal ones in a row are recorded.
    Q_INVOKABLE void read(int mode, const QString& text, int times = 1);
    /// Reports a screen or function that was chosen at the instrument.
    Q_INVOKABLE void choose(int layer0, int layer1);
    /// Bytes 1 and 3 to 7 of the last packet that the host wrote: type, direction and the four layers.
    Q_INVOKABLE QVariantList lastRequest() const;

private:
    void receive(const QByteArray& packet);

    HidLink& m_link;
};
