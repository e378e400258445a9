// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "catalogue/nle_filter_info.h"

namespace kelmo::material {

/// The text of a shader with its comments blanked.
std::string WithoutComments(std::string_view source);

/// Names that a shader's text declares as uniforms: `uniform float a, b[2];` declares a and b.
/// Comments do not count; conditions of the preprocessor are not looked at.
std::set<std::string> DeclaredUniforms(std::string_view source);

/// The text of a shader file with those that it includes, as the engine finds them: beside the
/// including file, else in `commonFolder`. A file comes once; one that is missing is left out (the
/// compiler tells that). "variant:G" is left out too.
std::string WithIncludes(const std::string& path, const std::string& commonFolder);

/// Every shader file that a description names: its passes, its own, their variants.
std::vector<std::string> ShaderFiles(const NLEFilterInfo& info);

/// Parameters that none of the filter's shaders declares, in the order of the description. Texts
/// and pointers never reach a shader, and the settings of the audio analysis of a filter with AUDIO
/// need not. Meant for filters without a class of their own: a class may read a parameter itself.
std::vector<std::string> UnusedParams(const NLEFilterInfo& info, const std::string& commonFolder);

}  // namespace kelmo::material
