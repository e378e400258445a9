// SPDX-License-Identifier: GPL-3.0-or-later
#include "bindings/sense_time_wrapper.h"

#include <cstdio>
#include <mutex>
#include <utility>

namespace THIRD_LIBRARY_IMPORT {
namespace {

struct SharedLibrary {
    std::once_flag once;
    std::shared_ptr<LibarySymbols> symbols;
};

/// Never destroyed: effects may outlive static objects, and so must the library.
std::unique_ptr<SharedLibrary>& State() {
    static auto& state = *new std::unique_ptr<SharedLibrary>(new SharedLibrary);
    return state;
}

void LoadLibrary(SharedLibrary& state) {
    auto symbols = std::make_shared<SenseTimeSymbols>("st_mobile.dll");
    symbols->Load();
    // With a function missing the others can be called.
    if (symbols->IsLoaded()) state.symbols = std::move(symbols);
}

template <typename Function, typename... Arguments>
int32_t Call(const SenseTimeSymbols* symbols, Function SenseTimeSymbols::*member,
             Arguments... arguments) {
    const Function function = symbols ? symbols->*member : nullptr;
    if (!function) {
        std::printf("API is null\n");
        return SenseTimeWrapper::kMissing;
    }
    return function(arguments...);
}

}  // namespace

SenseTimeWrapper::SenseTimeWrapper(std::string resourceFolder) : folder(std::move(resourceFolder)) {
    SharedLibrary& state = *State();
    std::call_once(state.once, LoadLibrary, std::ref(state));
    symbols = dynamic_cast<const SenseTimeSymbols*>(state.symbols.get());
    ready = symbols != nullptr;
}

int32_t SenseTimeWrapper::CreateEffect(void** handle) const {
    return Call(symbols, &SenseTimeSymbols::st_mobile_effect_create_handle, 0U, handle);
}

int32_t SenseTimeWrapper::DestroyEffect(void* handle) const {
    return Call(symbols, &SenseTimeSymbols::st_mobile_effect_destroy_handle, handle);
}

int32_t SenseTimeWrapper::SetBeautyStrength(void* handle, int32_t type, float strength) const {
    return Call(symbols, &SenseTimeSymbols::st_mobile_effect_set_beauty_strength, handle, type,
                strength);
}

int32_t SenseTimeWrapper::GetBeautyStrength(void* handle, int32_t type, float& strength) const {
    return Call(symbols, &SenseTimeSymbols::st_mobile_effect_get_beauty_strength, handle, type,
                &strength);
}

int32_t SenseTimeWrapper::SetBeautyParam(void* handle, int32_t parameter, float value) const {
    return Call(symbols, &SenseTimeSymbols::st_mobile_effect_set_beauty_param, handle, parameter,
                value);
}

int32_t SenseTimeWrapper::CreateHumanAction(const std::string& model, int32_t configuration,
                                            void** handle) const {
    return Call(symbols, &SenseTimeSymbols::st_mobile_human_action_create_from_buffer, model.data(),
                static_cast<int32_t>(model.size()), configuration, handle);
}

int32_t SenseTimeWrapper::DetectHumanAction(void* handle, const void* pixels, int32_t format,
                                            int32_t width, int32_t height, int32_t stride,
                                            int32_t orientation, uint64_t configuration,
                                            kelmo::FaceSdkResult& result) const {
    return Call(symbols, &SenseTimeSymbols::st_mobile_human_action_detect, handle, pixels, format,
                width, height, stride, orientation, configuration, &result);
}

int32_t SenseTimeWrapper::DestroyHumanAction(void* handle) const {
    return Call(symbols, &SenseTimeSymbols::st_mobile_human_action_destroy, handle);
}

int32_t SenseTimeWrapper::Render(void* handle, const kelmo::FaceSdkRenderInput& input,
                                 kelmo::FaceSdkRenderOutput& output) const {
    return Call(symbols, &SenseTimeSymbols::st_mobile_effect_render, handle, &input, &output);
}

int32_t SenseTimeWrapper::ChangePackage(void* handle, const std::string& package) const {
    const kelmo::FaceSdkPackage record{package.data(), static_cast<int32_t>(package.size())};
    return Call(symbols, &SenseTimeSymbols::st_mobile_effect_change_package_from_buffer, handle,
                &record, nullptr);
}

int32_t SenseTimeWrapper::ReleaseCachedResource(void* handle) const {
    return Call(symbols, &SenseTimeSymbols::st_mobile_effect_release_cached_resource, handle);
}

int32_t SenseTimeWrapper::SetOpenGLLibrary(const char* name) const {
    return Call(symbols, &SenseTimeSymbols::st_mobile_set_external_opengl_lib_path, name);
}

void SetSenseTimeSymbolsForTesting(std::shared_ptr<LibarySymbols> symbols) {
    State() = std::make_unique<SharedLibrary>();
    std::call_once(State()->once, [&] { State()->symbols = std::move(symbols); });
}

void ForgetSenseTimeSymbolsForTesting() {
    State() = std::make_unique<SharedLibrary>();
}

}  // namespace THIRD_LIBRARY_IMPORT
