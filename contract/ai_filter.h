// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdarg>
#include <cstdint>
#include <memory>
#include <utility>
#include <vector>

#include "contract/param_value.h"

/// Records of the AI filter library. All positions are fractions of the frame's width and height,
/// origin top left, y down.
namespace AIDATA {

/// Root of the records; consumers tell them apart by a checked down-cast.
class BaseAIDATA {
public:
    virtual ~BaseAIDATA() = default;
    virtual void Reserved() {}
};

struct HumanPose {
    /// Body points (x, y) in the fixed order of docs/contracts.md; a negative coordinate: not
    /// found.
    std::vector<std::pair<float, float>> points;
    int32_t tag = 0;
};

class HumanPoseDatas : public BaseAIDATA {
public:
    std::vector<HumanPose> persons;
};

struct HumanFaceInfo {
    uint8_t flags[2] = {};
    /// Head angles in degrees.
    double pitch = 0.0;
    double yaw = 0.0;
    double roll = 0.0;
    /// Left, top, right, bottom.
    float rect[4] = {};
    /// Landmarks (x, y) in the fixed order of docs/contracts.md.
    std::vector<std::pair<float, float>> landmarks;
    int32_t reserved = 0;
    std::vector<float> landmarkScores;
};

class HumanFaceInfoMultiDatas : public BaseAIDATA {
public:
    std::vector<HumanFaceInfo> faces;
};

}  // namespace AIDATA

namespace kelmo {

/// Receives log lines of the engine and of the AI library: level, printf format, arguments.
using LibraryLogCallback = void (*)(int32_t level, const char* format, va_list args);

/// Exports of `qorAiFilterPlugin.qor`, by name, with C linkage. A handle is opaque; pictures are
/// 8-bit with 4 channels, top row first, strides in bytes. Calls for one handle come from one
/// thread at a time; two handles may be used on two threads at once.
extern "C" {
/// Optional.
using SetNLEAIEffectFilterLogCallbackFn = void (*)(LibraryLogCallback callback);
/// A handle, or null. GUID of 36 characters with dashes; `resources` is the host's resource folder.
using CreateNLEAIEffectFilterFromGUIDFn = void* (*)(const char* guid, const char* resources);
/// Takes the address of the handle and clears it. Optional.
using DeleteNLEAIEffectFilterFn = void (*)(void** handle);
/// Runs the filter on the input. Mask filters write a mask of the output's size (coverage in every
/// channel); others get null output pixels. 0 = ok.
using NLEEffectFilterTransformFn = int32_t (*)(void* handle, void* outPixels, int32_t outWidth,
                                               int32_t outHeight, int32_t outStride,
                                               void* middlePixels, int32_t middleWidth,
                                               int32_t middleHeight, int32_t middleStride,
                                               void* inPixels, int32_t inWidth, int32_t inHeight,
                                               int32_t inStride);
using NLEEffectFilterSetParameterFn = int32_t (*)(void* handle, const char* name, int32_t type,
                                                  NLEParamValue value);
/// 0 and the record of the last transform.
using NLEEffectFilterGetAIResDataFn = int32_t (*)(void* handle,
                                                  std::shared_ptr<AIDATA::BaseAIDATA>* data);
}

}  // namespace kelmo
