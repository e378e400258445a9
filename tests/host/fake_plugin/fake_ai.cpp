// SPDX-License-Identifier: GPL-3.0-or-later
// A small AI library for tests of the host: it sees one body with a nose and one face in every
// picture, and people in the left half of it.
#include <cstdlib>
#include <cstring>
#include <string>

#include "contract/ai_filter.h"

namespace {

kelmo::LibraryLogCallback logCallback = nullptr;

/// Who listens when the process ends would be gone when a thread that loads something speaks up.
struct Farewell {
    ~Farewell() {
        if (logCallback != nullptr) std::_Exit(99);
    }
} farewell;

}  // namespace

#define KELMO_FAKE_EXPORT extern "C" __attribute__((visibility("default")))

KELMO_FAKE_EXPORT void SetNLEAIEffectFilterLogCallback(kelmo::LibraryLogCallback callback) {
    logCallback = callback;
}

KELMO_FAKE_EXPORT void* CreateNLEAIEffectFilterFromGUID(const char* guid, const char*) {
    return new std::string(guid);
}

KELMO_FAKE_EXPORT void DeleteNLEAIEffectFilter(void** handle) {
    delete static_cast<std::string*>(*handle);
    *handle = nullptr;
}

KELMO_FAKE_EXPORT int32_t NLEEffectFilterTransform(void*, void* out, int32_t width, int32_t height,
                                                   int32_t stride, void*, int32_t, int32_t, int32_t,
                                                   void*, int32_t, int32_t, int32_t) {
    for (int32_t y = 0; out != nullptr && y < height; ++y) {
        std::memset(static_cast<uint8_t*>(out) + y * stride, 255, static_cast<size_t>(width) * 2);
    }
    return 0;
}

KELMO_FAKE_EXPORT int32_t NLEEffectFilterSetParameter(void*, const char*, int32_t,
                                                      kelmo::NLEParamValue) {
    return 0;
}

KELMO_FAKE_EXPORT int32_t NLEEffectFilterGetAIResData(void* handle,
                                                      std::shared_ptr<AIDATA::BaseAIDATA>* data) {
    if (static_cast<std::string*>(handle)->starts_with("0C670CEA")) {
        const auto faces = std::make_shared<AIDATA::HumanFaceInfoMultiDatas>();
        faces->faces.resize(1);
        *data = faces;
        return 0;
    }
    const auto bodies = std::make_shared<AIDATA::HumanPoseDatas>();
    bodies->persons.resize(1);
    bodies->persons[0].points.assign(19, {-1.0F, -1.0F});
    bodies->persons[0].points[0] = {0.5F, 0.25F};
    *data = bodies;
    return 0;
}
