// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "bindings/ai_filter_handle.h"
#include "framework/filter/nle_opengl_combine_filter.h"
#include "framework/filter/sub_filters.h"

namespace kelmo {

/// Rings of noise that burst from a face to where it looks.
///
/// Parameters: "duration" (float, thousands of ticks of a cycle, 15 ticks when absent),
/// "shiftingChangeRatio" (2), "scaleChangeRatio" (2), "startScale" (0.3); all go to the ring's
/// stage, too. Faces turned aside by more than 50 degrees have none. Shader: clip, ring;
/// "uFaceVector" (vec2), where the head points; "uCenter" (vec2), the middle of the face, y down.
class NLEOpenGLBeamFaceShockEffect : public NLEOpenGLCombineFilter {
public:
    explicit NLEOpenGLBeamFaceShockEffect(std::shared_ptr<NLEFilterInfo> filterInfo);

    int32_t InitEffect() override;
    int32_t Resize(int32_t newWidth, int32_t newHeight, int32_t newStride) override;
    int32_t InitParams() override;
    int32_t DoEffect(const FrameRecord& second, const FrameRecord& first, FrameRecord& out,
                     int32_t frameWidth, int32_t frameHeight, int32_t frameStride) override;

private:
    void SetRing(const char* name, float value);
    void AimAt(const AIDATA::HumanFaceInfo& face, float scale);

    AIFilterHandle tracker{kAIFaceShockFilter};
    SubFilters stages{this};
    NLEOpenGLFilter* shapeNoise;
};

}  // namespace kelmo
