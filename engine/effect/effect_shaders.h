// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "contract/engine.h"
#include "engine/effect/pass_program.h"

namespace kelmo {

/// The files of one effect's shaders.
struct ShaderFiles {
    std::string fragment;
    std::string vertex;  ///< empty: the built-in one
    ShaderExterns fragmentGroups;
    ShaderExterns vertexGroups;
};

/// Reads, compiles and links the shaders for one choice of variants; inside a scope. Null on
/// failure, with `error` in terms of the author's files. This is also the check for material: it
/// needs no effect.
std::shared_ptr<ShaderProgram> BuildShaders(GlDevice& device, const ShaderFiles& files,
                                            const std::vector<int32_t>& variants, int audioBuffers,
                                            std::string& error);

/// The programs of one effect: one for each choice of variants that was ever used. A choice that
/// failed is remembered and not compiled again.
class EffectShaders {
public:
    explicit EffectShaders(ShaderFiles files) : files(std::move(files)) {}

    /// The effect brings no vertex shader of its own.
    bool HasDefaultVertex() const { return files.vertex.empty(); }
    void SetVariants(const std::vector<int32_t>& indices);
    void AddAudioBuffer() { ++audioBuffers; }
    int AudioBuffers() const { return audioBuffers; }
    /// Compiles the present choice again, whether known or not.
    PassProgram* Rebuild(GlDevice& device);
    /// The program of the present choice, built on first use; null, logged once, when it fails.
    PassProgram* Current(GlDevice& device);

private:
    struct Variant {
        std::vector<int32_t> indices;
        std::unique_ptr<PassProgram> program;
    };

    static constexpr size_t kNone = static_cast<size_t>(-1);

    ShaderFiles files;
    std::vector<int32_t> chosen;
    std::vector<Variant> variants;
    size_t current = kNone;
    int audioBuffers = 0;
};

}  // namespace kelmo
