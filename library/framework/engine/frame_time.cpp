// SPDX-License-Identifier: GPL-3.0-or-later
#include "framework/engine/frame_time.h"

namespace kelmo {

void UploadGlobalTime(NLEOpenGLEngineEffect& engine, const FrameTime& time) {
    engine.SetUniformFloat("global_time", time.position);
    engine.SetUniformFloat("total_time", time.duration);
}

void UploadTimeAndLength(NLEOpenGLEngineEffect& engine, const FrameTime& time) {
    UploadGlobalTime(engine, time);
    engine.SetUniformFloat("current_pos", time.position);
    engine.SetUniformFloat("total_len", time.duration);
}

void UploadTime(NLEOpenGLEngineEffect& engine, const FrameTime& time) {
    UploadTimeAndLength(engine, time);
    engine.SetUniformFloat("frame_rate", time.rate);
}

}  // namespace kelmo
