// SPDX-License-Identifier: GPL-3.0-or-later
#include "ai/runtime/custom_ops.h"

#include <cstdlib>

#include "ai/runtime/tensor_abi.h"

namespace kelmo {

namespace {

TfLiteTensor* TensorAt(TfLiteContext* context, const TfLiteIntArray* list, int index) {
    if (!list || index >= list->size) return nullptr;
    const int tensor = list->data[index];
    if (tensor < 0 || static_cast<size_t>(tensor) >= context->tensorCount) return nullptr;
    return &context->tensors[tensor];
}

}  // namespace

TfLiteTensor* NodeInput(TfLiteContext* context, const TfLiteNode* node, int index) {
    return TensorAt(context, node->inputs, index);
}

TfLiteTensor* NodeOutput(TfLiteContext* context, const TfLiteNode* node, int index) {
    return TensorAt(context, node->outputs, index);
}

bool IsFloatTensor(const TfLiteTensor* tensor, int dimensions) {
    return tensor && tensor->type == kTensorFloat32 && tensor->dims &&
           tensor->dims->size == dimensions;
}

int ResizeTensorTo(TfLiteContext* context, TfLiteTensor* tensor, std::initializer_list<int> size) {
    // The runtime frees it with free().
    auto* list = static_cast<TfLiteIntArray*>(std::malloc(sizeof(int) * (size.size() + 1)));
    if (!list) return kTensorError;
    list->size = static_cast<int>(size.size());
    int i = 0;
    for (int extent : size) list->data[i++] = extent;
    return context->resizeTensor(context, tensor, list);
}

size_t TensorCount(const TfLiteTensor* tensor) {
    return tensor->bytes / sizeof(float);
}

void AddCustomOps(const TensorRuntime& runtime, TfLiteInterpreterOptions* options) {
    runtime.optionsAddCustomOp(options, "Convolution2DTransposeBias", &kTransposeConvolutionOp, 1,
                               1);
    runtime.optionsAddCustomOp(options, "Landmarks2TransformMatrix", &kLandmarksToMatrixOp, 1, 2);
    runtime.optionsAddCustomOp(options, "TransformTensorBilinear", &kTransformTensorOp, 1, 2);
    runtime.optionsAddCustomOp(options, "TransformLandmarks", &kTransformLandmarksOp, 1, 2);
}

}  // namespace kelmo
