// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>

namespace kelmo {

/// 4 x 4 floats, column-major, for column vectors: element (row, column) stands at column * 4 +
/// row.
using Matrix4 = std::array<float, 16>;

inline constexpr Matrix4 kIdentity = {1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1};

/// a x b: what the product does to a vector is b first, then a.
Matrix4 Multiply(const Matrix4& a, const Matrix4& b);

/// Rotation by angles in degrees about x, then y, then z, with the signs that all scenes here
/// share: a positive `ry` turns the right side of a card towards the viewer.
Matrix4 Rotation(float rx, float ry, float rz);
/// The same with the angles named z, y, x.
inline Matrix4 EulerMatrix(float a, float b, float c) {
    return Rotation(c, b, a);
}

constexpr Matrix4 Translation(float x, float y, float z) {
    Matrix4 m = kIdentity;
    m[12] = x;
    m[13] = y;
    m[14] = z;
    return m;
}

/// Scales y by k.
constexpr Matrix4 ScaleY(float k) {
    Matrix4 m = kIdentity;
    m[5] = k;
    return m;
}

/// Cotangent of half of the field of view of 45 degrees.
inline constexpr float kCotHalfView = 2.41421356F;

/// A camera at the origin that looks along -z with a field of view of 45 degrees. Without near and
/// far plane: depth is the distance, and a shader that tests depth makes its own.
Matrix4 Projection();

}  // namespace kelmo
