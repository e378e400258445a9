// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <map>
#include <string>

#include "effects/beam/beam_eclosion_effect.h"
#include "effects/beam/lines/beam_effect.h"
#include "effects/beam/sweeps/sweep_path.h"
#include "framework/engine/color_uniform.h"
#include "framework/filter/nle_opengl_filter.h"
#include "framework/filter/sub_filters.h"

namespace kelmo {

/// What the sweeps share: blades of light along a path that the description's GUID picks,
/// feathered, between which something new is seen.
///
/// Parameters: "uRadius" to the lines, "glowColor"; all numbers go to the shader. Shader: the
/// clips, then lines and feathered lines; "leftLine" and "rightLine", of rectangles "leftLine2" and
/// "rightLine2" as well, two points each in texture coordinates; "startBlend" 1 while the new
/// picture stands between them; "iFrame". An unknown GUID draws no line.
class BeamSweepEffect : public NLEOpenGLFilter {
public:
    int32_t InitParams() override;
    int32_t InitEffect() override;
    int32_t Resize(int32_t newWidth, int32_t newHeight, int32_t newStride) override;
    int32_t DoEffect(const FrameRecord& second, const FrameRecord& first, FrameRecord& out,
                     int32_t frameWidth, int32_t frameHeight, int32_t frameStride) override;

protected:
    using Paths = std::map<std::string, SweepPath, std::less<>>;

    BeamSweepEffect(std::shared_ptr<NLEFilterInfo> filterInfo, const Paths& paths);

    /// Frames that the path takes; no path runs while this is not above 0.
    virtual float PathFrames() = 0;
    /// Values of the lines' width and strength, and the frame's numbers for the shader.
    virtual void SendOwn() = 0;

    NLEOpenGLBeamEffect* Beam() const { return beam; }
    NLEOpenGLBeamEclosionEffect* Eclosion() const { return eclosion; }

private:
    void FillLines(const Sweep& sweep);
    void SendEdges(const Sweep& sweep);

    SubFilters subFilters{this};
    NLEOpenGLBeamEffect* beam;
    NLEOpenGLBeamEclosionEffect* eclosion;
    ColorUniform glowBytes{"glow_color"};
    SweepPath path = SweepPath::kNone;
};

}  // namespace kelmo
