// SPDX-License-Identifier: GPL-3.0-or-later
#include "effects/text/vector/text_geometry.h"

#include <algorithm>

#include "geometry/contours/contour_face.h"

namespace kelmo {
namespace {

/// A traced outline is cut finer than a font's, since it is the only one of its kind in the frame.
constexpr float kMaskSegment = 0.16F;

}  // namespace

bool TextGeometry::TakeText(TextPath& path) {
    if (text && path.IsSame(text.get())) return false;
    std::shared_ptr<TextPath> copy;
    path.Clone(&copy);
    if (!copy) return false;
    text = std::move(copy);
    textIsNew = true;
    return true;
}

bool TextGeometry::Outline(const cv::Mat& picture, const cv::Size& frame, bool shapeChanged) {
    if (text) {
        if (textIsNew) contours.ParseTextPath(text.get(), frame.width, frame.height);
        if (!textIsNew && !shapeChanged) return false;
        contours.ClearDerived();
        contours.FlattenPaths(solid.segment, solid.shape.enableSubdivision);
        contours.m_IsText = true;
        return true;
    }
    contours.ClearDerived();
    if (!contours.ParseMask(picture, frame.width, frame.height, solid.segment, solid.threshold,
                            solid.reverse, shapeChanged)) {
        return false;
    }
    contours.FlattenPaths(solid.segment * kMaskSegment, solid.shape.enableSubdivision);
    return true;
}

bool TextGeometry::Prepare(const cv::Mat& picture, const cv::Size& frame, const TextSolid& wanted) {
    if (frame.area() <= 0) return false;
    textIsNew = textIsNew || (text && frame != frameSize);
    const bool shapeChanged = wanted != solid || frame != frameSize;
    solid = wanted;
    frameSize = frame;
    isNew = Outline(picture, frame, shapeChanged);
    textIsNew = false;
    if (!isNew) return false;
    const MeshShape& shape = solid.shape;
    const auto columns =
        static_cast<int32_t>(int64_t{frame.width} * shape.levelSubdivision / frame.height);
    ContourFace().ParseContours(contours, shape.enableSubdivision, shape.levelSubdivision, columns);
    builder.SetShape(shape);
    // Nothing in the picture, or a text of spaces: no mesh, and nobody's fault.
    const bool empty =
        contours.m_Triangles.empty() ||
        std::ranges::all_of(contours.m_Points, [](const auto& group) { return group.empty(); });
    built = !empty && builder.BuildMesh(mesh, contours, solid.extrude, false);
    return true;
}

cv::Vec4f TextGeometry::Bound(const cv::Size& frame) const {
    if (frame.area() <= 0) return {0.0F, 0.0F, 1.0F, 1.0F};
    const cv::Rect2f box(contours.m_Bound);
    const auto columns = static_cast<float>(frame.width);
    const auto rows = static_cast<float>(frame.height);
    return {box.x / columns, box.y / rows, (box.x + box.width) / columns,
            (box.y + box.height) / rows};
}

cv::Vec3f TextGeometry::MiddleCenter() const {
    const auto& groups = builder.Groups();
    if (groups.empty()) return {};
    const cv::Vec4f& center = groups[groups.size() / 2].center;
    return {center[0], center[1], center[2]};
}

}  // namespace kelmo
