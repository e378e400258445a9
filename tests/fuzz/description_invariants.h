// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdio>
#include <cstdlib>

#include "catalogue/description_check.h"
#include "catalogue/nle_filter_info.h"

namespace kelmo::fuzz {

inline void Require(bool holds, const char* what) {
    if (!holds) {
        std::fprintf(stderr, "broken promise: %s\n", what);
        std::abort();
    }
}

/// What every description promises, whatever bytes it was read from: its texts fit the fixed
/// buffers of its users, and the counts agree with what is stored.
inline void RequireSoundDescription(const NLEFilterInfo& info) {
    Require(info.guid.size() <= kMaxGuidLength, "GUID fits");
    Require(info.name.size() <= kMaxNameLength, "name fits");
    Require(info.openglPath.size() <= kMaxPathLength, "fragment shader path fits");
    Require(info.vertexPath.size() <= kMaxPathLength, "vertex shader path fits");
    Require(info.openclPath.size() <= kMaxPathLength, "OpenCL path fits");
    Require(info.guid.find('\0') == std::string::npos, "no NUL in the GUID");
    Require(info.textureCount <= static_cast<int32_t>(info.textures.size()), "textures counted");
    for (const auto& [key, path] : info.textures) {
        Require(path.size() <= kMaxPathLength, "texture path fits");
    }
    Require(info.paramCount == static_cast<int32_t>(info.params.size()), "parameters counted");
    for (int32_t i = 0; i < info.paramCount; ++i) {
        const auto param = info.GetParam(i);
        Require(param != nullptr, "parameter stored");
        Require(param->name.size() <= kMaxParamNameLength, "parameter name fits");
        Require(param->type != kParamNone, "parameter typed");
        Require(param->value.data[NLEParamValue::kDataSize - 1] == 0, "text ends");
    }
    CheckDescription(info);
}

}  // namespace kelmo::fuzz
