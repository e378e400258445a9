// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <memory>
#include <vector>

#include "effects/image/dual_kawase_blur.h"
#include "effects/image/motion_blur.h"
#include "effects/text/letters/char_outlines.h"
#include "framework/filter/nle_opengl_filter.h"
#include "framework/filter/sub_filters.h"

namespace kelmo {

/// Brings the letters of a text in or takes them away one by one, with motion blur or, for some
/// GUIDs, with a blur that clears. Its vertex shader says how; descriptions choose the shader.
///
/// Parameters: "Intro", "Outro" (seconds; the letters move during one of them, else the whole
/// picture is one quad of corners -1 and 1), "In_timeRatio", "out_timeRatio" (parts of the clip),
/// "uIterations", "motion_blur_length" (hundredths of a second between samples),
/// "motion_blur_frame_count" (0 to 16). All numbers go to the shader.
///
/// Attributes: "position" (3, device space), "texcoord" (2), "center" (4: x, y in device space,
/// index of the letter, degrees of its rectangle), "texcoord_top_left", "texcoord_bottom_right"
/// (2), "midleft" (2, device space), "blrPnt" and "tlrPnt" (4: left and right corner of the upright
/// letter's bottom and top). Uniforms: "globalTextCenter" and the text's corners
/// "globalTextBLPoint", "...BR...", "...TL...", "...TR...", "textAngle" (degrees), "charNums",
/// "dt", "dstAlpha".
class NLEOpenGLSingleCharBlurType : public NLEOpenGLFilter {
public:
    explicit NLEOpenGLSingleCharBlurType(std::shared_ptr<NLEFilterInfo> filterInfo);

    int32_t InitEffect() override;
    int32_t Resize(int32_t newWidth, int32_t newHeight, int32_t newStride) override;
    int32_t InitParams() override;
    int32_t DoEffect(const FrameRecord& second, const FrameRecord& first, FrameRecord& out,
                     int32_t frameWidth, int32_t frameHeight, int32_t frameStride) override;

private:
    enum class Variant : uint8_t { kRatioBlur, kTimedBlur, kTimedBlurCoarse, kMotionBlur };
    /// A frame to draw.
    struct Job {
        const FrameRecord& first;
        FrameRecord& out;
        int32_t width, height, stride;
    };

    Variant OwnVariant() const;
    void TakeText(TextPath& text);
    void BuildQuads();
    void SendTextCorners();
    bool WholeFrame() const;
    void BindGeometry(bool whole);
    int32_t DrawWithMotionBlur(const Job& job);
    int32_t DrawWithRatioBlur(const Job& job);
    int32_t DrawWithTimedBlur(const Job& job);
    int32_t DrawBlurred(const Job& job, int32_t iterations);
    int32_t DrawSamples(const Job& job, int32_t samples, float distance);
    bool SamplesWanted(int32_t& samples, float& distance);

    SubFilters stages{this};
    NLEOpenGLDualKawaseBlur* blurFilter;
    NLEOpenGLMotionBlur* motionBlurFilter;
    std::shared_ptr<TextPath> textPath;
    CharOutlines outlines;
    std::vector<FrameRecord> samplesDrawn;
    cv::Mat scaled;
    int32_t charCount = 0;
    int32_t triangleCount = 0;
    float textAngle = 0.0F;
    float intro = 0.0F;
    float outro = 0.0F;
    std::vector<float> positions, texcoords, topLefts, bottomRights, centers, midLefts, blrPoints,
        tlrPoints;
};

}  // namespace kelmo
