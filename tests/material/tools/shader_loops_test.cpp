// SPDX-License-Identifier: GPL-3.0-or-later
#include "tools/material/shader_loops.h"

#include <gtest/gtest.h>

namespace kelmo::material {
namespace {

TEST(UnboundedLoops, AreThoseThatAParameterCouldMakeRunAway) {
    const std::pair<const char*, std::size_t> cases[] = {
        {"for (int k = 0; k < 8; ++k) {}", 0},
        {"for (int k = -kReach; k <= 2 * kReach; ++k) {}", 0},
        {"for (int k = 0; k < min(count, 8); ++k) {}", 0},
        {"for (int k = clamp(count, 1, 8) - 1; k >= 0; --k) {}", 0},
        {"for (float x = 0.0; x < 1.0; x += 0.1) {}", 0},
        {"// for (int k = 0; k < count; ++k)\nforward(count);", 0},
        {"for (int k = 0; k < count; ++k) {}", 1},
        {"for (int k = count; k > 0; --k) {}", 1},
        {"for (int k = 0; k < 8 * count; ++k) {}", 1},
        {"for (int k = 0; k < min(count, 8) + more; ++k) {}", 1},
        {"for (;;) {}", 1},
        {"while (true) {}", 1},
        {"for (int y = 0; y < n; ++y) { for (int x = 0; x < 3; ++x) {} while(a) {} }", 2},
    };
    for (const auto& [source, count] : cases) {
        EXPECT_EQ(UnboundedLoops(source).size(), count) << source;
    }
}

}  // namespace
}  // namespace kelmo::material
