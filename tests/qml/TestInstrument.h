// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QObject>
#include <QVariantMap>

class HidLink;

/**
 * The instrument of the QML tests: a device on the fake HID bus, in QML "TestInstrument". Its packets reach
 * the link through the same entry as those of the reader, before the call returns.
 */
class TestInstrument : public QObject
{
    Q_OBJECT

public:
    explicit TestInstrument(HidLink& link) : m_link(link) {}

    /// Adds the device to the bus and makes the link open it. Returns true when the link is connected.
    Q_INVOKABLE bool plugIn();
    /// Removes the device like a pulled cable. Returns true when the link is still connected.
    Q_INVOKABLE bool unplug();

    /// Sends a measurement: values by property name of the link; the others are 0.
    Q_INVOKABLE void measure(const QVariantMap& values);
    /// Sends one multimeter reading \a times. Five equal readings in a row are recorded.
    Q_INVOKABLE void read(int mode, const QString& text, int times = 1);
    /// Reports that a screen or function was chosen at the instrument.
    Q_INVOKABLE void choose(int layer0, int layer1);
    /// Returns bytes 1 and 3 to 7 of the last packet from the host: type, direction and the four layers.
    Q_INVOKABLE QVariantList lastRequest() const;

private:
    void receive(const QByteArray& packet);

    HidLink& m_link;
};
