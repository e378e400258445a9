// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "effects/beam/sweeps/beam_sweep_effect.h"

namespace kelmo {

/// A blade of light opens the second clip, over the whole transition. "uZoomStartNode",
/// "uZoomEndNode", "uAlphaStartNode" and "uAlphaEndNode" go to the lines; "uEclosion" to their
/// feather.
class NLEOpenGLBeamTransition : public BeamSweepEffect {
public:
    explicit NLEOpenGLBeamTransition(std::shared_ptr<NLEFilterInfo> filterInfo);

    int32_t InitParams() override;

protected:
    float PathFrames() override { return static_cast<float>(duration); }
    void SendOwn() override;
};

}  // namespace kelmo
