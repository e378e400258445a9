// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "contract/frame_record.h"
#include "contract/qor_host.h"
#include "framework/audio/audio_analysis.h"

/// Frames and sound of the host as the filters take them: everything borrowed, nothing copied.
namespace kelmo {

/// A frame with a GPU surface becomes a texture (and keeps its pixels, if it has any, for effects
/// that read them); else one with pixels a CPU picture; else, and for null, a record without
/// picture.
FrameRecord InputRecord(QorFrame* frame);
/// The same for the frame that is drawn into; one with a surface never carries pixels.
FrameRecord OutputRecord(QorFrame* frame);

/// The samples of a frame; without an object, as many zeros as a frame at 25 a second has at 44100
/// Hz in two channels.
AudioInput AudioOf(QorAudio* audio);

}  // namespace kelmo
