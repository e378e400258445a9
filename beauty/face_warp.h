// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <opencv2/core.hpp>
#include <vector>

#include "beauty/strengths.h"
#include "contract/face_sdk.h"

namespace kelmo::beauty {

/// Changes the shape of faces: moves their landmarks and draws the picture along, smoothly. What is
/// further from a face than a fifth of its width stays where it is.
class FaceWarp {
public:
    static constexpr int kRows = 160;

    /// Where the landmarks of a face go, in pixels each.
    static void Targets(const FaceSdkFace& face, const Strengths& strengths,
                        cv::Point2f (&moves)[kFaceSdkLandmarks]);

    /// Works out the field for these faces; false when nothing moves.
    bool Make(const FaceSdkResult& faces, const Strengths& strengths);
    /// For each place of the new picture, how far away in the old one its colour lies, in fractions
    /// of the picture, y down: `CV_32FC2`.
    const cv::Mat& Field() const { return field; }

private:
    void Add(const FaceSdkFace& face, const Strengths& strengths, const cv::Size2f& frame);

    cv::Mat field;
    bool moves = false;
};

}  // namespace kelmo::beauty
