// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <opencv2/core.hpp>

#include "framework/shared/matrix4.h"

namespace kelmo {

/// How a host places a text in the frame.
struct TextTransform {
    float scaleX = 1.0F, scaleY = 1.0F;
    float moveX = 0.0F, moveY = 0.0F;  ///< halves of the frame, y down
    float keptX = 0.5F, keptY = 0.5F;  ///< sent, without a use
    float rotation = 0.0F;             ///< degrees
};

/// Where camera and letters stand. Lengths in halves of the frame's height, angles in degrees.
struct TextScene {
    cv::Size frame;  ///< pixels
    cv::Vec3f camera{0.0F, 0.0F, 2.4F};
    cv::Vec3f up{0.0F, 1.0F, 0.0F};
    cv::Vec3f position;
    cv::Vec3f rotation;
    float scale = 1.0F;
    cv::Point2f center;    ///< of the picture, as given: x to the left, y up
    bool hasText = false;  ///< otherwise a mask, which stands where it was found
    bool flat =
        false;  ///< without perspective, so that boxes and lines stay where the host wants them
    cv::Point2f textOrigin;  ///< pixels
    cv::Point2f textCenter;  ///< halves of the frame
    float textAngle = 0.0F;
    TextTransform transform;

    Matrix4 Model() const;
    /// From the letters' space to the frame.
    Matrix4 Mvp() const;

private:
    Matrix4 View() const;
    Matrix4 Projection() const;
    Matrix4 FrameTransform() const;
};

}  // namespace kelmo
