// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>
#include <vector>

#include "contract/engine.h"
#include "platform/dynamic_library.h"

namespace kelmo {
class NLEFilterInfo;
}

namespace kelmo::material {

/// Compiles the shaders of descriptions with the real engine, without a window.
/// One at a time: the engine's log arrives through a process-wide callback.
class ShaderCompiler {
public:
    ShaderCompiler() = default;
    ~ShaderCompiler();
    ShaderCompiler(const ShaderCompiler&) = delete;
    ShaderCompiler& operator=(const ShaderCompiler&) = delete;

    /// Loads the engine library of that path. Empty, or what is wrong.
    std::string Open(const std::string& enginePath);
    /// The error lines of the compiler, naming pass, file and line; empty when all programs build.
    std::vector<std::string> Compile(const NLEFilterInfo& info);

private:
    std::vector<std::string> Build(const NLEFilterInfo& info, const std::string& fragmentPath,
                                   const std::string& vertexPath);

    DynamicLibrary library;
    NLEOpenGLEffectEngine* engine = nullptr;
    DestroyNLEOpenGLEffectEngineInstanceFn destroy = nullptr;
};

}  // namespace kelmo::material
