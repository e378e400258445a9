// SPDX-License-Identifier: GPL-3.0-or-later
// The functions of contract/face_sdk.h. No exception leaves them.
#include <exception>
#include <map>
#include <memory>

#include "beauty/face_finder.h"
#include "beauty/retoucher.h"
#include "contract/face_sdk.h"

namespace kelmo {
namespace {

constexpr int32_t kOk = 0;
constexpr int32_t kBadArgument = -1;
constexpr int32_t kFailed = -2;

/// An effect handle.
struct FaceEffect {
    beauty::Retoucher retoucher;
    std::map<int32_t, int32_t> modes;
    std::map<int32_t, float> params;
};

template <typename Task>
int32_t Guarded(Task task) {
    try {
        return task();
    } catch (const std::exception&) {
        return kFailed;
    }
}

FaceEffect* EffectOf(void* handle) {
    return static_cast<FaceEffect*>(handle);
}

}  // namespace

extern "C" {

#define KELMO_EXPORT __attribute__((visibility("default")))

KELMO_EXPORT int32_t st_mobile_set_sse_only(int32_t) {
    return kOk;
}

KELMO_EXPORT int32_t st_mobile_effect_create_handle(uint32_t, void** handle) {
    if (!handle) return kBadArgument;
    return Guarded([&] {
        *handle = new FaceEffect;
        return kOk;
    });
}

KELMO_EXPORT int32_t st_mobile_effect_destroy_handle(void* handle) {
    if (!handle) return kBadArgument;
    EffectOf(handle)->retoucher.Release();
    delete EffectOf(handle);
    return kOk;
}

KELMO_EXPORT int32_t st_mobile_effect_set_beauty_strength(void* handle, int32_t type,
                                                          float strength) {
    if (!handle) return kBadArgument;
    return Guarded([&] {
        EffectOf(handle)->retoucher.strengths.Set(type, strength);
        return kOk;
    });
}

KELMO_EXPORT int32_t st_mobile_effect_get_beauty_strength(void* handle, int32_t type,
                                                          float* strength) {
    if (!handle || !strength) return kBadArgument;
    *strength = EffectOf(handle)->retoucher.strengths.Of(type);
    return kOk;
}

KELMO_EXPORT int32_t st_mobile_effect_set_beauty_mode(void* handle, int32_t type, int32_t mode) {
    if (!handle) return kBadArgument;
    return Guarded([&] {
        EffectOf(handle)->modes[type] = mode;
        return kOk;
    });
}

KELMO_EXPORT int32_t st_mobile_effect_get_beauty_mode(void* handle, int32_t type, int32_t* mode) {
    if (!handle || !mode) return kBadArgument;
    const auto found = EffectOf(handle)->modes.find(type);
    *mode = found == EffectOf(handle)->modes.end() ? 0 : found->second;
    return kOk;
}

KELMO_EXPORT int32_t st_mobile_effect_set_beauty_param(void* handle, int32_t parameter,
                                                       float value) {
    if (!handle) return kBadArgument;
    return Guarded([&] {
        EffectOf(handle)->params[parameter] = value;
        return kOk;
    });
}

KELMO_EXPORT int32_t st_mobile_effect_get_beauty_param(void* handle, int32_t parameter,
                                                       float* value) {
    if (!handle || !value) return kBadArgument;
    const auto found = EffectOf(handle)->params.find(parameter);
    *value = found == EffectOf(handle)->params.end() ? 0.0F : found->second;
    return kOk;
}

KELMO_EXPORT int32_t st_mobile_human_action_create_from_buffer(const char*, int32_t, int32_t,
                                                               void** handle) {
    if (!handle) return kBadArgument;
    return Guarded([&] {
        *handle = new beauty::FaceFinder;
        return kOk;
    });
}

KELMO_EXPORT int32_t st_mobile_human_action_detect(void* handle, const void* pixels, int32_t,
                                                   int32_t width, int32_t height, int32_t stride,
                                                   int32_t, uint64_t, FaceSdkResult* result) {
    if (!handle || !pixels || !result) return kBadArgument;
    return Guarded([&] {
        *result = static_cast<beauty::FaceFinder*>(handle)->Find(pixels, width, height, stride);
        return kOk;
    });
}

KELMO_EXPORT int32_t st_mobile_human_action_destroy(void* handle) {
    if (!handle) return kBadArgument;
    delete static_cast<beauty::FaceFinder*>(handle);
    return kOk;
}

KELMO_EXPORT int32_t st_mobile_effect_render(void* handle, const FaceSdkRenderInput* input,
                                             FaceSdkRenderOutput* output) {
    if (!handle || !input || !input->texture || !output || !output->texture) return kBadArgument;
    return Guarded([&] {
        const FaceSdkResult faces = input->humanAction ? *input->humanAction : FaceSdkResult();
        return EffectOf(handle)->retoucher.Draw(faces, *input->texture, *output->texture) ? kOk
                                                                                          : kFailed;
    });
}

/// Packages of stickers are not drawn yet: callers learn it, and show the clip.
KELMO_EXPORT int32_t st_mobile_effect_add_package_from_buffer(void*, const FaceSdkPackage*,
                                                              int32_t*) {
    return kFailed;
}

KELMO_EXPORT int32_t st_mobile_effect_change_package_from_buffer(void*, const FaceSdkPackage*,
                                                                 int32_t*) {
    return kFailed;
}

KELMO_EXPORT int32_t st_mobile_effect_clear_packages(void* handle) {
    return handle ? kOk : kBadArgument;
}

KELMO_EXPORT int32_t st_mobile_effect_release_cached_resource(void* handle) {
    return handle ? kOk : kBadArgument;
}

KELMO_EXPORT int32_t st_mobile_set_external_opengl_lib_path(const char*) {
    return kOk;
}

}  // extern "C"
}  // namespace kelmo
