// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>
#include <vector>

#include "contract/engine.h"

namespace kelmo {

/// A shader with all its includes, ready for the prelude in front.
struct ShaderSource {
    /// One text, whose `#line` directives let `MapCompileLog` find the place in `files` again.
    std::string text;
    std::vector<std::string> files;
};

/// The files that "variant:G" stands for.
struct VariantChoice {
    const std::vector<std::vector<std::string>>* groups = nullptr;
    /// Entry G picks the file of group G; a group without entry takes its first file.
    const std::vector<int32_t>* indices = nullptr;
};

/// Reads `path` and resolves its `#include` lines: "variant:G", else beside the including file,
/// else in the common folder. A file is taken in once. False, with `error` naming file and line,
/// when something is missing.
bool AssembleShader(const std::string& path, const std::string& commonFolder,
                    const VariantChoice& variants, ShaderSource& source, std::string& error);

/// The shared folder that belongs to a material file: what stands before its last "qor_effect/",
/// with "qor_effect/material/common" behind it; empty for a file that lies elsewhere.
std::string CommonFolderOf(const std::string& path);

/// Rewrites a driver's compile log so that lines begin with the author's file and line:
/// "file:line: message". `lineOffset` is added to the driver's line numbers. Lines that name no
/// place stay as they are.
std::string MapCompileLog(const std::string& log, const std::vector<std::string>& files,
                          int lineOffset);

}  // namespace kelmo
