// SPDX-License-Identifier: GPL-3.0-or-later
#include "effects/text/vector/text_scene.h"

#include <algorithm>
#include <cmath>
#include <initializer_list>

namespace kelmo {
namespace {

constexpr float kWideHalf = 1.77F;  // half the width that a flat scene shows of a wide frame
constexpr float kNear = 0.001F;
constexpr float kFar = 1000.0F;

Matrix4 Scaling(float x, float y, float z) {
    Matrix4 m = kIdentity;
    m[0] = x;
    m[5] = y;
    m[10] = z;
    return m;
}

/// Counter-clockwise about the axis 0 x, 1 y, 2 z.
Matrix4 Turn(int axis, float degrees) {
    const double radians = static_cast<double>(degrees) * CV_PI / 180.0;
    const auto c = static_cast<float>(std::cos(radians));
    const auto s = static_cast<float>(std::sin(radians));
    const int a = (axis + 1) % 3;
    const int b = (axis + 2) % 3;
    Matrix4 m = kIdentity;
    m[static_cast<std::size_t>(a * 4 + a)] = c;
    m[static_cast<std::size_t>(a * 4 + b)] = s;
    m[static_cast<std::size_t>(b * 4 + a)] = -s;
    m[static_cast<std::size_t>(b * 4 + b)] = c;
    return m;
}

Matrix4 Product(std::initializer_list<Matrix4> factors) {
    Matrix4 m = kIdentity;
    for (const Matrix4& factor : factors) m = Multiply(m, factor);
    return m;
}

cv::Vec3f Unit(const cv::Vec3f& v, const cv::Vec3f& fallback) {
    const auto length = static_cast<float>(cv::norm(v));
    return length > 0.0F && std::isfinite(length) ? v / length : fallback;
}

}  // namespace

Matrix4 TextScene::Model() const {
    float x = position[0];
    float y = position[1];
    if (hasText && frame.height > 0) {
        const auto rows = static_cast<float>(frame.height);
        x = 2.0F * position[0] * textOrigin.x / rows;
        y = 2.0F * position[1] * textOrigin.y / rows;
    }
    const float size = std::abs(scale);
    return Product({Translation(x, y, position[2]), Turn(0, rotation[0]), Turn(1, rotation[1]),
                    Turn(2, rotation[2]), Scaling(size, size, 1.0F)});
}

Matrix4 TextScene::View() const {
    // The camera looks at the origin.
    const cv::Vec3f back = Unit(camera, {0.0F, 0.0F, 1.0F});
    const cv::Vec3f side = Unit(up.cross(back), {1.0F, 0.0F, 0.0F});
    const cv::Vec3f top = back.cross(side);
    return {side[0],           top[0],           back[0],           0.0F,
            side[1],           top[1],           back[1],           0.0F,
            side[2],           top[2],           back[2],           0.0F,
            -side.dot(camera), -top.dot(camera), -back.dot(camera), 1.0F};
}

Matrix4 TextScene::Projection() const {
    const auto columns = static_cast<float>(frame.width);
    const auto rows = static_cast<float>(frame.height);
    Matrix4 m{};
    if (flat) {
        const bool wide = columns > rows;
        m[0] = wide ? 1.0F / kWideHalf : rows / columns;
        m[5] = wide ? columns / (kWideHalf * rows) : 1.0F;
        m[10] = -2.0F / (kFar - kNear);
        m[14] = -(kFar + kNear) / (kFar - kNear);
        m[15] = 1.0F;
        return m;
    }
    m[0] = kCotHalfView * rows / columns;
    m[5] = kCotHalfView;
    m[10] = -1.0000019F;
    m[11] = -1.0F;
    m[14] = -0.002F;
    return m;
}

Matrix4 TextScene::FrameTransform() const {
    const Matrix4 toCenter = Translation(textCenter.x, -textCenter.y, 0.0F);
    if (!hasText) return toCenter;
    const float aspect = static_cast<float>(frame.width) / static_cast<float>(frame.height);
    return Product({Translation(2.0F * transform.moveX, -2.0F * transform.moveY, 0.0F),
                    Scaling(1.0F / aspect, 1.0F, 1.0F), Turn(2, -transform.rotation),
                    Scaling(aspect, 1.0F, 1.0F), Scaling(transform.scaleX, transform.scaleY, 1.0F),
                    toCenter});
}

Matrix4 TextScene::Mvp() const {
    if (frame.area() <= 0) return kIdentity;
    const float a = -center.x;
    const float b = center.y;
    return Product({Translation(-a, -b, 0.0F), FrameTransform(), Projection(), Turn(2, -textAngle),
                    Translation(a, b, 0.0F), View(), Model()});
}

}  // namespace kelmo
