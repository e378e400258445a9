// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <memory>
#include <opencv2/core.hpp>
#include <vector>

#include "bindings/ai_filter_handle.h"
#include "effects/beam/beam_eclosion_effect.h"
#include "effects/beam/lines/beam_effect.h"
#include "effects/beam/lines/contour_to_lines.h"
#include "framework/engine/color_uniform.h"
#include "framework/filter/nle_opengl_combine_filter.h"
#include "framework/filter/sub_filters.h"

namespace kelmo {

/// Light that runs along the outline of a person or of bright shapes. Base of the effects that take
/// their lines from elsewhere: they replace `CalMaskBeamParam` and what else they need.
///
/// Parameters go to the line renderer and to the shader by their names; "duration" (thousands of
/// ticks of a cycle), "isHuman" (1: the person mask, otherwise the clip's brightness), "segment",
/// "randomColor", "color", "color1", "isWindow", "isMutiHuman", "uEclosion" and
/// "animation_duration" are read here. Shader: clip, lines, lines feathered, then the material.
/// A failed mask gives kFilterFailed. A frame drawn again gives the same picture.
class NLEOpenGLBeamEdgeFlowEffect : public NLEOpenGLCombineFilter {
public:
    NLEOpenGLBeamEdgeFlowEffect(std::shared_ptr<NLEFilterInfo> filterInfo, const char* beamGuid,
                                const char* eclosionGuid, bool needsSegmentation);

    /// Fills the lines from the mask; `result` becomes the box of what was found, pixels of it.
    virtual void CalMaskBeamParam(cv::Rect* result, NLEOpenGLBeamEffect* lines, cv::Mat* picture,
                                  bool isHuman, float segment);
    virtual void UpdateBeamProgress(NLEOpenGLBeamEffect* lines, bool loop, int32_t cycle);
    /// Just before the frame is drawn.
    virtual void PrepareDraw(int32_t textureUnit, const FrameRecord& source, int32_t frameWidth,
                             int32_t frameHeight, int32_t frameStride);
    virtual void GetWorkSizes(int32_t frameWidth, int32_t frameHeight, cv::Size* maskSize,
                              cv::Size* beamSize, cv::Size* eclosionSize);

    void SetBeam(NLEOpenGLBeamEffect* lines) { beam = lines; }
    NLEOpenGLBeamEffect* GetOwnedBeam() const { return ownedBeam; }
    /// An owner takes over lines, progress and bound: left, top, right, bottom.
    void SetFixedBound(const float values[4]);
    void SetShowSrc(bool show) { showSrc = show; }
    /// What the lines of the last frame were taken from, one channel; without picture when they had
    /// no mask. Valid until the next frame or `Resize`.
    const FrameRecord& GetMaskFrame() const { return maskFrame; }

    int32_t InitParams() override;
    int32_t InitEffect() override;
    int32_t Resize(int32_t newWidth, int32_t newHeight, int32_t newStride) override;
    int32_t DoEffect(const FrameRecord& second, const FrameRecord& first, FrameRecord& out,
                     int32_t frameWidth, int32_t frameHeight, int32_t frameStride) override;

protected:
    /// Where time stands in a cycle of so many ticks, 0..1.
    float CycleOf(int32_t cycle) const;
    /// One line of no colour: nothing to draw.
    static void ClearLines(NLEOpenGLBeamEffect& lines);

private:
    void ChooseColors();
    bool MakeLines(const FrameRecord& first, const cv::Size& maskSize, cv::Rect& box, bool human);
    void SendBound(const cv::Rect& box, const cv::Size& maskSize, const cv::Size& eclosionSize);
    void DrawStages(int32_t& slot, const FrameRecord& second, const FrameRecord& first,
                    const cv::Size& beamSize, int32_t frameWidth, int32_t frameHeight,
                    int32_t frameStride);

    std::unique_ptr<AIFilterHandle> segmentation;
    SubFilters beams{this};
    SubFilters feathers{this};
    NLEOpenGLBeamEffect* ownedBeam;
    NLEOpenGLFilter* eclosion;
    NLEOpenGLBeamEffect* beam;
    ColorUniform firstColor{"color"};
    ColorUniform secondColor{"color1"};
    ContourToLines converter;
    std::vector<std::vector<cv::Point>> contours;
    cv::Mat mask;
    FrameRecord maskFrame;
    cv::Mat binary;
    cv::Mat framed;
    float bound[4] = {0.0F, 0.0F, 1.0F, 1.0F};
    float minSegment = 0.0137F;
    int32_t durationFrames = 21;
    int32_t eclosionRadius = 21;
    int32_t colorValue = 0x39FF14;
    int32_t drawCount = 0;
    bool boundFixed = false;
    bool showSrc = true;
};

}  // namespace kelmo
