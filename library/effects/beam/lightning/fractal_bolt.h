// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <opencv2/core/types.hpp>
#include <span>

namespace kelmo {

/// One straight line of a bolt, in device space, with its share of the bolt's way (0..1).
struct BoltLine {
    cv::Point2f start;
    cv::Point2f end;
    float startProgress = 0.0F;
    float endProgress = 1.0F;
    float alpha = 1.0F;
};

/// Takes the lines of a bolt from its start to its end.
using BoltLineSink = std::function<void(const BoltLine&)>;

/// A point that a bolt goes through and how far along it lies.
struct BoltPoint {
    cv::Point2f at;
    float progress = 0.0F;
    /// Of the points of its path, as they were added.
    int32_t order = 0;
};

/// The points of one bolt. What does not fit is left out.
class BoltPath {
public:
    static constexpr std::size_t kMostPoints = 3000;

    void Clear() { count = 0; }
    void Add(const cv::Point2f& at, float progress) {
        if (count == kMostPoints) return;
        points[count] = {at, progress, static_cast<int32_t>(count)};
        ++count;
    }
    std::span<BoltPoint> Points() { return {points.data(), count}; }

private:
    std::array<BoltPoint, kMostPoints> points;
    std::size_t count = 0;
};

/// How far a bolt strays: `displace` (device units) at first, half of that at each finer level, as
/// long as it is at least `detail`; `scale` multiplies every offset.
struct BoltRoughness {
    float displace = 0.0F;
    float detail = 0.02F;
    float scale = 1.0F;
};

/// The finest `detail`: smaller ones count as this.
inline constexpr float kFinestBoltDetail = 0.001F;
/// So that no roughness, however large, gives more lines than 2 to this power.
inline constexpr int kMostBoltLevels = 11;

/// Midpoint displacement: splits the straight line at a point beside its middle, then both halves,
/// down to the roughness's detail. Draws from the thread's random numbers. `line` gives ends,
/// progress and alpha; the points between go to `path`, when there is one, each before those of the
/// half that leads to it. Ends that are no numbers give no line.
void FractalBolt(const BoltLine& line, const BoltRoughness& roughness, BoltPath* path,
                 const BoltLineSink& sink);

}  // namespace kelmo
