// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "bindings/sense_time_symbols.h"

namespace THIRD_LIBRARY_IMPORT {

/// The face library as an effect sees it. The first wrapper of the process loads it; from then on
/// all share one, which stays loaded.
///
/// Each operation gives what the library gives, or `kMissing`, with a line on the standard output,
/// when that function was not found. Nothing is locked: the library is called where the GL context
/// of its caller is current, see contract/face_sdk.h.
class SenseTimeWrapper {
public:
    static constexpr int32_t kMissing = -4;

    explicit SenseTimeWrapper(std::string resourceFolder);

    /// The library was loaded. Single functions may still be missing.
    bool IsReady() const { return ready; }
    const std::string& Folder() const { return folder; }

    int32_t CreateEffect(void** handle) const;
    int32_t DestroyEffect(void* handle) const;
    int32_t SetBeautyStrength(void* handle, int32_t type, float strength) const;
    int32_t GetBeautyStrength(void* handle, int32_t type, float& strength) const;
    int32_t SetBeautyParam(void* handle, int32_t parameter, float value) const;
    int32_t CreateHumanAction(const std::string& model, int32_t configuration, void** handle) const;
    int32_t DetectHumanAction(void* handle, const void* pixels, int32_t format, int32_t width,
                              int32_t height, int32_t stride, int32_t orientation,
                              uint64_t configuration, kelmo::FaceSdkResult& result) const;
    int32_t DestroyHumanAction(void* handle) const;
    int32_t Render(void* handle, const kelmo::FaceSdkRenderInput& input,
                   kelmo::FaceSdkRenderOutput& output) const;
    int32_t ChangePackage(void* handle, const std::string& package) const;
    int32_t ReleaseCachedResource(void* handle) const;
    int32_t SetOpenGLLibrary(const char* name) const;

private:
    std::string folder;
    bool ready = false;
    const SenseTimeSymbols* symbols = nullptr;
};

/// Puts functions of a test in the place of the library's, for wrappers made from now on; null
/// stands for a library that did not load.
void SetSenseTimeSymbolsForTesting(std::shared_ptr<LibarySymbols> symbols);
/// The next wrapper loads the library again.
void ForgetSenseTimeSymbolsForTesting();

}  // namespace THIRD_LIBRARY_IMPORT
