// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <memory>
#include <opencv2/core.hpp>
#include <string>

#include "framework/filter/nle_opengl_filter.h"
#include "tests/support/engine_session.h"
#include "tests/support/recording_host.h"

namespace kelmo::test {

/// The effects of the real catalogue against the recording engine: descriptions come from the
/// material folders, so that a test sees the parameters that users see.
class MaterialEffects {
public:
    MaterialEffects();
    ~MaterialEffects();

    /// A filter of that GUID, initialised and brought to `width` x `height` with 4 bytes a pixel;
    /// at 25 frames a second and 100 frames long. Throws when the catalogue has none.
    std::unique_ptr<NLEOpenGLFilter> Make(const std::string& guid, int32_t width = 64,
                                          int32_t height = 36);
    template <typename Effect>
    std::unique_ptr<Effect> MakeAs(const std::string& guid, int32_t width = 64,
                                   int32_t height = 36) {
        auto filter = Make(guid, width, height);
        if (dynamic_cast<Effect*>(filter.get()) == nullptr) return nullptr;
        return std::unique_ptr<Effect>(static_cast<Effect*>(filter.release()));
    }

    AcquiredHost host;
    EngineSession session;
    RecordingEngine& Engine() { return session; }
};

/// A CPU record of a picture, borrowed from it.
FrameRecord RecordOf(cv::Mat& picture);

/// Draws one frame into the engine (no target) and returns the result of `DoEffect`.
int32_t DrawFrame(NLEOpenGLFilter& filter, int32_t position, const FrameRecord& first,
                  const FrameRecord& second = {});

}  // namespace kelmo::test
