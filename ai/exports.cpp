// SPDX-License-Identifier: GPL-3.0-or-later
// What the library exports: the six functions of contract/ai_filter.h. Nothing is thrown across
// them.
#include <exception>

#include "ai/ai_filter.h"
#include "ai/ai_log.h"

namespace kelmo {

namespace {

constexpr int32_t kOk = 0;
constexpr int32_t kFailed = 1;
/// Longest side of a picture that is taken.
constexpr int32_t kMaxSide = 32768;

/// The work's result, or `failure` and a line in the log when it throws.
template <typename Result, typename Work>
Result Guarded(const char* what, Result failure, Work work) {
    try {
        return work();
    } catch (const std::exception& error) {
        AiLog(kAiLogError, "AI: %s failed: %s", what, error.what());
    } catch (...) {
        AiLog(kAiLogError, "AI: %s failed", what);
    }
    return failure;
}

/// A view of foreign pixels; empty when the numbers make no picture.
cv::Mat View(void* pixels, int32_t width, int32_t height, int32_t stride) {
    if (!pixels || width <= 0 || height <= 0 || width > kMaxSide || height > kMaxSide ||
        stride < width * 4)
        return {};
    return {height, width, CV_8UC4, pixels, static_cast<size_t>(stride)};
}

int32_t Transform(AiFilter& filter, const cv::Mat& input, cv::Mat output) {
    if (input.empty()) {
        if (!output.empty()) output.setTo(cv::Scalar::all(0));
        return kFailed;
    }
    try {
        if (filter.Transform(input, output)) return kOk;
    } catch (...) {
        if (!output.empty()) output.setTo(cv::Scalar::all(0));
        throw;
    }
    if (!output.empty()) output.setTo(cv::Scalar::all(0));
    return kFailed;
}

}  // namespace

}  // namespace kelmo

#define KELMO_EXPORT extern "C" __attribute__((visibility("default")))

KELMO_EXPORT void SetNLEAIEffectFilterLogCallback(kelmo::LibraryLogCallback callback) {
    kelmo::SetAiLogCallback(callback);
}

KELMO_EXPORT void* CreateNLEAIEffectFilterFromGUID(const char* guid, const char* resources) {
    return kelmo::Guarded("creating a filter", static_cast<void*>(nullptr), [&]() -> void* {
        return kelmo::CreateAiFilter(guid ? guid : "", resources ? resources : "").release();
    });
}

KELMO_EXPORT void DeleteNLEAIEffectFilter(void** handle) {
    if (!handle || !*handle) return;
    kelmo::Guarded("deleting a filter", 0, [&] {
        delete static_cast<kelmo::AiFilter*>(*handle);
        *handle = nullptr;
        return 0;
    });
}

KELMO_EXPORT int32_t NLEEffectFilterTransform(void* handle, void* outPixels, int32_t outWidth,
                                              int32_t outHeight, int32_t outStride, void*, int32_t,
                                              int32_t, int32_t, void* inPixels, int32_t inWidth,
                                              int32_t inHeight, int32_t inStride) {
    // The middle picture is of no use to any of our filters.
    if (!handle) return kelmo::kFailed;
    return kelmo::Guarded("analysing a frame", kelmo::kFailed, [&] {
        return kelmo::Transform(*static_cast<kelmo::AiFilter*>(handle),
                                kelmo::View(inPixels, inWidth, inHeight, inStride),
                                kelmo::View(outPixels, outWidth, outHeight, outStride));
    });
}

KELMO_EXPORT int32_t NLEEffectFilterSetParameter(void* handle, const char* name, int32_t type,
                                                 kelmo::NLEParamValue value) {
    if (!handle || !name) return kelmo::kFailed;
    return kelmo::Guarded("setting a parameter", kelmo::kFailed, [&] {
        return static_cast<kelmo::AiFilter*>(handle)->SetParameter(name, type, value)
                   ? kelmo::kOk
                   : kelmo::kFailed;
    });
}

KELMO_EXPORT int32_t NLEEffectFilterGetAIResData(void* handle,
                                                 std::shared_ptr<AIDATA::BaseAIDATA>* data) {
    if (!handle || !data) return kelmo::kFailed;
    return kelmo::Guarded("handing out a record", kelmo::kFailed, [&] {
        *data = static_cast<kelmo::AiFilter*>(handle)->Result();
        return *data ? kelmo::kOk : kelmo::kFailed;
    });
}
