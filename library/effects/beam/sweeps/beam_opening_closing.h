// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "effects/beam/sweeps/beam_sweep_effect.h"

namespace kelmo {

/// A blade of light opens the clip over its first "duration" seconds (at most all of it); then the
/// clip is itself. "uEclosion" goes to the feather. The shader has "iFrame" and "totalFrames" as
/// integers, and can tell the end of the clip by them.
class NLEOpenGLBeamOpeningClosing : public BeamSweepEffect {
public:
    explicit NLEOpenGLBeamOpeningClosing(std::shared_ptr<NLEFilterInfo> filterInfo);

    int32_t InitParams() override;

protected:
    float PathFrames() override;
    void SendOwn() override;
};

}  // namespace kelmo
