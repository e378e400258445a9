// SPDX-License-Identifier: GPL-3.0-or-later
// The surface of the library: six functions with C linkage, declared in contract/qor_host.h. Their
// names stand in exports.map, too, which hides everything else.
#include "contract/qor_host.h"
#include "plugin/boundary.h"
#include "plugin/effect_creation.h"
#include "plugin/publication.h"
#include "plugin/start_up.h"

#if defined(_WIN32)
#define KELMO_EXPORT extern "C" __declspec(dllexport)
#else
#define KELMO_EXPORT extern "C" __attribute__((visibility("default")))
#endif

KELMO_EXPORT int32_t StartupQor(kelmo::QorPluginHost* host, kelmo::QorPluginInfo* info) {
    return kelmo::AtBoundary("StartupQor", kelmo::kQorRefused,
                             [&] { return kelmo::StartPlugin(host, info); });
}

KELMO_EXPORT int32_t ShutdownQor() {
    return kelmo::AtBoundary("ShutdownQor", kelmo::kQorOk, [] { return kelmo::StopPlugin(); });
}

KELMO_EXPORT int32_t RegisterQorEffect(int32_t index, kelmo::QorEffectRegistrar* registrar) {
    return kelmo::AtBoundary("RegisterQorEffect", kelmo::kQorRefused,
                             [&] { return kelmo::PublishFilterAt(index, registrar); });
}

KELMO_EXPORT int32_t RegisterQorEffectFromConfPath(const char* folder,
                                                   kelmo::QorEffectRegistrar* registrar) {
    return kelmo::AtBoundary("RegisterQorEffectFromConfPath", kelmo::kQorRefused,
                             [&] { return kelmo::PublishFilterFromFolder(folder, registrar); });
}

KELMO_EXPORT int32_t CreateQorEffect(const char* guid, int32_t deviceType,
                                     kelmo::QorEffect** effect) {
    return kelmo::AtBoundary("CreateQorEffect", kelmo::kQorRefused,
                             [&] { return kelmo::CreateEffectObject(guid, deviceType, effect); });
}

KELMO_EXPORT int32_t ReleaseQorEffect(kelmo::QorEffect* effect) {
    return kelmo::AtBoundary("ReleaseQorEffect", kelmo::kQorOk, [&] {
        kelmo::DestroyEffectObject(effect);
        kelmo::ForgetHostWhenDone();
        return static_cast<int32_t>(kelmo::kQorOk);
    });
}
