// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <functional>

#include "bindings/libary_symbols.h"
#include "contract/face_sdk.h"

/// All functions of the face library, in the order in which they are bound.
#define KELMO_FACE_SDK_FUNCTIONS(X)                \
    X(st_mobile_set_sse_only)                      \
    X(st_mobile_effect_create_handle)              \
    X(st_mobile_effect_destroy_handle)             \
    X(st_mobile_effect_set_beauty_strength)        \
    X(st_mobile_effect_get_beauty_strength)        \
    X(st_mobile_effect_set_beauty_mode)            \
    X(st_mobile_effect_get_beauty_mode)            \
    X(st_mobile_effect_set_beauty_param)           \
    X(st_mobile_effect_get_beauty_param)           \
    X(st_mobile_human_action_create_from_buffer)   \
    X(st_mobile_human_action_detect)               \
    X(st_mobile_human_action_destroy)              \
    X(st_mobile_effect_render)                     \
    X(st_mobile_effect_add_package_from_buffer)    \
    X(st_mobile_effect_change_package_from_buffer) \
    X(st_mobile_effect_clear_packages)             \
    X(st_mobile_effect_release_cached_resource)    \
    X(st_mobile_set_external_opengl_lib_path)

namespace THIRD_LIBRARY_IMPORT {

/// The functions of the face library; null until they are bound. Only read after that.
class SenseTimeSymbols : public LibarySymbols {
public:
    using Lookup = std::function<void*(const char* name)>;

    using LibarySymbols::LibarySymbols;

    bool LoadSymbols() override;
    /// Binds what `find` gives, in order. The first one that is missing ends it with a line on the
    /// standard output; those behind it stay null.
    bool Bind(const Lookup& find);

#define KELMO_FACE_SDK_POINTER(NAME) decltype(&kelmo::NAME) NAME = nullptr;
    KELMO_FACE_SDK_FUNCTIONS(KELMO_FACE_SDK_POINTER)
#undef KELMO_FACE_SDK_POINTER
};

}  // namespace THIRD_LIBRARY_IMPORT
