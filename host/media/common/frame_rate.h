// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cmath>
#include <cstdint>

namespace kelmo::host {

// Frames a second as a fraction, so that 30000/1001 stays exact over hours.
struct FrameRate {
    int numerator = 0;
    int denominator = 1;

    bool Valid() const { return numerator > 0 && denominator > 0; }
    double PerSecond() const { return Valid() ? static_cast<double>(numerator) / denominator : 0; }

    // Start of frame `index`, in seconds.
    double TimeOf(int64_t index) const {
        return Valid() ? static_cast<double>(index) * denominator / numerator : 0;
    }

    // How many frames `seconds` hold, rounded to the nearest.
    int64_t FramesIn(double seconds) const {
        return Valid() ? std::llround(seconds * numerator / denominator) : 0;
    }

    // First sample (of `samplesPerSecond`) that belongs to frame `index`. The ranges of two
    // neighbouring frames touch and never overlap, whatever the rates are.
    int64_t FirstSampleOf(int64_t index, int samplesPerSecond) const {
        return Valid() ? index * denominator * samplesPerSecond / numerator : 0;
    }
};

}  // namespace kelmo::host
