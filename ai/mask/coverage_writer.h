// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <cstdint>
#include <opencv2/core.hpp>
#include <vector>

namespace kelmo {

/// What each byte of a scaled mask becomes.
class CoverageCurve {
public:
    /// `curve` takes 0..1 to 0..1 and never falls.
    template <typename Curve>
    explicit CoverageCurve(Curve curve) {
        for (std::size_t i = 0; i < bytes.size(); ++i)
            bytes[i] = static_cast<uint8_t>(255 * curve(static_cast<float>(i) / 255.0f) + 0.5f);
        while (lastOutside < 254 && bytes[lastOutside + 1] == 0) ++lastOutside;
        while (firstInside > 1 && bytes[firstInside - 1] == 255) --firstInside;
    }
    /// Up to this, and from that, everything is 0 and 255.
    uint8_t LastOutside() const { return lastOutside; }
    uint8_t FirstInside() const { return firstInside; }
    /// The four channels of a pixel.
    uint32_t Pixel(uint32_t byte) const { return bytes[byte] * 0x01010101u; }

private:
    std::array<uint8_t, 256> bytes;
    uint8_t lastOutside = 0;
    uint8_t firstInside = 255;
};

/// Scales a mask of 8 bits to a picture of any size, linearly between the pixels' centres, and
/// writes four equal channels. Almost all of a mask is plainly outside or inside: such stretches
/// are filled, and only the edge is computed. Keeps its tables for the next frame of the same size.
class CoverageWriter {
public:
    /// `output`: 4 channels of 8 bits, any stride. The mask's values 0 and 255 stay what they are.
    void Write(const cv::Mat& mask, const CoverageCurve& curve, cv::Mat& output);

private:
    /// Between two neighbours of a row or column of the mask; `weight` 0..256 of the second.
    struct Tap {
        int first, second;
        uint32_t weight;
    };
    /// What a stretch of a row is: 0 or one of two bits.
    static constexpr uint8_t kEdge = 0, kOutside = 1, kInside = 2;
    /// Columns of the output up to `end` that lie between the same two of the mask.
    struct Cell {
        int first, second, end;
    };
    /// Columns of the output up to `end` that are of one kind.
    struct Stretch {
        int end;
        uint8_t side;
    };

    static void MakeTaps(int from, int to, std::vector<Tap>& taps);
    void MakeCells();
    /// For the rows between two of the mask.
    void FindStretches(const uint8_t* upper, const uint8_t* lower, const CoverageCurve& curve);
    void WriteRow(const uint8_t* upper, const uint8_t* lower, uint32_t weight,
                  const CoverageCurve& curve, uint8_t* target) const;

    std::vector<Tap> columns, rows;
    std::vector<Cell> cells;
    std::vector<uint8_t> sides;
    std::vector<Stretch> stretches;
    cv::Size from, to;
};

}  // namespace kelmo
