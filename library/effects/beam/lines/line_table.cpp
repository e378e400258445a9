// SPDX-License-Identifier: GPL-3.0-or-later
#include "effects/beam/lines/line_table.h"

#include <algorithm>
#include <cstddef>

namespace kelmo {
namespace {

void Write(std::vector<float>& rows, const float* values, int32_t floats, int32_t index) {
    if (index < 0) return;
    std::copy_n(values, floats, rows.begin() + static_cast<std::ptrdiff_t>(index) * floats);
}

}  // namespace

LineTable::LineTable()
    : startEnd(kCapacityStep * 4),
      control(kCapacityStep * 4),
      progressRange(kCapacityStep * 2),
      color(kCapacityStep * 4) {
    constexpr float kEnds[4] = {0.0F, -1.0F, 0.0F, 1.0F};
    constexpr float kControls[4] = {1.0F, -0.5F, -1.0F, 0.5F};
    constexpr float kWhole[2] = {0.0F, 1.0F};
    constexpr float kWhite[4] = {1.0F, 1.0F, 1.0F, 1.0F};
    SetStartEnd(kEnds, 0);
    SetControl(kControls, 0);
    SetProgressRange(kWhole, 0);
    SetColor(kWhite, 0);
}

void LineTable::EnsureLineCapacity(int32_t index) {
    if (index < capacity) return;
    // Owners write their lines in order, so that one step is enough; a jump takes as many.
    capacity = (index / kCapacityStep + 1) * kCapacityStep;
    const auto rows = static_cast<std::size_t>(capacity);
    startEnd.resize(rows * 4);
    control.resize(rows * 4);
    progressRange.resize(rows * 2);
    color.resize(rows * 4);
}

void LineTable::SetStartEnd(const float values[4], int32_t index) {
    EnsureLineCapacity(index);
    Write(startEnd, values, 4, index);
}

void LineTable::SetControl(const float values[4], int32_t index) {
    EnsureLineCapacity(index);
    Write(control, values, 4, index);
}

void LineTable::SetProgressRange(const float values[2], int32_t index) {
    EnsureLineCapacity(index);
    Write(progressRange, values, 2, index);
}

void LineTable::SetColor(const float values[4], int32_t index) {
    EnsureLineCapacity(index);
    Write(color, values, 4, index);
}

void LineTable::SetCount(int32_t lines) {
    EnsureLineCapacity(lines - 1);
    count = std::max(lines, 0);
}

}  // namespace kelmo
