// SPDX-License-Identifier: GPL-3.0-or-later
#include "ai/mask/coverage_writer.h"

#include <algorithm>
#include <cmath>
#include <cstring>

namespace kelmo {

void CoverageWriter::MakeTaps(int from, int to, std::vector<Tap>& taps) {
    taps.resize(static_cast<size_t>(to));
    const double scale = static_cast<double>(from) / to;
    for (int i = 0; i < to; ++i) {
        // Pixel centres lie at halves on both sides.
        const double place = std::clamp((i + 0.5) * scale - 0.5, 0.0, from - 1.0);
        const int first = static_cast<int>(place);
        taps[static_cast<size_t>(i)] = {first, std::min(first + 1, from - 1),
                                        static_cast<uint32_t>(std::lround(256 * (place - first)))};
    }
}

void CoverageWriter::MakeCells() {
    sides.resize(static_cast<size_t>(from.width));
    cells.clear();
    for (int x = 0; x < to.width; ++x) {
        const Tap& tap = columns[static_cast<size_t>(x)];
        if (cells.empty() || cells.back().first != tap.first)
            cells.push_back({tap.first, tap.second, x});
        cells.back().end = x + 1;
    }
}

void CoverageWriter::FindStretches(const uint8_t* upper, const uint8_t* lower,
                                   const CoverageCurve& curve) {
    // Copies, so that the compiler need not fear that a write to `side` changes them.
    const uint8_t lastOutside = curve.LastOutside();
    const uint8_t firstInside = curve.FirstInside();
    const int width = from.width;
    uint8_t* const side = sides.data();
    for (int x = 0; x < width; ++x) {
        const bool outside = std::max(upper[x], lower[x]) <= lastOutside;
        const bool inside = std::min(upper[x], lower[x]) >= firstInside;
        side[x] = static_cast<uint8_t>((outside ? kOutside : kEdge) | (inside ? kInside : kEdge));
    }
    stretches.clear();
    for (const Cell& cell : cells) {
        // Plain where both sides of the cell are the same.
        const uint8_t both = side[cell.first] & side[cell.second];
        if (!stretches.empty() && stretches.back().side == both)
            stretches.back().end = cell.end;
        else
            stretches.push_back({cell.end, both});
    }
}

void CoverageWriter::WriteRow(const uint8_t* upper, const uint8_t* lower, uint32_t weight,
                              const CoverageCurve& curve, uint8_t* target) const {
    int x = 0;
    for (const Stretch& stretch : stretches) {
        const size_t bytes = 4 * static_cast<size_t>(stretch.end - x);
        if (stretch.side != kEdge) {
            std::memset(target + 4 * x, stretch.side == kInside ? 255 : 0, bytes);
            x = stretch.end;
            continue;
        }
        for (; x < stretch.end; ++x) {
            const Tap& tap = columns[static_cast<size_t>(x)];
            const uint32_t left = upper[tap.first] * (256 - weight) + lower[tap.first] * weight;
            const uint32_t right = upper[tap.second] * (256 - weight) + lower[tap.second] * weight;
            const uint32_t byte = (left * (256 - tap.weight) + right * tap.weight + 32768) >> 16;
            const uint32_t pixel = curve.Pixel(byte);
            std::memcpy(target + 4 * x, &pixel, sizeof pixel);
        }
    }
}

void CoverageWriter::Write(const cv::Mat& mask, const CoverageCurve& curve, cv::Mat& output) {
    if (mask.size() != from || output.size() != to) {
        from = mask.size();
        to = output.size();
        MakeTaps(from.width, to.width, columns);
        MakeTaps(from.height, to.height, rows);
        MakeCells();
    }
    int known = -1;
    for (int y = 0; y < output.rows; ++y) {
        const Tap& row = rows[static_cast<size_t>(y)];
        const uint8_t* const upper = mask.ptr(row.first);
        const uint8_t* const lower = mask.ptr(row.second);
        if (row.first != known) FindStretches(upper, lower, curve);
        known = row.first;
        WriteRow(upper, lower, row.weight, curve, output.ptr(y));
    }
}

}  // namespace kelmo
