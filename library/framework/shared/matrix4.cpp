// SPDX-License-Identifier: GPL-3.0-or-later
#include "framework/shared/matrix4.h"

#include <cmath>

namespace kelmo {

Matrix4 Multiply(const Matrix4& a, const Matrix4& b) {
    Matrix4 out{};
    for (int column = 0; column < 4; ++column) {
        for (int row = 0; row < 4; ++row) {
            float sum = 0.0F;
            for (int k = 0; k < 4; ++k) sum += a[k * 4 + row] * b[column * 4 + k];
            out[column * 4 + row] = sum;
        }
    }
    return out;
}

Matrix4 Rotation(float rx, float ry, float rz) {
    constexpr double kRadians = 3.14159265358979323846 / 180.0;
    const double cx = std::cos(rx * kRadians);
    const double sx = std::sin(rx * kRadians);
    const double cy = std::cos(ry * kRadians);
    const double sy = std::sin(ry * kRadians);
    const double cz = std::cos(rz * kRadians);
    const double sz = std::sin(rz * kRadians);
    const auto f = [](double v) { return static_cast<float>(v); };
    return {f(cz * cy),
            f(sy * sx * cz - sz * cx),
            f(sy * cx * cz + sz * sx),
            0.0F,
            f(sz * cy),
            f(sy * sx * sz + cz * cx),
            f(sy * cx * sz - cz * sx),
            0.0F,
            f(-sy),
            f(sx * cy),
            f(cx * cy),
            0.0F,
            0.0F,
            0.0F,
            0.0F,
            1.0F};
}

Matrix4 Projection() {
    const auto f = static_cast<float>(1.0 / std::tan(0.3926991));
    Matrix4 m{};
    m[0] = f;
    m[5] = f;
    m[10] = -1.0F;
    m[11] = -1.0F;
    m[14] = -0.0F;
    return m;
}

}  // namespace kelmo
