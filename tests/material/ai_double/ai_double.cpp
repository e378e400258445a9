// SPDX-License-Identifier: GPL-3.0-or-later
// An AI library that finds the same person in every picture.
#include <cstring>

#include "contract/ai_filter.h"
#include "tests/material/ai_double/staged_person.h"

#define KELMO_EXPORT extern "C" __attribute__((visibility("default")))

namespace {

struct Filter {
    std::string guid;
};

void DrawMask(uint8_t* pixels, int32_t width, int32_t height, int32_t stride) {
    for (int32_t y = 0; y < height; ++y) {
        uint8_t* row = pixels + static_cast<std::ptrdiff_t>(y) * stride;
        for (int32_t x = 0; x < width; ++x) {
            // Four samples across and down make the edge smooth.
            int inside = 0;
            for (int i = 0; i < 16; ++i) {
                const float u = (static_cast<float>(x) + 0.125F + 0.25F * (i % 4)) / width;
                const float v = (static_cast<float>(y) + 0.125F + 0.25F * (i / 4)) / height;
                inside += kelmo::test::StagedPersonCovers(u, v) ? 1 : 0;
            }
            std::memset(row + 4 * x, inside * 255 / 16, 4);
        }
    }
}

}  // namespace

KELMO_EXPORT void* CreateNLEAIEffectFilterFromGUID(const char* guid, const char*) {
    return new Filter{guid};
}

KELMO_EXPORT void DeleteNLEAIEffectFilter(void** handle) {
    delete static_cast<Filter*>(*handle);
    *handle = nullptr;
}

KELMO_EXPORT int32_t NLEEffectFilterTransform(void*, void* out, int32_t outWidth, int32_t outHeight,
                                              int32_t outStride, void*, int32_t, int32_t, int32_t,
                                              void*, int32_t, int32_t, int32_t) {
    if (out) DrawMask(static_cast<uint8_t*>(out), outWidth, outHeight, outStride);
    return 0;
}

KELMO_EXPORT int32_t NLEEffectFilterSetParameter(void*, const char*, int32_t,
                                                 kelmo::NLEParamValue) {
    return 0;
}

KELMO_EXPORT int32_t NLEEffectFilterGetAIResData(void* handle,
                                                 std::shared_ptr<AIDATA::BaseAIDATA>* data) {
    if (static_cast<Filter*>(handle)->guid.rfind("02E5BBF3", 0) == 0) {
        auto poses = std::make_shared<AIDATA::HumanPoseDatas>();
        poses->persons.push_back({kelmo::test::StagedBodyPoints(), 0});
        *data = poses;
        return 0;
    }
    auto faces = std::make_shared<AIDATA::HumanFaceInfoMultiDatas>();
    faces->faces.push_back(kelmo::test::StagedFace());
    *data = faces;
    return 0;
}
