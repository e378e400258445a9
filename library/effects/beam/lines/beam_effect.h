// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <cstdint>

#include "effects/beam/lines/line_mesh.h"
#include "effects/beam/lines/line_table.h"
#include "framework/engine/color_uniform.h"
#include "framework/filter/nle_opengl_filter.h"

namespace kelmo {

/// Draws glowing lines, each a cubic Bezier, into a picture of its own; a stage of nearly every
/// beam. Its owner fills the table of lines.
///
/// Parameters: "uPointCount" steps of each line (at most 3000), "uLineCount" lines of the mesh for
/// shaders that draw several lines in one instance, "color"; all numbers go to the shader.
/// Shader: arrays "uStartEndData", "uControlData", "uProgressRange", "uColor", one element a line;
/// one instance a line; "uProgress" to "uProgressEnd" is the part of the path that shines, which
/// may run past 1: such a window is one that wanders round. "uTime" in ticks. The picture stays in
/// target 0.
class NLEOpenGLBeamEffect : public NLEOpenGLFilter {
public:
    explicit NLEOpenGLBeamEffect(std::shared_ptr<NLEFilterInfo> filterInfo);

    void SetLineStartEnd(const float values[4], int32_t index) { table.SetStartEnd(values, index); }
    void SetLineControl(const float values[4], int32_t index) { table.SetControl(values, index); }
    void SetLineProgressRange(const float values[2], int32_t index) {
        table.SetProgressRange(values, index);
    }
    void SetLineColor(const float values[4], int32_t index) { table.SetColor(values, index); }
    void SetLineCount(int32_t count) { table.SetCount(count); }
    int32_t GetLineCount() const { return table.Count(); }
    /// A white line in row `index`.
    void SetLine(const CurveLine& line, int32_t index);
    const LineTable& Lines() const { return table; }

    /// For the next draw alone. Left to itself, a beam grows during the first half of the clip and
    /// shrinks from its tail during the second.
    void SetProgress(float start, float end);
    void SetRequestedMeshLines(int32_t lines) { requestedMeshLines = lines; }
    /// Two matrices of 16 floats, column-major; the first places the lines.
    void SetMvp(const float values[32]);

    int32_t InitParams() override;
    int32_t InitEffect() override;
    int32_t DoEffect(const FrameRecord& second, const FrameRecord& first, FrameRecord& out,
                     int32_t frameWidth, int32_t frameHeight, int32_t frameStride) override;

private:
    void TakeParams();
    void GiveMesh(int32_t steps);
    void SendProgress();

    LineTable table;
    LineMesh mesh;
    ColorUniform colorBytes{"color"};
    std::array<float, 32> mvp;
    int32_t requestedMeshLines = 1;
    bool explicitProgress = false;
    float progressStart = 0.0F;
    float progressEnd = 1.0F;
};

}  // namespace kelmo
