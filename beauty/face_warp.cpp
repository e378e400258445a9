// SPDX-License-Identifier: GPL-3.0-or-later
#include "beauty/face_warp.h"

#include <algorithm>
#include <cmath>

namespace kelmo::beauty {
namespace {

using Point = cv::Point2f;

Point At(const FaceSdkFace& face, int index) {
    return {face.landmarks[index].x, face.landmarks[index].y};
}

float Length(const Point& p) {
    return std::hypot(p.x, p.y);
}

/// 1 at the middle of a row of landmarks, 0 beyond its ends.
float Bump(int index, int first, int last) {
    if (index < first || index > last) return 0.0F;
    const float place = static_cast<float>(2 * (index - first)) / static_cast<float>(last - first);
    return 1.0F - (place - 1.0F) * (place - 1.0F);
}

/// The axes of a face and the sizes that its changes are measured in, pixels.
struct FaceFrame {
    explicit FaceFrame(const FaceSdkFace& face)
        : across(At(face, 105) - At(face, 104)),
          middle(At(face, 46)),
          width(std::max(Length(At(face, 32) - At(face, 0)), 1.0F)) {
        const float length = Length(across);
        across = length > 0.0F ? across / length : Point(1.0F, 0.0F);
        down = {-across.y, across.x};
    }
    /// Side of the face's middle line, -1 to 1.
    float SideOf(const Point& p) const {
        return std::clamp((p - middle).dot(across) / (0.5F * width), -1.0F, 1.0F);
    }

    Point across;
    Point down;
    Point middle;
    float width;
};

/// The landmarks of one eye: ring, middles of its lids and pupil.
struct Eye {
    int ring[6];
    int lids[2];
    int pupils[2];
    int outer;
    int inner;
    float side;  // of the picture
};
constexpr Eye kEyes[] = {{{52, 53, 54, 55, 56, 57}, {72, 73}, {74, 104}, 52, 55, -1.0F},
                         {{58, 59, 60, 61, 62, 63}, {75, 76}, {77, 105}, 61, 58, 1.0F}};

void MoveJaw(const FaceSdkFace& face, const Strengths& s, const FaceFrame& frame, Point* moves) {
    for (int i = 0; i <= 32; ++i) {
        // The two halves of the jaw, 0 at the ear and 16 at the chin.
        const int fromEar = std::min(i, 32 - i);
        const float inward = 0.09F * s.Of(kShrinkFace) * Bump(fromEar, 2, 18) +
                             0.07F * s.Of(kNarrowFace) * Bump(fromEar, -8, 20) +
                             0.07F * s.Of(kShrinkJaw) * Bump(fromEar, 7, 15) +
                             0.06F * s.Of(kCheekbones) * Bump(fromEar, 1, 9) +
                             0.08F * s.Of(kFaceShape) * Bump(fromEar, 4, 17);
        moves[i] -= frame.across * (frame.SideOf(At(face, i)) * inward * frame.width);
        const float longer = 0.10F * s.Of(kChinLength) - 0.02F * s.Of(kFaceShape);
        moves[i] += frame.down * (longer * frame.width * Bump(i, 9, 23));
    }
}

void MoveEye(const FaceSdkFace& face, const Strengths& s, const FaceFrame& frame, const Eye& eye,
             Point* moves) {
    const Point pupil = At(face, eye.pupils[0]);
    const Point inner = At(face, eye.inner);
    const Point apart = frame.across * (eye.side * 0.05F * s.Of(kEyeDistance) * frame.width);
    const float turn = -eye.side * 0.22F * s.Of(kEyeAngle);
    const auto move = [&](int index) {
        const Point from = At(face, index) - pupil;
        moves[index] += from * (0.28F * s.Of(kEnlargeEyes)) + apart;
        moves[index] += frame.down * (from.dot(frame.down) * 0.35F * s.Of(kRoundEyes));
        const Point arm = At(face, index) - inner;
        moves[index] += Point(-arm.y, arm.x) * turn;
    };
    for (const int index : eye.ring) move(index);
    for (const int index : eye.lids) move(index);
    for (const int index : eye.pupils) move(index);
    const Point out = frame.across * (eye.side * 0.03F * frame.width);
    moves[eye.inner] -= out * s.Of(kInnerCorners);
    moves[eye.outer] += out * s.Of(kOuterCorners);
    // The brow goes with its eye.
    const int brow = eye.side < 0.0F ? 33 : 38;
    for (int i = brow; i < brow + 5; ++i) moves[i] += apart * 0.5F;
}

void MoveNose(const FaceSdkFace& face, const Strengths& s, const FaceFrame& frame, Point* moves) {
    const auto inward = [&](int index, float part) {
        const float side = (At(face, index) - frame.middle).dot(frame.across);
        moves[index] -= frame.across * (side * part);
    };
    for (int i = 78; i <= 83; ++i) inward(i, 0.28F * s.Of(kNarrowNose));
    for (const int i : {47, 48, 50, 51}) inward(i, 0.28F * s.Of(kNarrowNose));
    for (const int i : {78, 79, 80, 81}) inward(i, 0.18F * s.Of(kNoseBridge));
    const Point lower = frame.down * (0.06F * s.Of(kNoseLength) * frame.width);
    for (int i = 46; i <= 51; ++i) moves[i] += lower;
    for (const int i : {82, 83}) moves[i] += lower;
    moves[45] += lower * 0.5F;
}

void MoveMouth(const FaceSdkFace& face, const Strengths& s, const FaceFrame& frame, Point* moves) {
    const Point middle = (At(face, 84) + At(face, 90)) * 0.5F;
    for (int i = 84; i <= 103; ++i) {
        moves[i] += (At(face, i) - middle) * (0.22F * s.Of(kMouthSize));
        moves[i] += frame.down * (0.05F * s.Of(kPhiltrum) * frame.width);
    }
}

}  // namespace

void FaceWarp::Targets(const FaceSdkFace& face, const Strengths& strengths,
                       cv::Point2f (&moves)[kFaceSdkLandmarks]) {
    std::fill(std::begin(moves), std::end(moves), Point());
    const FaceFrame frame(face);
    MoveJaw(face, strengths, frame, moves);
    for (const Eye& eye : kEyes) MoveEye(face, strengths, frame, eye, moves);
    MoveNose(face, strengths, frame, moves);
    MoveMouth(face, strengths, frame, moves);
}

void FaceWarp::Add(const FaceSdkFace& face, const Strengths& strengths, const cv::Size2f& frame) {
    cv::Point2f marks[kFaceSdkLandmarks];
    Targets(face, strengths, marks);
    const FaceFrame axes(face);
    struct Control {
        Point place;
        Point move;
    };
    std::vector<Control> controls;
    for (int i = 0; i < kFaceSdkLandmarks; ++i)
        controls.push_back({At(face, i) + marks[i], marks[i]});
    // Points that no landmark tells of: the hairline, and round the apples of the cheeks.
    const Point eyes = (At(face, 104) + At(face, 105)) * 0.5F;
    const float height = std::abs((At(face, 16) - eyes).dot(axes.down));
    for (int i = -2; i <= 2; ++i) {
        const Point move = axes.down * (-0.08F * strengths.Of(kHairline) * axes.width);
        const Point place = eyes -
                            axes.down * ((0.75F - 0.06F * static_cast<float>(i * i)) * height) +
                            axes.across * (0.18F * static_cast<float>(i) * axes.width);
        controls.push_back({place + move, move});
    }
    for (const auto& [lid, corner] : {std::pair(73, 84), std::pair(76, 90)}) {
        const Point middle = (At(face, lid) * 0.6F + At(face, corner) * 0.4F);
        for (int i = 0; i < 6; ++i) {
            const float angle = static_cast<float>(i) * 1.0471976F;
            const Point arm = Point(std::cos(angle), std::sin(angle)) * (0.09F * axes.width);
            const Point move = arm * (0.3F * strengths.Of(kCheeks));
            controls.push_back({middle + arm + move, move});
        }
    }
    if (std::all_of(controls.begin(), controls.end(),
                    [](const Control& control) { return Length(control.move) < 0.01F; })) {
        return;
    }
    moves = true;
    const float reach = 0.2F * axes.width;
    cv::Point2f low = controls[0].place;
    cv::Point2f high = low;
    for (const Control& control : controls) {
        low = {std::min(low.x, control.place.x), std::min(low.y, control.place.y)};
        high = {std::max(high.x, control.place.x), std::max(high.y, control.place.y)};
    }
    const float cellX = frame.width / static_cast<float>(field.cols);
    const float cellY = frame.height / static_cast<float>(field.rows);
    const auto clampTo = [](float value, int last) {
        return static_cast<int>(std::clamp(value, 0.0F, static_cast<float>(last)));
    };
    for (int y = clampTo((low.y - reach) / cellY, field.rows);
         y < clampTo((high.y + reach) / cellY + 1.0F, field.rows); ++y) {
        auto* const row = field.ptr<cv::Vec2f>(y);
        for (int x = clampTo((low.x - reach) / cellX, field.cols);
             x < clampTo((high.x + reach) / cellX + 1.0F, field.cols); ++x) {
            const Point place((static_cast<float>(x) + 0.5F) * cellX,
                              (static_cast<float>(y) + 0.5F) * cellY);
            Point sum;
            float weights = 0.0F;
            for (const Control& control : controls) {
                const Point away = place - control.place;
                const float near = 1.0F - away.dot(away) / (reach * reach);
                if (near <= 0.0F) continue;
                // Steep: the nearest landmarks decide, those around only smooth.
                const float weight = near * near * near * near * near * near;
                sum += control.move * weight;
                weights += weight;
            }
            if (weights <= 0.0F) continue;
            const Point move = sum / std::max(weights, 1.0F);
            row[x] -= cv::Vec2f(move.x / frame.width, move.y / frame.height);
        }
    }
}

bool FaceWarp::Make(const FaceSdkResult& faces, const Strengths& strengths) {
    moves = false;
    if (faces.faceCount < 1 || faces.width < 1 || faces.height < 1) return false;
    const int columns = std::clamp(kRows * faces.width / faces.height, 16, 4 * kRows);
    field.create(kRows, columns, CV_32FC2);
    field.setTo(cv::Scalar::all(0.0));
    const cv::Size2f frame(static_cast<float>(faces.width), static_cast<float>(faces.height));
    for (int32_t i = 0; i < faces.faceCount; ++i) Add(faces.faces[i], strengths, frame);
    return moves;
}

}  // namespace kelmo::beauty
