// SPDX-License-Identifier: GPL-3.0-or-later
#include "effects/beam/traced/text_outline.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace kelmo {
namespace {

constexpr float kInfinity = std::numeric_limits<float>::infinity();

/// Points that a type takes, its own first; 0 for a type that is not known.
int32_t PointsOf(uint8_t type) {
    switch (type) {
        case kTextMoveTo:
        case kTextLineTo:
            return 1;
        case kTextQuadraticTo:
            return 2;
        case kTextCubicTo:
            return 3;
        default:
            return 0;
    }
}

float ChordOf(const CurveLine& line) {
    return std::hypot(line.end.x - line.start.x, line.end.y - line.start.y);
}

int Pixels(float value) {
    constexpr float kFar = 1e6F;
    if (std::isnan(value)) return 0;
    return static_cast<int>(std::rint(std::clamp(value, -kFar, kFar)));
}

}  // namespace

cv::Point2f TextOutline::Place(float x, float y) {
    const cv::Point2f place(((x + offset.x) / static_cast<float>(frame.width) - 0.5F) * 2.0F,
                            ((y + offset.y) / static_cast<float>(frame.height) - 0.5F) * -2.0F);
    lowest = {std::min(lowest.x, place.x), std::min(lowest.y, place.y)};
    highest = {std::max(highest.x, place.x), std::max(highest.y, place.y)};
    return place;
}

void TextOutline::Add(const cv::Point2f& end, const cv::Point2f& control1,
                      const cv::Point2f& control2) {
    lines.push_back({current, end, control1, control2});
    current = end;
}

void TextOutline::ReadGroup(const uint8_t* types, const float* xs, const float* ys, int32_t count) {
    const cv::Point2f none(kNoControl, kNoControl);
    int32_t used = 0;
    for (int32_t k = 0; k < count; k += used) {
        used = PointsOf(types[k]);
        if (used == 0 || used > count - k) return;
        const cv::Point2f first = Place(xs[k], ys[k]);
        if (used == 3) {
            const cv::Point2f second = Place(xs[k + 1], ys[k + 1]);
            Add(Place(xs[k + 2], ys[k + 2]), first, second);
        } else if (used == 2) {
            Add(Place(xs[k + 1], ys[k + 1]), first, none);
        } else if (types[k] == kTextLineTo) {
            Add(first, current, first);
        } else {
            current = first;
        }
    }
}

void TextOutline::ShareOutProgress(std::size_t first) {
    float whole = 0.0F;
    for (std::size_t i = first; i < lines.size(); ++i) whole += ChordOf(lines[i]);
    if (!(whole > 0.0F)) whole = 1.0F;
    float way = 0.0F;
    for (std::size_t i = first; i < lines.size(); ++i) {
        lines[i].startProgress = way / whole;
        way += ChordOf(lines[i]);
        lines[i].endProgress = way / whole;
    }
}

void TextOutline::MeasureBox() {
    const auto width = static_cast<float>(frame.width);
    const auto height = static_cast<float>(frame.height);
    const cv::Point2f size = highest - lowest;
    box = cv::Rect(Pixels((lowest.x + 1.0F) * width / 2.0F),
                   Pixels((1.0F - highest.y) * height / 2.0F), Pixels(size.x * width / 2.0F),
                   Pixels(size.y * height / 2.0F));
}

bool TextOutline::Read(TextPath& text, const cv::Size& size) {
    lines.clear();
    frame = size;
    lowest = {kInfinity, kInfinity};
    highest = {-kInfinity, -kInfinity};
    cv::Point2f anchor;
    cv::Size canvas;
    text.GetAnchor(&anchor.x, &anchor.y);
    text.GetSize(&canvas.width, &canvas.height);
    // A canvas that is the frame stands where the frame stands.
    if (canvas == size) anchor = {0.5F, 0.5F};
    offset = {static_cast<float>(size.width) * anchor.x - static_cast<float>(canvas.width / 2),
              static_cast<float>(size.height) * anchor.y - static_cast<float>(canvas.height / 2)};
    bool found = false;
    const int32_t paths = text.GetPathCount();
    for (int32_t path = 0; path < paths; ++path) {
        const uint8_t* types = nullptr;
        const float* xs = nullptr;
        const float* ys = nullptr;
        const int32_t count = text.GetPath(path, &types, &xs, &ys, 0);
        if (count < 1 || !types || !xs || !ys) continue;
        const std::size_t first = lines.size();
        current = {};
        ReadGroup(types, xs, ys, count);
        ShareOutProgress(first);
        found = true;
    }
    if (!lines.empty()) MeasureBox();
    return found;
}

}  // namespace kelmo
