// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "recording/RecordingData.h"

#include <optional>

/**
 * Sums up measurements to the buckets of one level, one after the other. A plain value: copies continue
 * independently.
 */
class BucketBuilder
{
public:
    explicit BucketBuilder(recording::Level level) : m_length(recording::bucketLength(level)) {}

    /**
     * Adds a measurement, later than the one before it, and what was delivered since that one. Returns the
     * bucket that this measurement completed by being the first of the next one.
     */
    std::optional<recording::Bucket>
    add(const recording::Measurement& measurement,
        const std::array<recording::Delivered, recording::cSupplyCount>& delivered);

    /// Returns the bucket as it is so far; nothing before the first measurement.
    std::optional<recording::Bucket> current() const;

private:
    struct Sum
    {
        double minimum = 0;
        double maximum = 0;
        double sum = 0;
        qint64 count = 0;
    };

    recording::Time m_length;
    recording::Time m_start{};
    qint64 m_count = 0;
    std::array<Sum, recording::cQuantityCount> m_sums{};
    std::array<recording::Delivered, recording::cSupplyCount> m_delivered{};
};
