// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>

// The part of TensorFlow Lite's C interface (version 2.9) that we call, under its own names. The
// library is found when we run, so nothing of it is needed to build.
extern "C" {
struct TfLiteModel;
struct TfLiteInterpreter;
struct TfLiteInterpreterOptions;
struct TfLiteDelegate;
struct TfLiteTensor;
struct TfLiteRegistration;
struct TfLiteIntArray;
}

namespace kelmo {

/// `TfLiteStatus`: 0 is success.
inline constexpr int kTensorOk = 0;
/// `TfLiteType` of 32-bit floats.
inline constexpr int kTensorFloat32 = 1;

/// Options of the XNNPACK delegate. Only the first word is known; the rest is room for what a
/// version of the runtime may read, all zero.
struct XnnpackOptions {
    int32_t threadCount = 1;
    unsigned char rest[60] = {};
};

/// The runtime library, loaded: its functions. It stays loaded until the process ends, since it
/// keeps data of the threads that used it. All functions may be called from any thread; an
/// interpreter is used by one at a time.
struct TensorRuntime {
    /// Loads the library; null, with the reason in `error`, when the file is missing, is no library
    /// or lacks a function.
    static std::unique_ptr<TensorRuntime> Load(const std::string& path, std::string& error);

    TfLiteModel* (*modelCreateFromFile)(const char* path) = nullptr;
    void (*modelDelete)(TfLiteModel*) = nullptr;

    TfLiteInterpreterOptions* (*optionsCreate)() = nullptr;
    void (*optionsDelete)(TfLiteInterpreterOptions*) = nullptr;
    void (*optionsSetNumThreads)(TfLiteInterpreterOptions*, int32_t) = nullptr;
    void (*optionsAddDelegate)(TfLiteInterpreterOptions*, TfLiteDelegate*) = nullptr;
    void (*optionsAddCustomOp)(TfLiteInterpreterOptions*, const char* name,
                               const TfLiteRegistration*, int32_t minVersion,
                               int32_t maxVersion) = nullptr;

    TfLiteInterpreter* (*interpreterCreate)(const TfLiteModel*,
                                            const TfLiteInterpreterOptions*) = nullptr;
    void (*interpreterDelete)(TfLiteInterpreter*) = nullptr;
    int (*interpreterAllocateTensors)(TfLiteInterpreter*) = nullptr;
    int (*interpreterInvoke)(TfLiteInterpreter*) = nullptr;
    int32_t (*inputTensorCount)(const TfLiteInterpreter*) = nullptr;
    TfLiteTensor* (*inputTensor)(const TfLiteInterpreter*, int32_t) = nullptr;
    int32_t (*outputTensorCount)(const TfLiteInterpreter*) = nullptr;
    const TfLiteTensor* (*outputTensor)(const TfLiteInterpreter*, int32_t) = nullptr;

    int (*tensorType)(const TfLiteTensor*) = nullptr;
    int32_t (*tensorNumDims)(const TfLiteTensor*) = nullptr;
    int32_t (*tensorDim)(const TfLiteTensor*, int32_t) = nullptr;
    size_t (*tensorByteSize)(const TfLiteTensor*) = nullptr;
    void* (*tensorData)(const TfLiteTensor*) = nullptr;
    const char* (*tensorName)(const TfLiteTensor*) = nullptr;

    TfLiteDelegate* (*xnnpackCreate)(const void* options) = nullptr;
    void (*xnnpackDelete)(TfLiteDelegate*) = nullptr;
};

}  // namespace kelmo
