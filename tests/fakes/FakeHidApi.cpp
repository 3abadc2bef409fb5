// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/fakes/FakeHidApi.h"

#include "instrument/ReportDescriptor.h"
#include "platform/HidNode.h"

#include <hidapi.h>

#include <QQueue>

#include <algorithm>
#include <chrono>
#include <condition_variable>
#include <cstring>
#include <map>
#include <memory>
#include <mutex>
#include <set>
#include <vector>

using fakehid::Device;

namespace {

struct Instrument
{
    Device device;
    bool present = true;
    QQueue<QByteArray> reports;
    bool readsFail = false;
    QString readError;
    bool writesFail = false;
    QList<QByteArray> written;
    int pendingReads = 0;
};

using InstrumentPtr = std::shared_ptr<Instrument>;

/// The mutex guards everything below. The condition is signalled when a read can continue.
struct Bus
{
    std::mutex mutex;
    std::condition_variable changed;
    std::vector<InstrumentPtr> instruments;
    std::set<hid_device_*> handles;
    int failingInits = 0;
    fakehid::Record record;

    InstrumentPtr find(const QByteArray& path) const
    {
        const auto found =
            std::find_if(instruments.cbegin(), instruments.cend(), [&path](const InstrumentPtr& instrument) {
                return instrument->present && instrument->device.path == path;
            });
        return found == instruments.cend() ? nullptr : *found;
    }
    bool isOpen(hid_device_* handle, const char* caller)
    {
        if (handles.count(handle) != 0)
            return true;
        record.misuses.append(QStringLiteral("%1 on a handle that is not open").arg(QLatin1String(caller)));
        return false;
    }
};

Bus& bus()
{
    static Bus instance;
    return instance;
}

using Lock = std::unique_lock<std::mutex>;

wchar_t* toWide(const QString& text)
{
    if (text.isNull())
        return nullptr;
    auto* wide = new wchar_t[static_cast<size_t>(text.size()) + 1];
    wide[text.toWCharArray(wide)] = L'\0';
    return wide;
}

} // namespace

struct hid_device_
{
    InstrumentPtr instrument;
    bool blockingModeChosen = false;
    std::wstring error;
};

namespace fakehid {

void reset()
{
    const Lock lock(bus().mutex);
    bus().instruments.clear();
    bus().failingInits = 0;
    bus().record = {};
}

void plugIn(const Device& device)
{
    const Lock lock(bus().mutex);
    auto instrument = std::make_shared<Instrument>();
    instrument->device = device;
    bus().instruments.push_back(instrument);
}

void unplug(const QByteArray& path)
{
    const Lock lock(bus().mutex);
    if (const InstrumentPtr instrument = bus().find(path)) {
        instrument->present = false;
        instrument->readsFail = true;
        instrument->readError = QStringLiteral("unexpected poll error (device disconnected)");
        instrument->writesFail = true;
        instrument->reports.clear();
    }
    bus().changed.notify_all();
}

void send(const QByteArray& path, const QByteArray& report)
{
    const Lock lock(bus().mutex);
    if (const InstrumentPtr instrument = bus().find(path))
        instrument->reports.enqueue(report);
    bus().changed.notify_all();
}

void failReads(const QByteArray& path, const QString& errorText)
{
    const Lock lock(bus().mutex);
    if (const InstrumentPtr instrument = bus().find(path)) {
        instrument->readsFail = true;
        instrument->readError = errorText;
    }
    bus().changed.notify_all();
}

void failWrites(const QByteArray& path, bool fail)
{
    const Lock lock(bus().mutex);
    if (const InstrumentPtr instrument = bus().find(path))
        instrument->writesFail = fail;
}

void failInit(int times)
{
    const Lock lock(bus().mutex);
    bus().failingInits = times;
}

QList<QByteArray> written(const QByteArray& path)
{
    const Lock lock(bus().mutex);
    const InstrumentPtr instrument = bus().find(path);
    return instrument ? instrument->written : QList<QByteArray>();
}

bool readPending(const QByteArray& path)
{
    const Lock lock(bus().mutex);
    const InstrumentPtr instrument = bus().find(path);
    return instrument && instrument->pendingReads > 0;
}

Record record()
{
    const Lock lock(bus().mutex);
    Record record = bus().record;
    record.openHandles = static_cast<int>(bus().handles.size());
    return record;
}

} // namespace fakehid

namespace platform {

QString hidAccessAdvice(const QByteArray& path)
{
    const Lock lock(bus().mutex);
    const InstrumentPtr instrument = bus().find(path);
    return instrument ? instrument->device.accessAdvice : QString();
}

// Without it, the linker takes the real functions beside these.
QStringList hidNodeUsers(const QByteArray& /*path*/)
{
    return {};
}

} // namespace platform

int hidReportDescriptor(hid_device_* device, const QByteArray& path, unsigned char* buffer, size_t size)
{
    constexpr int cDescriptorSize = 34;
    const Lock lock(bus().mutex);
    if (!bus().isOpen(device, "hidReportDescriptor") || device->instrument->device.path != path)
        return -1;
    std::memset(buffer, 0, std::min<size_t>(size, cDescriptorSize));
    return cDescriptorSize;
}

int hid_init(void)
{
    const Lock lock(bus().mutex);
    ++bus().record.initCalls;
    return bus().failingInits-- > 0 ? -1 : 0;
}

int hid_exit(void)
{
    const Lock lock(bus().mutex);
    ++bus().record.exitCalls;
    if (!bus().handles.empty())
        bus().record.misuses.append(QStringLiteral("hid_exit with an open handle"));
    return 0;
}

hid_device_info* hid_enumerate(unsigned short vendorId, unsigned short productId)
{
    const Lock lock(bus().mutex);
    ++bus().record.enumerations;
    hid_device_info* first = nullptr;
    hid_device_info** next = &first;
    for (const InstrumentPtr& instrument : bus().instruments) {
        if (!instrument->present)
            continue;
        const Device& device = instrument->device;
        auto* entry = new hid_device_info();
        if (!device.path.isEmpty()) {
            entry->path = new char[static_cast<size_t>(device.path.size()) + 1];
            std::copy_n(device.path.constData(), device.path.size() + 1, entry->path);
        }
        entry->vendor_id = vendorId;
        entry->product_id = productId;
        entry->interface_number = device.interfaceNumber;
        entry->usage_page = device.usagePage;
        entry->usage = device.usage;
        entry->release_number = device.releaseNumber;
        entry->manufacturer_string = toWide(device.manufacturer);
        entry->product_string = toWide(device.product);
        entry->serial_number = toWide(device.serial);
        *next = entry;
        next = &entry->next;
    }
    if (first != nullptr)
        ++bus().record.openEnumerations;
    return first;
}

void hid_free_enumeration(hid_device_info* list)
{
    const Lock lock(bus().mutex);
    if (list != nullptr)
        --bus().record.openEnumerations;
    while (list != nullptr) {
        hid_device_info* const next = list->next;
        delete[] list->path;
        delete[] list->manufacturer_string;
        delete[] list->product_string;
        delete[] list->serial_number;
        delete list;
        list = next;
    }
}

hid_device* hid_open_path(const char* path)
{
    const Lock lock(bus().mutex);
    bus().record.openedPaths.append(QString::fromLocal8Bit(path));
    const InstrumentPtr instrument = bus().find(path);
    if (!instrument)
        return nullptr;
    if (instrument->device.failingOpens != 0) {
        --instrument->device.failingOpens;
        return nullptr;
    }
    auto* handle = new hid_device_();
    handle->instrument = instrument;
    bus().handles.insert(handle);
    return handle;
}

void hid_close(hid_device* handle)
{
    const Lock lock(bus().mutex);
    if (bus().isOpen(handle, "hid_close")) {
        bus().handles.erase(handle);
        delete handle;
    }
}

int hid_set_nonblocking(hid_device* handle, int nonblock)
{
    const Lock lock(bus().mutex);
    if (!bus().isOpen(handle, "hid_set_nonblocking"))
        return -1;
    handle->blockingModeChosen = nonblock == 0;
    return 0;
}

int hid_read_timeout(hid_device* handle, unsigned char* data, size_t length, int milliseconds)
{
    Lock lock(bus().mutex);
    if (!bus().isOpen(handle, "hid_read_timeout"))
        return -1;
    if (!handle->blockingModeChosen)
        bus().record.misuses.append(QStringLiteral("a read before blocking mode was chosen"));
    const InstrumentPtr instrument = handle->instrument;
    ++instrument->pendingReads;
    bus().changed.wait_for(lock, std::chrono::milliseconds(milliseconds),
                           [&instrument] { return !instrument->reports.isEmpty() || instrument->readsFail; });
    --instrument->pendingReads;
    if (!bus().isOpen(handle, "a pending hid_read_timeout"))
        return -1;
    if (!instrument->reports.isEmpty()) {
        const QByteArray report = instrument->reports.dequeue();
        const size_t count = std::min(length, static_cast<size_t>(report.size()));
        std::memcpy(data, report.constData(), count);
        return static_cast<int>(count);
    }
    if (instrument->readsFail) {
        handle->error = instrument->readError.toStdWString();
        return -1;
    }
    return 0;
}

int hid_write(hid_device* handle, const unsigned char* data, size_t length)
{
    const Lock lock(bus().mutex);
    if (!bus().isOpen(handle, "hid_write"))
        return -1;
    const InstrumentPtr instrument = handle->instrument;
    if (instrument->writesFail) {
        handle->error = L"write failed";
        return -1;
    }
    instrument->written.append(QByteArray(reinterpret_cast<const char*>(data), static_cast<int>(length)));
    return static_cast<int>(length);
}

const wchar_t* hid_error(hid_device* handle)
{
    const Lock lock(bus().mutex);
    if (handle == nullptr || !bus().isOpen(handle, "hid_error"))
        return L"";
    return handle->error.empty() ? nullptr : handle->error.c_str();
}
