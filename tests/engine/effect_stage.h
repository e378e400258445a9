// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <memory>
#include <mutex>
#include <ostream>
#include <string>
#include <vector>

#include "engine/effect_engine.h"
#include "support/temporary_folder.h"

namespace kelmo::test {

/// One pixel as it lies in a frame: blue, green, red, alpha.
struct Pixel {
    uint8_t b = 0, g = 0, r = 0, a = 0;
    bool operator==(const Pixel&) const = default;
};
inline std::ostream& operator<<(std::ostream& out, const Pixel& p) {
    return out << "(b " << int(p.b) << ", g " << int(p.g) << ", r " << int(p.r) << ", a "
               << int(p.a) << ")";
}

inline constexpr Pixel kNothing{0, 0, 0, 0};
inline constexpr Pixel kBlack{0, 0, 0, 255};
inline constexpr Pixel kWhite{255, 255, 255, 255};
inline constexpr Pixel kRed{0, 0, 255, 255};
inline constexpr Pixel kGreen{0, 255, 0, 255};
inline constexpr Pixel kBlue{255, 0, 0, 255};

/// Rows from top to bottom.
using Pixels = std::vector<Pixel>;

/// Collects what engines report; one for the whole program, because a callback carries no context.
class EngineLogLines {
public:
    static void Callback(int32_t level, const char* format, va_list args);
    /// All lines since the last call, joined with newlines.
    static std::string Take();

private:
    static std::mutex mutex;
    static std::string lines;
};

using EffectPointer = std::shared_ptr<NLEOpenGLEngineEffect>;

/// An engine with its own context, and a folder for shaders.
class EffectStage {
public:
    EffectStage();

    /// An effect of the given size with these shader texts; `declare` runs before CreateProgram.
    /// Fails the test when the program does not build.
    template <typename Declare>
    EffectPointer Make(int width, int height, const std::string& fragment,
                       const std::string& vertex, Declare declare) {
        EffectPointer effect = MakeUnbuilt(width, height, fragment, vertex);
        declare(*effect);
        Build(effect);
        return effect;
    }
    EffectPointer Make(int width, int height, const std::string& fragment,
                       const std::string& vertex = {}) {
        return Make(width, height, fragment, vertex, [](NLEOpenGLEngineEffect&) {});
    }
    EffectPointer MakeUnbuilt(int width, int height, const std::string& fragment,
                              const std::string& vertex = {}, bool multisample = false);

    EffectEngine& Engine() { return *engine; }
    TemporaryFolder& Folder() { return folder; }

private:
    static void Build(const EffectPointer& effect);

    TemporaryFolder folder;
    std::unique_ptr<EffectEngine> engine;
    int files = 0;
};

/// A CPU target of this size over `pixels`, which is resized to it.
FrameRecord TargetOf(Pixels& pixels, int width, int height);
/// Renders to pixels of the effect's size. Fails the test when Render does.
Pixels RenderPixels(const EffectPointer& effect);
/// Renders into the engine only.
void RenderInside(const EffectPointer& effect);
/// The picture of a GPU frame.
Pixels PixelsOf(const EffectPointer& effect, const FrameRecord& frame);
/// Gives a picture of BGRA pixels, rows from top to bottom, to slot `slot`.
void SetImage(const EffectPointer& effect, int slot, const Pixels& pixels, int width, int height);
/// A picture of one colour.
Pixels Filled(int count, Pixel pixel);

/// Shows the texture of slot 0.
inline constexpr const char* kCopyShader = "void main() { fragColor = Input0(vTexCoord); }\n";
/// Fills with the uniform vec4 "color" (r, g, b, a).
inline constexpr const char* kColorShader =
    "uniform vec4 color;\nvoid main() { fragColor = color; }\n";

}  // namespace kelmo::test
