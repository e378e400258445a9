// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <opencv2/core.hpp>

namespace kelmo {

/// Numbers in steps of a thousandth, 0..0.999, a row of them for each seed: SplitMix64 (Steele, Lea
/// and Flood, 2014). The same seed gives the same row, on any thread.
class Chance {
public:
    explicit Chance(uint64_t seed) : state(seed * kStep) {}
    float Next() { return static_cast<float>(Draw() % 1000) / 1000.0F; }
    int Below(int end) { return static_cast<int>(Draw() % static_cast<uint64_t>(end)); }

private:
    static constexpr uint64_t kStep = 0x9E3779B97F4A7C15U;

    uint64_t Draw() {
        state += kStep;
        uint64_t mixed = state;
        mixed = (mixed ^ (mixed >> 30)) * 0xBF58476D1CE4E5B9U;
        mixed = (mixed ^ (mixed >> 27)) * 0x94D049BB133111EBU;
        return mixed ^ (mixed >> 31);
    }

    uint64_t state;
};

/// A place in a picture, parts of its size with y down, and a depth; all 0..1.
struct ScatteredPlace {
    float u = 0.0F, v = 0.0F, z = 0.0F;
};

/// A place that is not black, or, after 50 tries, any. `picture` has 4 channels of 8 bits; an empty
/// one is black.
ScatteredPlace ScatterOver(const cv::Mat& picture, Chance& chance);

/// Runs `put(i)` for 0 <= i < count on all of OpenCV's threads.
template <typename Put>
void ForEachParticle(int32_t count, const Put& put) {
    const auto range = [&](const cv::Range& part) {
        for (int i = part.start; i < part.end; ++i) put(static_cast<std::size_t>(i));
    };
    cv::parallel_for_(cv::Range(0, count), range, cv::getNumThreads());
}

}  // namespace kelmo
