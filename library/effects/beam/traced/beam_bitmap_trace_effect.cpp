// SPDX-License-Identifier: GPL-3.0-or-later
#include "effects/beam/traced/beam_bitmap_trace_effect.h"

#include <opencv2/imgproc.hpp>
#include <span>
#include <utility>

#include "effects/beam/traced/traced_lines.h"
#include "framework/filter/effect_registry.h"
#include "framework/filter/filter_guids.h"
#include "geometry/trace/bitmap_trace.h"

namespace kelmo {
namespace {

const bool kRegistered =
    RegisterEffect("NLEOpenGLBeamBitmapTraceEffect", MakeEffect<NLEOpenGLBeamBitmapTraceEffect>,
                   {"BeamTraceText", "F3C9CC86-9A8E-EE0B-170B-F6D68C0A50FD"});

}  // namespace

NLEOpenGLBeamBitmapTraceEffect::NLEOpenGLBeamBitmapTraceEffect(
    std::shared_ptr<NLEFilterInfo> filterInfo)
    : NLEOpenGLBeamEdgeFlowEffect(std::move(filterInfo), kBeamGuid, kBeamEclosionGuid, false) {}

void NLEOpenGLBeamBitmapTraceEffect::GetWorkSizes(int32_t frameWidth, int32_t frameHeight,
                                                  cv::Size* maskSize, cv::Size* beamSize,
                                                  cv::Size* eclosionSize) {
    *maskSize = *beamSize = *eclosionSize = cv::Size(frameWidth, frameHeight);
}

void NLEOpenGLBeamBitmapTraceEffect::CalMaskBeamParam(cv::Rect* result, NLEOpenGLBeamEffect* lines,
                                                      cv::Mat* picture, bool, float) {
    lines->SetParam("isAdaptiveAntialiasing", kParamInt, NLEParamValue::Int(1));
    finder.Find(*picture, IntOr("threshold", InkPicture::kUsualThreshold), IntOr("reverse", 0) == 1)
        .copyTo(ink);
    *result = cv::boundingRect(ink);
    ink.copyTo(work);
    // The tracer takes the background for ink: its first outline is that of the picture.
    Bitmap bitmap(ink);
    Bitmap workBitmap(work);
    BitmapTrace trace;
    trace.Trace(&bitmap, &workBitmap);
    const auto& paths = trace.GetPathList();
    if (paths.size() < 2) {
        ClearLines(*lines);
        return;
    }
    int32_t count = 0;
    TracedLines(std::span(paths).subspan(1), ink.size(),
                [&](const CurveLine& line) { lines->SetLine(line, count++); });
    lines->SetLineCount(count);
}

}  // namespace kelmo
