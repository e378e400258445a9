// SPDX-License-Identifier: GPL-3.0-or-later
#include "effects/text/vector/text_scene.h"

#include <gtest/gtest.h>

namespace kelmo {
namespace {

/// Where a point of the letters' space comes to lie in the frame, -1..1.
cv::Point2f Seen(const TextScene& scene, float x, float y, float z = 0.0F) {
    const Matrix4 m = scene.Mvp();
    const auto row = [&](std::size_t r) {
        return m[r] * x + m[4 + r] * y + m[8 + r] * z + m[12 + r];
    };
    return {row(0) / row(3), row(1) / row(3)};
}

TEST(TextScene, PlacesPointsByWorkedOutNumbers) {
    // 2.4 away with a cotangent of 2.41421: 1.00592 times their size; 16:9 makes x narrower.
    constexpr float kSize = 1.0059224F;
    constexpr float kNarrow = kSize * 9.0F / 16.0F;
    TextScene plain;
    plain.frame = {160, 90};
    TextScene turned = plain;
    turned.rotation = {0.0F, 0.0F, 90.0F};
    TextScene moved = plain;
    moved.position = {0.5F, -0.25F, 0.0F};
    TextScene near = plain;
    near.position = {0.0F, 0.0F, 1.2F};
    TextScene small = plain;
    small.scale = -0.5F;
    TextScene placed = plain;
    placed.hasText = true;
    placed.transform.moveX = 0.25F;
    placed.transform.scaleX = 2.0F;
    TextScene turnedByHost = plain;
    turnedByHost.hasText = true;
    turnedByHost.transform.rotation = -90.0F;
    TextScene flat = plain;
    flat.flat = true;
    const struct {
        const char* name;
        const TextScene& scene;
        cv::Point2f expected;  // of (0.4, 0.2)
    } cases[] = {
        {"plain", plain, {0.4F * kNarrow, 0.2F * kSize}},
        {"turned by a quarter", turned, {-0.2F * kNarrow, 0.4F * kSize}},
        {"moved", moved, {0.9F * kNarrow, -0.05F * kSize}},
        {"half as far away", near, {0.8F * kNarrow, 0.4F * kSize}},
        {"a negative scale", small, {0.2F * kNarrow, 0.1F * kSize}},
        {"placed by the host", placed, {0.5F + 0.8F * kNarrow, 0.2F * kSize}},
        {"turned by the host", turnedByHost, {-0.2F * kNarrow, 0.4F * kSize}},
        {"flat", flat, {0.4F / 1.77F, 0.2F * 160.0F / 90.0F / 1.77F}},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        const cv::Point2f seen = Seen(c.scene, 0.4F, 0.2F);
        EXPECT_NEAR(seen.x, c.expected.x, 1e-4F);
        EXPECT_NEAR(seen.y, c.expected.y, 1e-4F);
    }
}

TEST(TextScene, BearsACameraThatLooksAlongItsOwnUp) {
    TextScene scene;
    scene.frame = {90, 160};
    scene.camera = scene.up = {0.0F, 2.0F, 0.0F};
    for (const float value : scene.Mvp()) EXPECT_TRUE(std::isfinite(value));
}

}  // namespace
}  // namespace kelmo
