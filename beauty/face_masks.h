// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <opencv2/core.hpp>

#include "contract/face_sdk.h"

namespace kelmo::beauty {

/// Where the parts of faces are, with soft edges, at `kRows` rows of the picture, y down.
class FaceMasks {
public:
    static constexpr int kRows = 360;

    /// All faces of a picture.
    void Make(const FaceSdkResult& faces);
    /// `CV_8UC4`: skin, eyes, mouth (between the lips), below the eyes.
    const cv::Mat& Parts() const { return parts; }
    /// `CV_8UC1`: the folds from nose to mouth.
    const cv::Mat& Folds() const { return folds; }
    /// Width of the widest face in heights of the picture.
    float FaceWidth() const { return faceWidth; }

private:
    void Draw(const FaceSdkFace& face, float scale);

    cv::Mat planes[5];
    cv::Mat parts;
    cv::Mat folds;
    float faceWidth = 0.0F;
};

}  // namespace kelmo::beauty
