// SPDX-License-Identifier: GPL-3.0-or-later
#include "effects/beam/lightning/beam_bolts.h"

#include "framework/filter/sub_filters.h"

namespace kelmo {

BoltLineSink AppendTo(NLEOpenGLBeamEffect& beam) {
    return [&beam](const BoltLine& line) {
        const int index = beam.GetLineCount();
        const float ends[4] = {line.start.x, line.start.y, line.end.x, line.end.y};
        const float progress[2] = {line.startProgress, line.endProgress};
        const float color[4] = {1.0F, 1.0F, 1.0F, line.alpha};
        beam.SetLineStartEnd(ends, index);
        beam.SetLineControl(ends, index);
        beam.SetLineProgressRange(progress, index);
        beam.SetLineColor(color, index);
        beam.SetLineCount(index + 1);
    };
}

FrameRecord RunBolts(NLEOpenGLBeamEffect& beam, const NLEOpenGLFilter& owner,
                     const FrameRecord& second, const FrameRecord& first, const WorkingSize& size) {
    beam.SetParam("uPointCount", kParamInt, NLEParamValue::Int(1));
    beam.SetProgress(0.0F, 1.0F);
    RunSubFilter(beam, owner, second, first, size);
    return beam.GetTargetFrame(0);
}

}  // namespace kelmo
