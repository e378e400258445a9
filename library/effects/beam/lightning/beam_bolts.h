// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "effects/beam/lightning/fractal_bolt.h"
#include "effects/beam/lines/beam_effect.h"
#include "framework/shared/working_size.h"

namespace kelmo {

/// Appends the lines of bolts to those of a line renderer, which is borrowed.
BoltLineSink AppendTo(NLEOpenGLBeamEffect& beam);

/// Draws the bolts of a renderer, whole and each line in one step, since all are straight. Gives
/// its picture, which it keeps until its next draw.
FrameRecord RunBolts(NLEOpenGLBeamEffect& beam, const NLEOpenGLFilter& owner,
                     const FrameRecord& second, const FrameRecord& first, const WorkingSize& size);

}  // namespace kelmo
