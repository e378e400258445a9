// SPDX-License-Identifier: GPL-3.0-or-later
#include "framework/audio/audio_kernels.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <vector>

namespace kelmo::audio::test {

namespace {

/// Powers over the whole range of levels, and beyond it.
std::vector<float> SomePowers() {
    std::vector<float> powers = {kFloorPower, 1.0F, 0.5F, 0.70710677F, 0.70710678F, 2.0F};
    for (float power = kFloorPower * 1.003F; power < 10.0F; power *= 1.003F)
        powers.push_back(power);
    return powers;
}

}  // namespace

TEST(AudioKernels, LogarithmsAndPowersAreThoseOfTheLibrary) {
    const std::vector<float> powers = SomePowers();
    const auto count = static_cast<int32_t>(powers.size());
    std::vector<float> decibels = powers;
    ToDecibels(decibels.data(), count, -150.0F);
    for (std::size_t i = 0; i < powers.size(); ++i) {
        ASSERT_NEAR(decibels[i], 10 * std::log10(static_cast<double>(powers[i])), 5e-5)
            << powers[i];
    }
    for (const float exponent : {0.05F, 0.2F, 0.5F, 0.9F, 1.5F, 2.0F}) {
        std::vector<float> raised = powers;
        Raise(raised.data(), count, exponent, 0.0F);
        for (std::size_t i = 0; i < powers.size(); ++i) {
            if (powers[i] <= kFloorPower) continue;
            const double expected = std::pow(static_cast<double>(powers[i]), exponent);
            // The error of the logarithm grows with the exponent.
            ASSERT_NEAR(raised[i] / expected, 1.0, 1e-5) << powers[i] << " ^ " << exponent;
        }
    }
}

TEST(AudioKernels, TheSmallestPowerIsTheFloorExactly) {
    std::vector<float> values(9, kFloorPower);
    ToDecibels(values.data(), 9, -150.0F);
    EXPECT_THAT(values, testing::Each(-150.0F));
    values.assign(9, kFloorPower);
    Raise(values.data(), 9, 0.2F, 0.001F);
    EXPECT_THAT(values, testing::Each(0.001F));
}

TEST(AudioKernels, ExponentsWithoutExtentStayFinite) {
    for (const float exponent : {-2.0F, 30.0F}) {
        std::vector<float> raised = SomePowers();
        Raise(raised.data(), static_cast<int32_t>(raised.size()), exponent, 0.0F);
        for (const float value : raised) ASSERT_TRUE(std::isfinite(value)) << exponent;
    }
}

TEST(AudioKernels, ManyFallsEndAtTheFloorWithoutNumbersBelowTheNormalOnes) {
    std::vector<float> levels = {0.1F, 1e-10F, kFloorPower};
    std::vector<float> factors(3, kFallOff);
    const std::vector<float> silence(3, kFloorPower);
    for (int frame = 0; frame < 2000; ++frame) {
        RiseOrFall(silence.data(), 3, kFloorPower, levels.data(), factors.data());
        for (const float factor : factors) {
            ASSERT_TRUE(factor == 0.0F || std::isnormal(factor)) << frame;
        }
    }
    EXPECT_THAT(levels, testing::Each(kFloorPower));
}

}  // namespace kelmo::audio::test
