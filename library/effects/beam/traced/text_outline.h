// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>
#include <cstdint>
#include <opencv2/core/types.hpp>
#include <vector>

#include "contract/text_path.h"
#include "effects/beam/lines/curve_line.h"

namespace kelmo {

/// Marks a quadratic line: the second control of one, in both coordinates.
inline constexpr float kNoControl = -20000.0F;

/// The outlines of a host's text as lines of a beam. One character is one group with progress 0 to
/// 1 of its own, shared out by the lengths of the lines' chords. Keeps its memory between readings.
class TextOutline {
public:
    /// Reads the outlines as they stand in a frame of `size`; false for a text without any. Foreign
    /// numbers: a group ends at a curve that its points cut short.
    bool Read(TextPath& text, const cv::Size& size);
    const std::vector<CurveLine>& Lines() const { return lines; }
    /// In whole pixels of the frame; of the last text that drew something.
    const cv::Rect& Box() const { return box; }

private:
    void ReadGroup(const uint8_t* types, const float* xs, const float* ys, int32_t count);
    void Add(const cv::Point2f& end, const cv::Point2f& control1, const cv::Point2f& control2);
    cv::Point2f Place(float x, float y);
    void ShareOutProgress(std::size_t first);
    void MeasureBox();

    std::vector<CurveLine> lines;
    cv::Size frame;
    cv::Point2f offset;
    cv::Point2f current;
    cv::Point2f lowest;
    cv::Point2f highest;
    cv::Rect box;
};

}  // namespace kelmo
