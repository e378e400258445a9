// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <memory>
#include <vector>

#include "bindings/ai_filter_handle.h"
#include "framework/filter/nle_opengl_combine_filter.h"

namespace kelmo {

/// Pins what its shader draws to the people of the host's body points. The first one whose two
/// points are found gives the single anchor below; a shader that reads the list draws on everybody.
///
/// Works with a host that hands over body points (`ObjectAiDataTransfer`) alone. A frame without
/// them, without a person, or without the two points that the sticker hangs on gives kFilterFailed
/// and no log line: the host shows the clip, nothing is remembered, the next frame tries again.
///
/// Parameter "binding_type" (int): the sticker hangs on the middle of 0 the eyes (points 2 and 1),
/// 1 the shoulders (6 and 5). Other values leave the points of the frame before.
/// Uniforms: "anchor_point_x", "anchor_point_y" (int, pixels of the clip, top left is (0, 0)),
/// "scale_x", "scale_y" (float: 1 shows the sticker at its natural size). The size of the body is
/// taken once, on the first frame with a person; later frames only follow the place and the size of
/// the frame.
/// "stickers" (array of vec4, count "stickers_count", at most kMostStickers people in the host's
/// order): anchor x and y (fractions of the clip, y down), tilt (radians, counter-clockwise as
/// seen; 0 where the line through both points is level) and the distance of both points (heights of
/// the clip), all of this frame.
///
/// With the parameter "behind_person" (int, set to 1) the people's mask arrives at slot 2, so that
/// the shader can draw behind them.
class NLEOpenGLHumanPoseStickerEffect : public NLEOpenGLCombineFilter {
public:
    explicit NLEOpenGLHumanPoseStickerEffect(std::shared_ptr<NLEFilterInfo> filterInfo);

    static constexpr int32_t kMostStickers = 8;

    int32_t InitEffect() override;
    int32_t InitParams() override;
    /// kFilterRefusedType, and nothing stored, for a "binding_type" that is no int.
    int32_t SetParam(const char* name, int32_t type, NLEParamValue value) override;
    int32_t DoEffect(const FrameRecord& second, const FrameRecord& first, FrameRecord& out,
                     int32_t frameWidth, int32_t frameHeight, int32_t frameStride) override;

private:
    int32_t UpdatePose(const cv::Mat& picture, int32_t binding, cv::Point2f& anchor);
    bool TakeBodyPoints(const cv::Mat& picture, int32_t indexA, int32_t indexB);
    void AddSticker(cv::Point2f a, cv::Point2f b, const cv::Size& frame);
    void SendStickers();
    void SendMask(const FrameRecord& first);
    void TakeReference(const cv::Mat& picture, int32_t indexA, int32_t indexB);

    /// Held, never run: the body points come from the host.
    AIFilterHandle aiHandle{kAIPoseFilter};
    /// Made on first use, refilled on each frame.
    std::shared_ptr<AIDATA::HumanPoseDatas> poseData;
    int32_t bindingType = 0;
    /// The host's reference places of both points: x, y, x, y, fractions of the frame.
    std::array<float, 4> referencePoints = {};
    /// Size of the first frame with a person; 0 until then.
    int32_t referenceCols = 0;
    int32_t referenceRows = 0;
    /// For what is drawn behind people; made when the description has "behind_person".
    std::unique_ptr<AIFilterHandle> maskHandle;
    cv::Mat maskMat;
    /// Four numbers a sticker; kept when "binding_type" selects nothing.
    std::vector<float> stickers;
    /// Body points of now, fractions of the frame, y down.
    cv::Point2f pointA;
    cv::Point2f pointB;
    /// Distance of the body points on the first frame, in distances of the reference.
    float poseScale = 0.0F;
    bool firstPose = true;
};

}  // namespace kelmo
