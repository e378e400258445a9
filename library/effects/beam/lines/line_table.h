// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <vector>

#include "effects/beam/lines/curve_line.h"

namespace kelmo {

/// The lines that a beam draws: four parallel arrays of floats, one row a line. Rows keep their
/// values until they are written again; the count says how many are drawn. Starts with one S-shaped
/// line from the bottom to the top of the frame.
class LineTable {
public:
    /// Rows of the arrays grow by this at a time.
    static constexpr int32_t kCapacityStep = 1000;

    LineTable();

    /// Makes row `index` usable; a negative one needs nothing.
    void EnsureLineCapacity(int32_t index);
    int32_t Capacity() const { return capacity; }

    /// Start x, y and end x, y, device space.
    void SetStartEnd(const float values[4], int32_t index);
    /// First and second control point, device space.
    void SetControl(const float values[4], int32_t index);
    /// The part of the whole path that the line covers, as fractions.
    void SetProgressRange(const float values[2], int32_t index);
    /// Red, green, blue, alpha, 0..1.
    void SetColor(const float values[4], int32_t index);
    /// Negative counts as 0.
    void SetCount(int32_t lines);
    int32_t Count() const { return count; }

    const float* StartEnd() const { return startEnd.data(); }
    const float* Control() const { return control.data(); }
    const float* ProgressRange() const { return progressRange.data(); }
    const float* Color() const { return color.data(); }

private:
    int32_t capacity = kCapacityStep;
    int32_t count = 1;
    std::vector<float> startEnd;
    std::vector<float> control;
    std::vector<float> progressRange;
    std::vector<float> color;
};

}  // namespace kelmo
