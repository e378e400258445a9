// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>

namespace kelmo {

/// What stands between an outline and its mesh. A field has the name of its parameter.
struct MeshShape {
    static constexpr int32_t kBevelled = 0;  ///< body with walls, bevels in front and behind
    static constexpr int32_t kBordered = 1;  ///< body with walls, a rounded border around the face
    static constexpr int32_t kInflated = 2;  ///< bulging body below a bulging upper part
    static constexpr int32_t kPlated = 3;    ///< upright sides that stand out around the face

    int32_t hiddenFillingSurface = 0;  ///< 1: outline only, no faces; with kBordered alone
    int32_t modelType = kBevelled;
    float bevelSize = 0;        ///< offset between body and face, in thirtieths of the group size;
                                ///< positive grows the body, negative shrinks the face
    float borderThickness = 0;  ///< takes the place of `bevelSize` with kBordered, kInflated
    float bevelDepth = 1;       ///< height of the bevel relative to its width
    float bevelCurve = 0;       ///< 0 chamfer, 1 quarter round
    int32_t baseBevelSegments = 20;   ///< of the bulging body, at least 2
    int32_t upperBevelSegments = 20;  ///< of the upper part of kInflated, at least 6
    int32_t bevelSegments = 20;       ///< strips of a bevel, at least 1
    int32_t upperDoubleExtrude = 0;   ///< 1: the face stands on a step of its own; kBordered
    float borderBevelSize = 0.15f;    ///< radius of the border's edge relative to its width
    float upperBevelSize = 1;         ///< bulge of the upper part
    float baseBevelSize = 0.5f;       ///< bulge of the body
    float edgeExtrusionDepth = 1;     ///< height of the border or of the upper part
    int32_t extrusionType = 0;        ///< 0: front only (kBevelled: both sides), 1: front and back
    bool enableSubdivision = false;   ///< faces are lifted by the height picture
    int32_t levelSubdivision = 0;     ///< rows of the grid of inner points, 0..1024
    int32_t wireframe = 0;
    int32_t uvMapMode = 0;  ///< 1: one face map for all groups

    bool operator==(const MeshShape&) const = default;
};

/// The shape without values that have no meaning: numbers that are not finite count as 0, an
/// unknown model as kBevelled, an extrusion type other than 0 as 1 (always 0 for kPlated), segments
/// at least as many as the model needs and at most 2^25 (too many for any mesh), the level of the
/// grid within its range, only kBordered hides its faces, and only models with a border have one
/// of a thickness, so that equal shapes are equal records. Settling again changes nothing.
MeshShape SettleShape(MeshShape shape);

/// The shape that is built for the values that a user gave: settled, with the size that counts for
/// the model in `bevelSize` and the scales of the border. Adjusting a second time scales a second
/// time.
MeshShape AdjustShape(MeshShape given);

}  // namespace kelmo
