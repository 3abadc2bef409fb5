// SPDX-License-Identifier: GPL-3.0-or-later
// For releases of hidapi without hid_get_report_descriptor: the same question to the kernel.
#include "instrument/ReportDescriptor.h"

#include <fcntl.h>
#include <linux/hidraw.h>
#include <sys/ioctl.h>
#include <unistd.h>

#include <algorithm>
#include <cstring>

namespace {

class FileDescriptor
{
public:
    explicit FileDescriptor(int number) : m_number(number) {}
    ~FileDescriptor()
    {
        if (m_number >= 0)
            ::close(m_number);
    }
    Q_DISABLE_COPY(FileDescriptor)

    int number() const { return m_number; }

private:
    const int m_number;
};

} // namespace

int hidReportDescriptor(hid_device_* device, const QByteArray& path, unsigned char* buffer, size_t size)
{
    // hidapi keeps its descriptor to itself, so the node is opened a second time, for a moment.
    Q_UNUSED(device)
    const FileDescriptor node(::open(path.constData(), O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC));
    if (node.number() < 0)
        return -1;
    int descriptorSize = 0;
    if (::ioctl(node.number(), HIDIOCGRDESCSIZE, &descriptorSize) < 0 || descriptorSize < 0)
        return -1;
    hidraw_report_descriptor descriptor{};
    descriptor.size = std::min<__u32>(static_cast<__u32>(descriptorSize), HID_MAX_DESCRIPTOR_SIZE);
    if (::ioctl(node.number(), HIDIOCGRDESC, &descriptor) < 0)
        return -1;
    const size_t length = std::min({static_cast<size_t>(descriptor.size), size, sizeof(descriptor.value)});
    std::memcpy(buffer, descriptor.value, length);
    return static_cast<int>(length);
}
