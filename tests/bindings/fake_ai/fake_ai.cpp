// SPDX-License-Identifier: GPL-3.0-or-later
// An AI library that fills masks with 33, gives one person as its record, and tells the log what it
// was asked.
#include <cstring>

#include "contract/ai_filter.h"

#define KELMO_EXPORT extern "C" __attribute__((visibility("default")))

namespace {

kelmo::LibraryLogCallback logCallback = nullptr;

void Tell(const char* format, ...) {
    if (!logCallback) return;
    va_list arguments;
    va_start(arguments, format);
    logCallback(2, format, arguments);
    va_end(arguments);
}

}  // namespace

#ifndef KELMO_FAKE_NO_LOG
KELMO_EXPORT void SetNLEAIEffectFilterLogCallback(kelmo::LibraryLogCallback callback) {
    logCallback = callback;
    Tell("log set");
}
#endif

KELMO_EXPORT void* CreateNLEAIEffectFilterFromGUID(const char* guid, const char* resources) {
    Tell("create %s %s", guid, resources);
#ifdef KELMO_FAKE_NO_DELETE
    static int neverDeleted = 1;
    return &neverDeleted;
#else
    return new int(1);
#endif
}

#ifndef KELMO_FAKE_NO_DELETE
KELMO_EXPORT void DeleteNLEAIEffectFilter(void** handle) {
    Tell("delete");
    delete static_cast<int*>(*handle);
    *handle = nullptr;
}
#endif

KELMO_EXPORT int32_t NLEEffectFilterTransform(void*, void* out, int32_t outWidth, int32_t outHeight,
                                              int32_t outStride, void* middle, int32_t, int32_t,
                                              int32_t, void*, int32_t inWidth, int32_t inHeight,
                                              int32_t inStride) {
    Tell("transform %dx%d %d <- %dx%d %d%s", outWidth, outHeight, outStride, inWidth, inHeight,
         inStride, middle ? " and a middle" : "");
    if (out) std::memset(out, 33, static_cast<std::size_t>(outStride) * outHeight);
    return 0;
}

KELMO_EXPORT int32_t NLEEffectFilterSetParameter(void*, const char* name, int32_t type,
                                                 kelmo::NLEParamValue value) {
    Tell("%s %d %g", name, type, static_cast<double>(value.AsFloat()));
    return 0;
}

#ifndef KELMO_FAKE_NO_RESULT
KELMO_EXPORT int32_t NLEEffectFilterGetAIResData(void*, std::shared_ptr<AIDATA::BaseAIDATA>* data) {
    auto poses = std::make_shared<AIDATA::HumanPoseDatas>();
    poses->persons.resize(1);
    *data = poses;
    return 0;
}
#endif
