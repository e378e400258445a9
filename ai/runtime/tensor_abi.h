// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>
#include <cstdint>
#include <initializer_list>

#include "ai/runtime/tensor_runtime.h"

// The records of TensorFlow Lite 2.9 that an operation of our own is given, as they lie in memory.
// Operations see them alone; everything else goes through the functions of `TensorRuntime`.
extern "C" {

struct TfLiteIntArray {
    int size;
    int data[];
};

struct TfLiteTensor {
    int type;
    float* data;
    TfLiteIntArray* dims;
    float quantizationScale;
    int32_t quantizationZero;
    int allocationType;
    size_t bytes;
    const void* allocation;
    const char* name;
    TfLiteDelegate* delegate;
    int bufferHandle;
    bool dataIsStale;
    bool isVariable;
    int quantizationType;
    void* quantization;
    void* sparsity;
    const TfLiteIntArray* dimsSignature;
};

struct TfLiteNode {
    TfLiteIntArray* inputs;
    TfLiteIntArray* outputs;
    TfLiteIntArray* intermediates;
    TfLiteIntArray* temporaries;
    void* userData;
    void* builtinData;
    const void* customInitialData;
    int customInitialDataSize;
    TfLiteDelegate* delegate;
};

/// The beginning of the context: what follows is not used.
struct TfLiteContext {
    size_t tensorCount;
    int (*getExecutionPlan)(TfLiteContext*, TfLiteIntArray**);
    TfLiteTensor* tensors;
    void* impl;
    /// Takes `size` over, whether it succeeds or not.
    int (*resizeTensor)(TfLiteContext*, TfLiteTensor*, TfLiteIntArray* size);
    void (*reportError)(TfLiteContext*, const char* format, ...);
};

struct TfLiteRegistration {
    void* (*init)(TfLiteContext*, const char* options, size_t size);
    void (*free)(TfLiteContext*, void* data);
    int (*prepare)(TfLiteContext*, TfLiteNode*);
    int (*invoke)(TfLiteContext*, TfLiteNode*);
    const char* (*profilingString)(const TfLiteContext*, const TfLiteNode*);
    int32_t builtinCode;
    const char* customName;
    int version;
    /// Later versions read on: room, all zero.
    void* rest[8];
};
}

namespace kelmo {

inline constexpr int kTensorError = 1;

/// The tensors of a node; null when there is no such one.
TfLiteTensor* NodeInput(TfLiteContext* context, const TfLiteNode* node, int index);
TfLiteTensor* NodeOutput(TfLiteContext* context, const TfLiteNode* node, int index);
/// Whether it is a tensor of floats with that many dimensions.
bool IsFloatTensor(const TfLiteTensor* tensor, int dimensions);
int ResizeTensorTo(TfLiteContext* context, TfLiteTensor* tensor, std::initializer_list<int> size);
/// Number of values.
size_t TensorCount(const TfLiteTensor* tensor);

/// The operations, each in its own file.
extern const TfLiteRegistration kTransposeConvolutionOp;
extern const TfLiteRegistration kLandmarksToMatrixOp;
extern const TfLiteRegistration kTransformTensorOp;
extern const TfLiteRegistration kTransformLandmarksOp;

}  // namespace kelmo
