// SPDX-License-Identifier: GPL-3.0-or-later
// The operations with which the face network looks closer at eyes and lips. Landmarks are in pixels
// of its feature map; a matrix (4 x 4, row-major) takes positions of the small map of a region to
// those of the feature map.
#include <algorithm>
#include <cmath>
#include <limits>
#include <memory>
#include <vector>

#include "ai/runtime/flex_map.h"
#include "ai/runtime/tensor_abi.h"

namespace kelmo {

namespace {

/// Where a region lies: a box round some landmarks, turned with the line from one to another.
struct RegionOptions {
    int leftIndex = 0;
    int rightIndex = 0;
    std::vector<int> subset;
    float outputWidth = 0.0f;
    float outputHeight = 0.0f;
    float scaleX = 1.0f;
    float scaleY = 1.0f;
    float targetAngle = 0.0f;  ///< radians
};

void* InitRegion(TfLiteContext*, const char* bytes, size_t size) {
    const FlexMap map(bytes, size);
    auto options = std::make_unique<RegionOptions>();
    options->leftIndex = map.Integer("left_rotation_idx").value_or(-1);
    options->rightIndex = map.Integer("right_rotation_idx").value_or(-1);
    options->subset = map.Integers("subset_idxs");
    options->outputWidth = static_cast<float>(map.Number("output_width").value_or(0));
    options->outputHeight = static_cast<float>(map.Number("output_height").value_or(0));
    options->scaleX = static_cast<float>(map.Number("scale_x").value_or(1));
    options->scaleY = static_cast<float>(map.Number("scale_y").value_or(1));
    options->targetAngle = static_cast<float>(map.Number("target_rotation_radians").value_or(0));
    return options.release();
}

template <typename Options>
void FreeOptions(TfLiteContext*, void* data) {
    delete static_cast<Options*>(data);
}

bool IsMatrix(const TfLiteTensor* tensor) {
    return tensor && tensor->type == kTensorFloat32 && tensor->dims && TensorCount(tensor) == 16;
}

int PrepareRegion(TfLiteContext* context, TfLiteNode* node) {
    const auto* options = static_cast<const RegionOptions*>(node->userData);
    TfLiteTensor* landmarks = NodeInput(context, node, 0);
    TfLiteTensor* matrix = NodeOutput(context, node, 0);
    if (!options || !IsFloatTensor(landmarks, 3) || !matrix || landmarks->dims->data[2] < 2)
        return kTensorError;
    const int count = landmarks->dims->data[1];
    const auto outside = [count](int index) { return index < 0 || index >= count; };
    if (outside(options->leftIndex) || outside(options->rightIndex) || options->subset.empty() ||
        std::any_of(options->subset.begin(), options->subset.end(), outside) ||
        !(options->outputWidth > 0) || !(options->outputHeight > 0))
        return kTensorError;
    return ResizeTensorTo(context, matrix, {1, 4, 4});
}

int InvokeRegion(TfLiteContext* context, TfLiteNode* node) {
    const auto& options = *static_cast<const RegionOptions*>(node->userData);
    const TfLiteTensor* landmarks = NodeInput(context, node, 0);
    float* m = NodeOutput(context, node, 0)->data;
    const int step = landmarks->dims->data[2];
    const auto point = [&](int index) { return landmarks->data + size_t(index) * step; };

    const float* left = point(options.leftIndex);
    const float* right = point(options.rightIndex);
    const float angle = std::atan2(right[1] - left[1], right[0] - left[0]) - options.targetAngle;
    const float c = std::cos(angle), s = std::sin(angle);
    float uMin = std::numeric_limits<float>::max(), vMin = uMin, uMax = -uMin, vMax = -uMin;
    for (int index : options.subset) {
        const float* p = point(index);
        const float u = p[0] * c + p[1] * s, v = p[1] * c - p[0] * s;
        uMin = std::min(uMin, u), uMax = std::max(uMax, u);
        vMin = std::min(vMin, v), vMax = std::max(vMax, v);
    }
    // Width and height of the box stay apart; the middle of the small map is that of the box.
    const float kx = (uMax - uMin) * options.scaleX / options.outputWidth;
    const float ky = (vMax - vMin) * options.scaleY / options.outputHeight;
    const float u = (uMin + uMax) / 2, v = (vMin + vMax) / 2;
    const float centreX = u * c - v * s, centreY = u * s + v * c;
    const float halfX = options.outputWidth / 2, halfY = options.outputHeight / 2;
    std::fill(m, m + 16, 0.0f);
    m[0] = c * kx, m[1] = -s * ky, m[3] = centreX - m[0] * halfX - m[1] * halfY;
    m[4] = s * kx, m[5] = c * ky, m[7] = centreY - m[4] * halfX - m[5] * halfY;
    m[10] = m[15] = 1.0f;
    return kTensorOk;
}

struct MapOptions {
    int width = 0;
    int height = 0;
};

void* InitMap(TfLiteContext*, const char* bytes, size_t size) {
    const FlexMap map(bytes, size);
    auto options = std::make_unique<MapOptions>();
    options->width = map.Integer("output_width").value_or(0);
    options->height = map.Integer("output_height").value_or(0);
    return options.release();
}

int PrepareMap(TfLiteContext* context, TfLiteNode* node) {
    const auto* options = static_cast<const MapOptions*>(node->userData);
    TfLiteTensor* features = NodeInput(context, node, 0);
    TfLiteTensor* matrix = NodeInput(context, node, 1);
    TfLiteTensor* output = NodeOutput(context, node, 0);
    if (!options || !IsFloatTensor(features, 4) || !IsMatrix(matrix) || !output ||
        options->width < 1 || options->height < 1 || options->width > 1024 ||
        options->height > 1024)
        return kTensorError;
    return ResizeTensorTo(context, output,
                          {1, options->height, options->width, features->dims->data[3]});
}

/// Adds one neighbour's share; outside the map there is nothing.
void AddSample(const TfLiteTensor* features, float x, float y, float share, float* target) {
    const int* dims = features->dims->data;
    if (share == 0.0f || !(x >= 0 && y >= 0 && x < dims[2] && y < dims[1])) return;
    const float* source = features->data + (size_t(y) * dims[2] + size_t(x)) * dims[3];
    for (int i = 0; i < dims[3]; ++i) target[i] += share * source[i];
}

int InvokeMap(TfLiteContext* context, TfLiteNode* node) {
    const TfLiteTensor* features = NodeInput(context, node, 0);
    const float* m = NodeInput(context, node, 1)->data;
    TfLiteTensor* output = NodeOutput(context, node, 0);
    const int height = output->dims->data[1], width = output->dims->data[2];
    const int channels = output->dims->data[3];
    std::fill(output->data, output->data + TensorCount(output), 0.0f);
    float* target = output->data;
    for (int v = 0; v < height; ++v)
        for (int u = 0; u < width; ++u, target += channels) {
            const float x = m[0] * (u + 0.5f) + m[1] * (v + 0.5f) + m[3] - 0.5f;
            const float y = m[4] * (u + 0.5f) + m[5] * (v + 0.5f) + m[7] - 0.5f;
            const float x0 = std::floor(x), y0 = std::floor(y);
            const float fx = x - x0, fy = y - y0;
            AddSample(features, x0, y0, (1 - fx) * (1 - fy), target);
            AddSample(features, x0 + 1, y0, fx * (1 - fy), target);
            AddSample(features, x0, y0 + 1, (1 - fx) * fy, target);
            AddSample(features, x0 + 1, y0 + 1, fx * fy, target);
        }
    return kTensorOk;
}

int PreparePoints(TfLiteContext* context, TfLiteNode* node) {
    TfLiteTensor* points = NodeInput(context, node, 0);
    TfLiteTensor* output = NodeOutput(context, node, 0);
    if (!IsFloatTensor(points, 3) || !IsMatrix(NodeInput(context, node, 1)) || !output ||
        points->dims->data[2] < 2)
        return kTensorError;
    return ResizeTensorTo(context, output, {1, points->dims->data[1], points->dims->data[2]});
}

int InvokePoints(TfLiteContext* context, TfLiteNode* node) {
    const TfLiteTensor* points = NodeInput(context, node, 0);
    const float* m = NodeInput(context, node, 1)->data;
    TfLiteTensor* output = NodeOutput(context, node, 0);
    const int step = points->dims->data[2];
    for (int i = 0; i < points->dims->data[1]; ++i) {
        const float* p = points->data + size_t(i) * step;
        float* q = output->data + size_t(i) * step;
        const float x = p[0], y = p[1];
        q[0] = m[0] * x + m[1] * y + m[3];
        q[1] = m[4] * x + m[5] * y + m[7];
        std::copy(p + 2, p + step, q + 2);
    }
    return kTensorOk;
}

}  // namespace

const TfLiteRegistration kLandmarksToMatrixOp = {InitRegion,
                                                 FreeOptions<RegionOptions>,
                                                 PrepareRegion,
                                                 InvokeRegion,
                                                 nullptr,
                                                 0,
                                                 "Landmarks2TransformMatrix",
                                                 2,
                                                 {}};
const TfLiteRegistration kTransformTensorOp = {
    InitMap, FreeOptions<MapOptions>,   PrepareMap, InvokeMap, nullptr,
    0,       "TransformTensorBilinear", 2,          {}};
const TfLiteRegistration kTransformLandmarksOp = {
    nullptr, nullptr, PreparePoints, InvokePoints, nullptr, 0, "TransformLandmarks", 2, {}};

}  // namespace kelmo
