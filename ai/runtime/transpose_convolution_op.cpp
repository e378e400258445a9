// SPDX-License-Identifier: GPL-3.0-or-later
#include <algorithm>
#include <cstring>

#include "ai/runtime/tensor_abi.h"

namespace kelmo {

namespace {

/// The options: three little-endian words.
struct Options {
    int32_t padding = 0;  ///< 1 same, 2 valid
    int32_t strideX = 0;
    int32_t strideY = 0;
};

struct Shape {
    int rows, columns, channels;
};

Shape ShapeOf(const TfLiteTensor* tensor) {
    const int* dims = tensor->dims->data;
    return {dims[1], dims[2], dims[3]};
}

bool ReadOptions(const TfLiteNode* node, Options& options) {
    if (!node->customInitialData || node->customInitialDataSize < int(sizeof options)) return false;
    std::memcpy(&options, node->customInitialData, sizeof options);
    return (options.padding == 1 || options.padding == 2) && options.strideX > 0 &&
           options.strideY > 0 && options.strideX <= 16 && options.strideY <= 16;
}

/// Rows or columns of the result.
int OutputExtent(int extent, int stride, int kernel, bool same) {
    return same ? extent * stride : (extent - 1) * stride + kernel;
}

/// What the kernel reaches over the border in front.
int PaddingBefore(int extent, int stride, int kernel, int output) {
    return std::max(0, ((extent - 1) * stride + kernel - output) / 2);
}

int Prepare(TfLiteContext* context, TfLiteNode* node) {
    TfLiteTensor* input = NodeInput(context, node, 0);
    TfLiteTensor* weights = NodeInput(context, node, 1);
    TfLiteTensor* bias = NodeInput(context, node, 2);
    TfLiteTensor* output = NodeOutput(context, node, 0);
    Options options;
    if (!IsFloatTensor(input, 4) || !IsFloatTensor(weights, 4) || !IsFloatTensor(bias, 1) ||
        !output || output->type != kTensorFloat32 || !ReadOptions(node, options))
        return kTensorError;
    const Shape in = ShapeOf(input), kernel = ShapeOf(weights);
    const int channels = weights->dims->data[0];
    if (input->dims->data[0] != 1 || kernel.channels != in.channels ||
        bias->dims->data[0] != channels)
        return kTensorError;
    const bool same = options.padding == 1;
    return ResizeTensorTo(
        context, output,
        {1, OutputExtent(in.rows, options.strideY, kernel.rows, same),
         OutputExtent(in.columns, options.strideX, kernel.columns, same), channels});
}

int Invoke(TfLiteContext* context, TfLiteNode* node) {
    const TfLiteTensor* input = NodeInput(context, node, 0);
    const TfLiteTensor* weights = NodeInput(context, node, 1);
    const TfLiteTensor* bias = NodeInput(context, node, 2);
    TfLiteTensor* output = NodeOutput(context, node, 0);
    Options options;
    if (!ReadOptions(node, options)) return kTensorError;
    const Shape in = ShapeOf(input), kernel = ShapeOf(weights), out = ShapeOf(output);
    const int top = PaddingBefore(in.rows, options.strideY, kernel.rows, out.rows);
    const int left = PaddingBefore(in.columns, options.strideX, kernel.columns, out.columns);

    for (size_t i = 0; i < TensorCount(output); ++i)
        output->data[i] = bias->data[i % static_cast<size_t>(out.channels)];
    for (int y = 0; y < in.rows; ++y)
        for (int x = 0; x < in.columns; ++x) {
            const float* source = input->data + (size_t(y) * in.columns + x) * in.channels;
            for (int ky = 0; ky < kernel.rows; ++ky)
                for (int kx = 0; kx < kernel.columns; ++kx) {
                    const int row = y * options.strideY + ky - top;
                    const int column = x * options.strideX + kx - left;
                    if (row < 0 || row >= out.rows || column < 0 || column >= out.columns) continue;
                    float* target =
                        output->data + (size_t(row) * out.columns + column) * out.channels;
                    for (int o = 0; o < out.channels; ++o) {
                        const float* weight =
                            weights->data +
                            ((size_t(o) * kernel.rows + ky) * kernel.columns + kx) * in.channels;
                        float sum = 0.0f;
                        for (int i = 0; i < in.channels; ++i) sum += source[i] * weight[i];
                        target[o] += sum;
                    }
                }
        }
    return kTensorOk;
}

}  // namespace

const TfLiteRegistration kTransposeConvolutionOp = {
    nullptr, nullptr, Prepare, Invoke, nullptr, 0, "Convolution2DTransposeBias", 1, {}};

}  // namespace kelmo
