// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "effects/beam/beam_eclosion_effect.h"
#include "effects/scene/planes/floor_line.h"
#include "framework/engine/color_uniform.h"
#include "framework/filter/sub_filters.h"

namespace kelmo {

/// The clip mirrored at a line through it, in one of three ways, told by the description's GUID.
///
/// Parameters: "floorPositionX", "floorPositionY" (fractions of the frame, y down; 0.5 and 0.7),
/// "reflectionAngle" (degrees; the shader has radians), "tint" (0xRRGGBB, as "tint_color_r" and so
/// on). Uniforms: "baseLine" (vec4), the line; "fixedLine", its parallel through the farthest
/// corner below; both ends in texture space.
///
/// - In layers: the first pass ("calLayer" 1) draws the mirrored picture, the second (2) puts it
///   together with the clip: slots clip, mirrored picture.
/// - Soft: the same, and slots 2 and 3 hold the mirrored picture feathered by "uEclosion" and again
///   by 10 more. "materialID" (int) is a float for the shader.
/// - At a distance: one pass; "adjustLine" is the line at "reflectionDistance" below the floor,
///   "tmpLine" that at "reflectionDistance" + "reflectionFalloff", in heights of the frame.
class NLEOpenGLReflectionEffect : public NLEOpenGLFilter {
public:
    explicit NLEOpenGLReflectionEffect(std::shared_ptr<NLEFilterInfo> filterInfo);

    int32_t InitEffect() override;
    int32_t Resize(int32_t newWidth, int32_t newHeight, int32_t newStride) override;
    int32_t InitParams() override;
    int32_t DoEffect(const FrameRecord& second, const FrameRecord& first, FrameRecord& out,
                     int32_t frameWidth, int32_t frameHeight, int32_t frameStride) override;

private:
    enum class Way { kLayers, kSoft, kDistance };

    void SendLines(int32_t frameWidth, int32_t frameHeight);
    void SendLine(const char* name, const cv::Vec4f& line);
    void BindFeathered(int32_t& slot, const FrameRecord& layer, int32_t frameWidth,
                       int32_t frameHeight, int32_t frameStride);

    Way way;
    SubFilters stages{this};
    NLEOpenGLBeamEclosionEffect* feather = nullptr;
    NLEOpenGLBeamEclosionEffect* wideFeather = nullptr;
    ColorUniform tintBytes{"tint_color"};
};

}  // namespace kelmo
