// SPDX-License-Identifier: GPL-3.0-or-later
#include "geometry/mesh/mesh_builder_shape.h"

#include <algorithm>
#include <cmath>

namespace kelmo {
namespace {

void SettleNumbers(MeshShape& shape) {
    for (float* value : {&shape.bevelSize, &shape.borderThickness, &shape.bevelDepth,
                         &shape.bevelCurve, &shape.borderBevelSize, &shape.upperBevelSize,
                         &shape.baseBevelSize, &shape.edgeExtrusionDepth}) {
        if (!std::isfinite(*value)) *value = 0;
    }
}

// A grid of a million points; finer ones show nothing more and take minutes.
constexpr int32_t kFinestLevel = 1024;
// One outline of this many strips is refused as a mesh already.
constexpr int32_t kMostSegments = 1 << 25;

int32_t FewestSegments(int32_t modelType) {
    if (modelType == MeshShape::kBordered) return 10;
    return modelType == MeshShape::kPlated ? 4 : 1;
}

void AdjustBordered(MeshShape& shape) {
    shape.bevelSize = shape.borderThickness;
    if (shape.hiddenFillingSurface) {
        shape.bevelSize = std::max(shape.bevelSize, 0.001f);
    } else {
        shape.borderBevelSize *= shape.upperDoubleExtrude ? 0.5f : 0.3f;
    }
    if (shape.upperDoubleExtrude) {
        shape.edgeExtrusionDepth = std::max(shape.edgeExtrusionDepth, 0.01f);
    }
}

}  // namespace

MeshShape SettleShape(MeshShape shape) {
    SettleNumbers(shape);
    if (shape.modelType < MeshShape::kBevelled || shape.modelType > MeshShape::kPlated) {
        shape.modelType = MeshShape::kBevelled;
    }
    if (shape.modelType == MeshShape::kBevelled || shape.modelType == MeshShape::kPlated) {
        shape.borderThickness = 0;
    }
    shape.hiddenFillingSurface =
        shape.hiddenFillingSurface == 1 && shape.modelType == MeshShape::kBordered;
    shape.upperDoubleExtrude = shape.upperDoubleExtrude == 1;
    shape.extrusionType = shape.extrusionType != 0 && shape.modelType != MeshShape::kPlated;
    shape.baseBevelSegments = std::clamp(shape.baseBevelSegments, 2, kMostSegments);
    shape.upperBevelSegments = std::clamp(shape.upperBevelSegments, 6, kMostSegments);
    shape.bevelSegments =
        std::clamp(shape.bevelSegments, FewestSegments(shape.modelType), kMostSegments);
    shape.levelSubdivision = std::clamp(shape.levelSubdivision, 0, kFinestLevel);
    return shape;
}

MeshShape AdjustShape(MeshShape given) {
    MeshShape shape = SettleShape(given);
    switch (shape.modelType) {
        case MeshShape::kBordered:
            AdjustBordered(shape);
            break;
        case MeshShape::kInflated:
            shape.bevelSize = shape.borderThickness == 0 ? 0.001f : shape.borderThickness;
            shape.edgeExtrusionDepth = std::max(shape.edgeExtrusionDepth, 0.1f) * 0.03f;
            break;
        default:
            shape.bevelSize /= 10;
            break;
    }
    return shape;
}

}  // namespace kelmo
