// SPDX-License-Identifier: GPL-3.0-or-later
#include "geometry/shapes/outlines.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include "geometry/contours/contour_face.h"

namespace kelmo::test {
namespace {

cv::Point2f OnCircle(double turn, float radius, cv::Point2f center) {
    const double angle = -2 * std::numbers::pi * turn;  // clockwise
    return {center.x + static_cast<float>(radius * std::cos(angle)),
            center.y + static_cast<float>(radius * std::sin(angle))};
}

}  // namespace

void FillContours(Contours& contours, const std::vector<Outline>& outlines) {
    contours.ClearDerived();
    auto& points = contours.m_Points.emplace_back();
    auto& edges = contours.m_Edges.emplace_back();
    float length = 0;
    for (const Outline& outline : outlines) {
        // Point k is the end of step k, so the first step leads from the last point to the first.
        auto& pairs = edges.emplace_back();
        for (size_t i = 0; i < outline.size(); ++i) {
            const cv::Point2f& start = outline[(i + outline.size() - 1) % outline.size()];
            pairs.push_back(start);
            pairs.push_back(outline[i]);
            length += static_cast<float>(cv::norm(outline[i] - start));
        }
        points.push_back(outline);
    }
    contours.m_PathLengths.push_back(length);
}

void ParseText(Contours& contours, FontTextPath& text, int32_t frameWidth, int32_t frameHeight,
               float segment) {
    contours.ParseTextPath(&text, frameWidth, frameHeight);
    contours.FlattenPaths(segment, false);
    contours.m_IsText = true;
    ContourFace().ParseContours(contours, false, 0, 0);
}

Outline Square(float side, cv::Point2f center) {
    const float half = side / 2;
    return {center + cv::Point2f(-half, half), center + cv::Point2f(half, half),
            center + cv::Point2f(half, -half), center + cv::Point2f(-half, -half)};
}

Outline Circle(int points, float radius, cv::Point2f center) {
    Outline outline;
    for (int i = 0; i < points; ++i) {
        outline.push_back(OnCircle(static_cast<double>(i) / points, radius, center));
    }
    return outline;
}

Outline Star(int tips, float outerRadius, float innerRadius) {
    Outline outline;
    for (int i = 0; i < 2 * tips; ++i) {
        outline.push_back(OnCircle(i / (2.0 * tips), i % 2 ? innerRadius : outerRadius, {}));
    }
    return outline;
}

Outline Turned(Outline outline) {
    std::reverse(outline.begin(), outline.end());
    return outline;
}

}  // namespace kelmo::test
