// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "host/cli/command_line.h"
#include "host/cli/render/render_plan.h"
#include "host/cli/render/text_layer.h"

namespace kelmo::host {

/// An effect as it was asked for, with its `name=value` texts.
struct EffectWish {
    std::string effect;
    std::vector<std::string> assignments;
};

enum class AlphaWish { kAutomatic, kKeep, kDrop };

/// All that `kelmo render` was told.
struct RenderRequest {
    std::vector<EffectWish> effects;
    std::vector<std::string> inputs;
    std::string output;
    TimingWishes timing;
    /// With a text, the effects work on the text, and the result lies over the input.
    TextWish text;
    /// What is known of the people of the one input; empty: effects ask the AI library.
    std::string mask;
    std::string pose;
    bool onGpu = false;
    bool overwrite = false;
    bool json = false;
    bool withAudio = true;
    bool reproducible = false;
    AlphaWish alpha = AlphaWish::kAutomatic;
    std::string codec;
    std::string pixelFormat;
    bool deinterlace = true;
    std::string container;
    std::string preset;
    int crf = -1;
};

/// Renders as asked: decoding and encoding run on threads of their own beside the effects, which
/// stay on the calling thread. Returns the exit code of success or interruption; failures are
/// thrown, and leave no output behind.
int Render(CommandLine& line, RenderRequest request);

}  // namespace kelmo::host
