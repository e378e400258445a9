// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "catalogue/nle_filter_info.h"

namespace kelmo {

/// One fault of a description, for its author.
struct DescriptionProblem {
    /// Key in the file, with the index of an array's element: "GUID", "TEXTURES[2]", "PARAMS[0]".
    std::string key;
    /// A sentence's end: "no such file: ...".
    std::string message;

    bool operator==(const DescriptionProblem&) const = default;
};

/// What is wrong with a description that was read, in the order of the file's keys; empty when all
/// is well. Looks at the disk, draws nothing.
///
/// Checked: the GUID's form; a display name; that shaders, their extern groups and the pictures of
/// all textures exist (each file of a numbered sequence, up to the first one missing); that each
/// parameter has a name that a shader can declare and stands once; MIN <= DEFAULT <= MAX for
/// numbers. Names are checked for all types, since any of them may become a uniform. A name that is
/// a GLSL keyword is sound: its uniform has an underscore behind it (`UniformName`).
///
/// Indices count what was read: elements that the reader drops (an unknown parameter type) have
/// none.
std::vector<DescriptionProblem> CheckDescription(const NLEFilterInfo& info);

/// 8-4-4-4-12 hexadecimal digits of either case, without braces.
bool IsGuid(std::string_view text);

/// True for what a GLSL 3.30 shader can declare: an identifier that is no keyword and not reserved
/// ("gl_..." and double underscores).
bool IsGlslIdentifier(std::string_view text);

/// The uniform of the parameter of that name: the name itself, or "filter_" for the keyword
/// "filter".
std::string UniformName(std::string_view parameter);

}  // namespace kelmo
