// SPDX-License-Identifier: GPL-3.0-or-later
#include "recording/BucketBuilder.h"

#include <algorithm>
#include <cmath>
#include <limits>

using namespace recording;

std::optional<Bucket> BucketBuilder::add(const recording::Measurement& measurement,
                                         const std::array<Delivered, cSupplyCount>& delivered)
{
    const Time start = measurement.at - measurement.at % m_length;
    std::optional<Bucket> completed;
    if (m_count > 0 && start != m_start) {
        completed = current();
        m_count = 0;
        m_sums = {};
        m_delivered = {};
    }
    m_start = start;
    ++m_count;
    for (size_t i = 0; i < m_sums.size(); ++i) {
        const double value = valueOf(measurement.values, static_cast<Quantity>(i));
        if (!std::isfinite(value))
            continue;
        Sum& sum = m_sums[i];
        sum.minimum = sum.count > 0 ? std::min(sum.minimum, value) : value;
        sum.maximum = sum.count > 0 ? std::max(sum.maximum, value) : value;
        sum.sum += value;
        ++sum.count;
    }
    for (size_t i = 0; i < m_delivered.size(); ++i)
        m_delivered[i] += delivered[i];
    return completed;
}

std::optional<Bucket> BucketBuilder::current() const
{
    if (m_count == 0)
        return std::nullopt;
    constexpr double cNone = std::numeric_limits<double>::quiet_NaN();
    Bucket bucket;
    bucket.start = m_start;
    bucket.count = m_count;
    bucket.delivered = m_delivered;
    std::transform(m_sums.cbegin(), m_sums.cend(), bucket.extents.begin(), [](const Sum& sum) {
        return sum.count > 0 ? Extent{sum.minimum, sum.sum / static_cast<double>(sum.count), sum.maximum}
                             : Extent{cNone, cNone, cNone};
    });
    return bucket;
}
