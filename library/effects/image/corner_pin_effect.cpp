// SPDX-License-Identifier: GPL-3.0-or-later
#include "effects/image/corner_pin_effect.h"

#include <cmath>
#include <opencv2/imgproc.hpp>

#include "framework/filter/effect_registry.h"
#include "framework/filter/filter_guids.h"

namespace kelmo {
namespace {

const bool kRegistered = RegisterEffect("NLEOpenGLCornerPinEffect",
                                        MakeEffect<NLEOpenGLCornerPinEffect>, {kCornerPinGuid});

/// Above 0 when the way a, b, c turns one way, below 0 for the other.
float Turn(const cv::Point2f& a, const cv::Point2f& b, const cv::Point2f& c) {
    return (a.y - b.y) * (c.x - b.x) - (c.y - b.y) * (a.x - b.x);
}

}  // namespace

bool IsConvexQuad(const std::array<cv::Point2f, 4>& p) {
    // Numbers that are none turn neither way, which would pass for convex.
    for (const cv::Point2f& corner : p) {
        if (!std::isfinite(corner.x) || !std::isfinite(corner.y)) return false;
    }
    const bool side = Turn(p[0], p[1], p[3]) > 0.0F;
    return (Turn(p[1], p[3], p[2]) >= 0.0F) == side && (Turn(p[3], p[2], p[0]) >= 0.0F) == side &&
           (Turn(p[2], p[0], p[1]) >= 0.0F) == side;
}

NLEOpenGLCornerPinEffect::NLEOpenGLCornerPinEffect(std::shared_ptr<NLEFilterInfo> filterInfo)
    : NLEOpenGLFilter(std::move(filterInfo)) {}

int32_t NLEOpenGLCornerPinEffect::InitParams() {
    engine->AddUniformMat3("perspective_mat", perspectiveMat.data());
    engine->AddUniformInt("is_conv", isConvex);
    return kFilterOk;
}

void NLEOpenGLCornerPinEffect::ReadCorners() {
    FindFloat("left_upx", leftUpX);
    FindFloat("left_upy", leftUpY);
    FindFloat("right_upx", rightUpX);
    FindFloat("right_upy", rightUpY);
    FindFloat("left_downx", leftDownX);
    FindFloat("left_downy", leftDownY);
    FindFloat("right_downx", rightDownX);
    FindFloat("right_downy", rightDownY);
}

void NLEOpenGLCornerPinEffect::UpdateMatrix(float right, float bottom) {
    const std::array<cv::Point2f, 4> source = {
        {{0.0F, 0.0F}, {right, 0.0F}, {0.0F, bottom}, {right, bottom}}};
    const std::array<cv::Point2f, 4> target = {{{right * leftUpX, bottom * leftUpY},
                                                {right * rightUpX, bottom * rightUpY},
                                                {right * leftDownX, bottom * leftDownY},
                                                {right * rightDownX, bottom * rightDownY}}};
    isConvex = IsConvexQuad(target) ? 1 : 0;
    cv::Mat matrix = cv::Mat::eye(3, 3, CV_64F);
    if (isConvex) {
        homography = cv::getPerspectiveTransform(source.data(), target.data());
        // A quad without area has no way back; the zero matrix that comes out shows nothing.
        matrix = homography.inv();
        if (!cv::checkRange(matrix)) matrix = cv::Mat::zeros(3, 3, CV_64F);
    }
    for (int column = 0; column < 3; ++column) {
        for (int row = 0; row < 3; ++row) {
            perspectiveMat[column * 3 + row] = static_cast<float>(matrix.at<double>(row, column));
        }
    }
}

int32_t NLEOpenGLCornerPinEffect::DoEffect(const FrameRecord& second, const FrameRecord& first,
                                           FrameRecord& out, int32_t, int32_t, int32_t) {
    if (!engine) return kFilterFailed;
    int32_t slot = 0;
    SetInputFrame(slot, first);
    SetInputFrame(slot, second);
    ReadCorners();
    const float x = FloatOr("cornerpin_roix0", 0.0F);
    const float y = FloatOr("cornerpin_roiy0", 0.0F);
    const float w = FloatOr("cornerpin_roiw", 1.0F);
    const float h = FloatOr("cornerpin_roih", 1.0F);
    UploadParams();
    engine->SetUniformVec4("result_roi", x, y, w, h);
    UpdateMatrix(static_cast<float>(first.width - 1), static_cast<float>(first.height - 1));
    engine->SetUniformMat3("perspective_mat", perspectiveMat.data());
    engine->SetUniformInt("is_conv", isConvex);
    return RenderTo(out);
}

}  // namespace kelmo
