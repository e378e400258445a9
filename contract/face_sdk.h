// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>

/// The library that finds faces, retouches them and draws stickers on them: `st_mobile.dll`, on
/// Linux `st_mobile.so`. It is loaded when the first effect wants it; all functions are found by
/// name, with C linkage, and all must be there.
///
/// Results are 0 for success. All calls for one pair of handles come from one thread at a time,
/// those that draw with the caller's OpenGL context current. The library leaves the state of that
/// context as it found it. Records and bytes are borrowed for the call.
namespace kelmo {

/// Number of landmarks of a face, in the order of docs/contracts.md.
inline constexpr int32_t kFaceSdkLandmarks = 106;

/// 4, 5 and 6 are formats of 8 bits with 4 channels. CPU pixels are B, G, R, A with the top row
/// first; the rows of a texture begin at the bottom, its components are what their names say.
enum FaceSdkPixelFormat : int32_t {
    kFaceSdkSticker = 4,
    kFaceSdkStickerOutput = 5,
    kFaceSdkBeauty = 6,
};

struct FaceSdkPoint {
    float x = 0.0F;
    float y = 0.0F;
};

struct FaceSdkFace {
    /// The same face keeps its number from picture to picture.
    int32_t id = 0;
    /// Degrees.
    float pitch = 0.0F;
    float yaw = 0.0F;
    float roll = 0.0F;
    /// Pixels of the picture, y down.
    FaceSdkPoint landmarks[kFaceSdkLandmarks];
};

/// What was found in a picture. The faces are the library's, until the next detection.
struct FaceSdkResult {
    const FaceSdkFace* faces = nullptr;
    int32_t faceCount = 0;
    /// Size of the picture.
    int32_t width = 0;
    int32_t height = 0;
};

/// A GL texture of the current context.
struct FaceSdkTexture {
    int32_t id = 0;
    int32_t width = 0;
    int32_t height = 0;
    int32_t format = 0;
};

struct FaceSdkRenderInput {
    const FaceSdkResult* humanAction = nullptr;
    const FaceSdkTexture* texture = nullptr;
    /// Counts the pictures of stickers.
    double timestamp = 0.0;
};

struct FaceSdkRenderOutput {
    const FaceSdkTexture* texture = nullptr;
    /// May be null; receives the landmarks as they stand after the retouching.
    FaceSdkResult* humanAction = nullptr;
};

struct FaceSdkPackage {
    const char* bytes = nullptr;
    int32_t length = 0;
};

extern "C" {
int32_t st_mobile_set_sse_only(int32_t on);
int32_t st_mobile_effect_create_handle(uint32_t reserved, void** handle);
int32_t st_mobile_effect_destroy_handle(void* handle);
/// `strength` 0..1, or -1..1 for what goes both ways; 0 changes nothing.
int32_t st_mobile_effect_set_beauty_strength(void* handle, int32_t type, float strength);
int32_t st_mobile_effect_get_beauty_strength(void* handle, int32_t type, float* strength);
int32_t st_mobile_effect_set_beauty_mode(void* handle, int32_t type, int32_t mode);
int32_t st_mobile_effect_get_beauty_mode(void* handle, int32_t type, int32_t* mode);
int32_t st_mobile_effect_set_beauty_param(void* handle, int32_t parameter, float value);
int32_t st_mobile_effect_get_beauty_param(void* handle, int32_t parameter, float* value);
int32_t st_mobile_human_action_create_from_buffer(const char* model, int32_t size,
                                                  int32_t configuration, void** handle);
int32_t st_mobile_human_action_detect(void* handle, const void* pixels, int32_t pixelFormat,
                                      int32_t width, int32_t height, int32_t stride,
                                      int32_t orientation, uint64_t configuration,
                                      kelmo::FaceSdkResult* result);
int32_t st_mobile_human_action_destroy(void* handle);
int32_t st_mobile_effect_render(void* handle, const kelmo::FaceSdkRenderInput* input,
                                kelmo::FaceSdkRenderOutput* output);
int32_t st_mobile_effect_add_package_from_buffer(void* handle, const kelmo::FaceSdkPackage* package,
                                                 int32_t* packageId);
/// Replaces all packages by this one.
int32_t st_mobile_effect_change_package_from_buffer(void* handle,
                                                    const kelmo::FaceSdkPackage* package,
                                                    int32_t* packageId);
int32_t st_mobile_effect_clear_packages(void* handle);
int32_t st_mobile_effect_release_cached_resource(void* handle);
/// Which OpenGL library the caller draws with.
int32_t st_mobile_set_external_opengl_lib_path(const char* name);
}

}  // namespace kelmo
