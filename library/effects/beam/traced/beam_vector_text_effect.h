// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "effects/beam/traced/beam_bitmap_trace_effect.h"
#include "effects/beam/traced/text_outline.h"

namespace kelmo {

/// Light along the outlines of the host's text. Each text object is read once, in the frame it
/// comes with; its lines stay until the next one. Without text from the host the picture is traced.
class NLEOpenGLBeamVectorTextEffect : public NLEOpenGLBeamBitmapTraceEffect {
public:
    explicit NLEOpenGLBeamVectorTextEffect(std::shared_ptr<NLEFilterInfo> filterInfo);

    int32_t InitParams() override;
    void CalMaskBeamParam(cv::Rect* result, NLEOpenGLBeamEffect* lines, cv::Mat* picture,
                          bool isHuman, float segment) override;

private:
    TextOutline outline;
    bool hasTextPath = false;
};

}  // namespace kelmo
