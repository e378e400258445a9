// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <memory>
#include <vector>

#include "geometry/contours/contours.h"
#include "geometry/shapes/font_text_path.h"

namespace kelmo::test {

using Outline = std::vector<cv::Point2f>;

/// Contours of one group whose sub-contours are these polylines, as after flattening: outer ones
/// clockwise (y up), holes counter-clockwise.
void FillContours(Contours& contours, const std::vector<Outline>& outlines);

/// Reads, flattens and triangulates a text as the effects do.
void ParseText(Contours& contours, FontTextPath& text, int32_t frameWidth, int32_t frameHeight,
               float segment = 0.011f);

Outline Square(float side, cv::Point2f center = {});
Outline Circle(int points, float radius, cv::Point2f center = {});
/// A star of `tips` tips between two radii.
Outline Star(int tips, float outerRadius, float innerRadius);
/// The same outline run through the other way: a hole.
Outline Turned(Outline outline);

}  // namespace kelmo::test
