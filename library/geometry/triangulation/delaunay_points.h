// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <bit>
#include <cstdint>
#include <opencv2/core/types.hpp>
#include <vector>

namespace kelmo {

/// Numbers points by their place: equal coordinates (compared exactly, 0 equals -0) share a number,
/// numbers are dense from 0. A hash table with open addressing; coordinates must be finite.
class DelaunayPoints {
public:
    static constexpr int32_t kNone = -1;

    explicit DelaunayPoints(size_t expected = 0) { Rehash(expected); }

    /// The point's number, a new one when the place is new.
    int32_t Add(const cv::Point2f& point) {
        if ((points.size() + 1) * 2 > slots.size()) Rehash(points.size() * 2);
        int32_t& slot = slots[SlotOf(point)];
        if (slot == kNone) {
            slot = static_cast<int32_t>(points.size());
            points.push_back(point);
        }
        return slot;
    }

    /// The point's number, or `kNone`.
    int32_t Find(const cv::Point2f& point) const { return slots[SlotOf(point)]; }

    const cv::Point2f& At(int32_t number) const { return points[number]; }
    size_t Size() const { return points.size(); }

private:
    static uint64_t Hash(const cv::Point2f& point) {
        // Adding zero turns -0 into 0.
        const uint64_t x = std::bit_cast<uint32_t>(point.x + 0.0f);
        const uint64_t y = std::bit_cast<uint32_t>(point.y + 0.0f);
        uint64_t value = (x << 32 | y) * 0x9E3779B97F4A7C15u;
        return value ^ value >> 29;
    }

    // Where the point stands, or the free place where it would go. Half of the slots are free.
    size_t SlotOf(const cv::Point2f& point) const {
        const size_t mask = slots.size() - 1;
        size_t place = Hash(point) & mask;
        while (slots[place] != kNone && points[slots[place]] != point) place = (place + 1) & mask;
        return place;
    }

    void Rehash(size_t expected) {
        slots.assign(std::bit_ceil(expected * 2 + 16), kNone);
        for (size_t i = 0; i < points.size(); ++i) {
            slots[SlotOf(points[i])] = static_cast<int32_t>(i);
        }
    }

    std::vector<cv::Point2f> points;
    std::vector<int32_t> slots;
};

}  // namespace kelmo
