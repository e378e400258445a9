// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <string>
#include <vector>

/// What a description says of a filter that draws in several passes ("PASSES").
namespace kelmo {

/// One picture that a pass reads.
struct PassInput {
    enum Kind { kClip, kSecondClip, kPass };
    Kind kind = kClip;
    /// For kPass: index of the pass; that behind the last one is the filter's own picture.
    std::size_t pass = 0;
    /// The pass's picture of the frame before instead of this frame's.
    bool before = false;

    bool operator==(const PassInput&) const = default;
};

/// One pass: a shader that draws a picture of its own size.
struct FilterPass {
    std::string name;
    std::string fragmentPath;
    /// In the order of the input slots.
    std::vector<PassInput> reads;
    /// Size as a part of the frame's, above 0 and up to 1.
    double scale = 1.0;
    /// Height in pixels, the width by the shape of the frame; 0 leaves the size to `scale`.
    int32_t height = 0;
    /// Parameters without which the pass has nothing to do: at 0 it is skipped, and stands for the
    /// first picture that it reads.
    std::vector<std::string> needs;
};

inline constexpr std::size_t kMaxPasses = 32;
inline constexpr std::size_t kMaxPassInputs = 8;
inline constexpr int32_t kMaxPassHeight = 8192;

}  // namespace kelmo
