// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <memory>
#include <opencv2/core.hpp>

#include "contract/text_path.h"
#include "geometry/contours/contours.h"
#include "geometry/mesh/bevel_mesh_builder.h"
#include "geometry/mesh/vector_mesh.h"

namespace kelmo {

/// Everything that decides about a mesh besides the outline itself.
struct TextSolid {
    MeshShape shape;         ///< adjusted
    float segment = 0.011F;  ///< length of a step, relative to a letter
    float extrude = 0.1F;    ///< depth, relative to the largest letter
    int32_t threshold = 20;  ///< of a mask, 0..255
    bool reverse = false;    ///< a mask whose ground is bright

    bool operator==(const TextSolid&) const = default;
};

/// The solid letters of a text, or the solid shape of a picture's mask: outline, faces and mesh,
/// rebuilt only when something that shapes them has changed. Knows no engine. One thread at a time.
class TextGeometry {
public:
    /// A text to show from now on; the object is borrowed for the call. True when it differs from
    /// the one before.
    bool TakeText(TextPath& path);
    bool HasText() const { return text != nullptr; }

    /// Brings the mesh up to date for a frame of that size: the text's outline, or without a text
    /// that of `picture`'s mask. True when the mesh was built anew; then the pointers into it have
    /// changed.
    bool Prepare(const cv::Mat& picture, const cv::Size& frame, const TextSolid& wanted);

    /// Null without anything to draw.
    VectorMesh* Mesh() { return built && mesh.IsValid() ? &mesh : nullptr; }
    const Contours& Outline() const { return contours; }
    const std::vector<MeshGroup>& Groups() const { return builder.Groups(); }
    /// Left, top, right, bottom as parts of a frame of that size.
    cv::Vec4f Bound(const cv::Size& frame) const;
    /// Centre of the letter in the middle of the row.
    cv::Vec3f MiddleCenter() const;
    /// Whether the last `Prepare` met a new text or a new shape.
    bool IsNew() const { return isNew; }

private:
    bool Outline(const cv::Mat& picture, const cv::Size& frame, bool shapeChanged);

    std::shared_ptr<TextPath> text;
    Contours contours;
    BevelMeshBuilder builder;
    VectorMesh mesh;
    TextSolid solid;
    cv::Size frameSize;
    bool textIsNew = false;
    bool isNew = false;
    bool built = false;
};

}  // namespace kelmo
