// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <cmath>
#include <cstdint>
#include <utility>
#include <vector>

#include "contract/ai_filter.h"

/// Somebody who stands still in the middle of every frame, so that pictures of effects that follow
/// a person depend on no network. Fractions of the frame, y down.
namespace kelmo::test {

using FramePoint = std::pair<float, float>;

inline constexpr float kStagedFace[4] = {0.42F, 0.22F, 0.58F, 0.60F};

/// Body points in the order of docs/contracts.md; hips, knees and ankles are out of the picture.
inline std::vector<FramePoint> StagedBodyPoints() {
    constexpr FramePoint kUnseen = {-1.0F, -1.0F};
    return {{0.50F, 0.43F}, {0.47F, 0.38F}, {0.53F, 0.38F}, {0.33F, 0.80F}, {0.30F, 0.95F},
            {0.40F, 0.67F}, {0.60F, 0.67F}, {0.33F, 0.80F}, {0.67F, 0.76F}, {0.30F, 0.95F},
            {0.72F, 0.54F}, kUnseen,        kUnseen,        kUnseen,        kUnseen,
            kUnseen,        kUnseen,        {0.43F, 0.39F}, {0.57F, 0.39F}};
}

/// Whether the person covers a place: a head, and shoulders that go on below the frame.
inline bool StagedPersonCovers(float x, float y) {
    const auto inEllipse = [&](float cx, float cy, float rx, float ry) {
        return std::hypot((x - cx) / rx, (y - cy) / ry) < 1.0F;
    };
    return inEllipse(0.5F, 0.40F, 0.08F, 0.20F) || inEllipse(0.5F, 1.07F, 0.16F, 0.48F);
}

inline AIDATA::HumanFaceInfo StagedFace() {
    AIDATA::HumanFaceInfo face;
    for (int i = 0; i < 4; ++i) face.rect[i] = kStagedFace[i];
    constexpr float kMiddleX = 0.5F;
    constexpr float kMiddleY = 0.41F;
    face.landmarks.assign(106, {kMiddleX, kMiddleY});
    const auto arc = [&](int first, int last, FramePoint center, FramePoint half, float from,
                         float to) {
        for (int i = first; i <= last; ++i) {
            const float t = static_cast<float>(i - first) / static_cast<float>(last - first);
            const float angle = from + (to - from) * t;
            face.landmarks[static_cast<std::size_t>(i)] = {
                center.first - half.first * std::cos(angle),
                center.second + half.second * std::sin(angle)};
        }
    };
    constexpr float kPi = 3.14159265F;
    arc(0, 32, {kMiddleX, kMiddleY}, {0.08F, 0.19F}, 0.0F, kPi);  // jaw
    arc(33, 37, {0.47F, 0.34F}, {0.02F, 0.02F}, 0.0F, -kPi);      // brows
    arc(38, 42, {0.53F, 0.34F}, {0.02F, 0.02F}, 0.0F, -kPi);
    arc(84, 95, {kMiddleX, 0.51F}, {0.03F, 0.03F}, 0.0F, -2.0F * kPi);  // mouth
    arc(96, 103, {kMiddleX, 0.51F}, {0.02F, 0.01F}, 0.0F, -2.0F * kPi);
    // The rings of the eyes, once round the lids from the left corner.
    const int rings[2][8] = {{52, 57, 73, 56, 55, 54, 72, 53}, {58, 63, 76, 62, 61, 60, 75, 59}};
    const FramePoint eyes[2] = {{0.47F, 0.38F}, {0.53F, 0.38F}};
    const int pupils[2][2] = {{74, 104}, {77, 105}};
    for (int eye = 0; eye < 2; ++eye) {
        for (int i = 0; i < 8; ++i) {
            const float angle = kPi / 4.0F * static_cast<float>(i);
            face.landmarks[static_cast<std::size_t>(rings[eye][i])] = {
                eyes[eye].first - 0.015F * std::cos(angle),
                eyes[eye].second + 0.015F * std::sin(angle)};
        }
        for (const int pupil : pupils[eye]) {
            face.landmarks[static_cast<std::size_t>(pupil)] = eyes[eye];
        }
    }
    face.landmarkScores.assign(106, 1.0F);
    return face;
}

}  // namespace kelmo::test
