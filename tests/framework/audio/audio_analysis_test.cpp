// SPDX-License-Identifier: GPL-3.0-or-later
#include "framework/audio/audio_analysis.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <climits>
#include <cmath>
#include <complex>
#include <memory>
#include <numbers>
#include <thread>

namespace kelmo::test {

namespace {

constexpr float kRate = 25.0F;
constexpr int32_t kSamples = 1764;

/// Samples of one frame, kept for as long as the input is used.
struct Sound {
    std::vector<int16_t> words;
    int32_t channels = 1;

    AudioInput Input() const {
        const auto count = static_cast<int32_t>(words.size());
        return {channels, count / channels, count * 2, 2, words.data()};
    }
};

Sound Sine(double frequency, double height, int channels = 1, int32_t samples = kSamples) {
    Sound sound;
    sound.channels = channels;
    for (int32_t i = 0; i < samples; ++i) {
        const double value = std::sin(2 * std::numbers::pi * frequency * i / (samples * kRate));
        for (int c = 0; c < channels; ++c) {
            sound.words.push_back(static_cast<int16_t>(std::lround(value * height * 32767)));
        }
    }
    return sound;
}

AudioSettings Decibels() {
    AudioSettings settings;
    settings.compressRatio = 0.0F;
    return settings;
}

void ExpectSane(const AudioAnalysis& analysis, const char* what) {
    for (const float value : analysis.Band()) ASSERT_TRUE(value >= 0.0F && value <= 1.0F) << what;
    ASSERT_TRUE(analysis.Intensity() >= 0.0F && analysis.Intensity() <= 1.0F) << what;
    ASSERT_GE(analysis.FirstBin(), 0) << what;
    ASSERT_LT(analysis.LastBin(), static_cast<int32_t>(analysis.Spectrum().size())) << what;
}

/// Height of the first run's level over the floor, straight from the definition.
double ReferenceLevel(const Sound& sound, int bin, double exponent) {
    const int n = 4096;
    const int samples = static_cast<int>(sound.words.size()) / sound.channels;
    std::complex<double> sum = 0;
    for (int i = 0; i < samples; ++i) {
        double mono = 0;
        for (int c = 0; c < sound.channels; ++c) {
            mono += sound.words[static_cast<std::size_t>(i * sound.channels + c)] / 32768.0 /
                    sound.channels;
        }
        const int place = n - samples + i;
        const double window = (1 - std::cos(place * 2 * std::numbers::pi / n)) / 2;
        sum += mono * window * std::polar(1.0, -2 * std::numbers::pi * bin * place / n);
    }
    const double power = std::norm(sum / static_cast<double>(n));
    if (exponent == 0) return (std::max(10 * std::log10(power), -150.0) + 150) / 140;
    const double floor = std::pow(1e-15, exponent);
    return (std::max(std::pow(power, exponent), floor) - floor) / (std::pow(0.1, exponent) - floor);
}

}  // namespace

TEST(AudioAnalysis, TheTransformFollowsTheSamplesOfAFrame) {
    struct Case {
        int32_t samples;
        int32_t size;
    };
    for (const Case& c : std::vector<Case>{
             {0, 4}, {1, 4}, {2, 4}, {3, 8}, {1764, 4096}, {2048, 4096}, {2049, 8192}}) {
        AudioAnalysis analysis;
        const std::vector<int16_t> words(static_cast<std::size_t>(c.samples) + 1);
        analysis.Analyse({1, c.samples, c.samples * 2, 2, words.data()}, {}, 0, kRate, 0);
        EXPECT_EQ(analysis.FftSize(), c.size) << c.samples;
        EXPECT_EQ(analysis.BinCount(), c.size / 2) << c.samples;
        EXPECT_EQ(analysis.SampleRate(), static_cast<float>(c.samples) * kRate);
        ExpectSane(analysis, "size");
    }
    AudioAnalysis analysis;
    const Sound sound = Sine(1000, 0.5);
    analysis.Analyse(sound.Input(), {}, 0, kRate, 0);
    EXPECT_EQ(analysis.SampleRate(), 44100.0F);
    EXPECT_FLOAT_EQ(analysis.BinWidth(), 22050.0F / 2048);
    // The rate is that of the time when the transform was made.
    analysis.Analyse(sound.Input(), {}, 1, 50, 0);
    EXPECT_EQ(analysis.SampleRate(), 44100.0F);
}

TEST(AudioAnalysis, LevelsAreThoseOfTheDefinition) {
    for (const double exponent : {0.0, 1.0, 0.2, 0.5, 2.0}) {
        for (const int channels : {1, 2, 3}) {
            Sound sound = Sine(3000, 0.9, channels);
            if (channels == 3) {
                for (std::size_t i = 0; i < sound.words.size(); i += 3) sound.words[i] = 12345;
            }
            AudioSettings settings;
            settings.compressRatio = static_cast<float>(exponent);
            AudioAnalysis analysis;
            analysis.Analyse(sound.Input(), settings, 0, kRate, 0);
            for (const int bin : {0, 1, 40, 270, 278, 279, 280, 1000, 2047}) {
                const double expected = std::clamp(ReferenceLevel(sound, bin, exponent), 0.0, 1.0);
                EXPECT_NEAR(analysis.Spectrum()[static_cast<std::size_t>(bin)], expected,
                            exponent == 0 ? 2e-3 : 1e-4)
                    << "bin " << bin << ", exponent " << exponent << ", channels " << channels;
            }
        }
    }
}

TEST(AudioAnalysis, SilenceIsZeroOnEveryScale) {
    for (const float exponent : {0.0F, 1.0F, 0.2F, -1.0F}) {
        for (const bool noData : {false, true}) {
            AudioSettings settings;
            settings.compressRatio = exponent;
            AudioAnalysis analysis;
            const std::vector<int16_t> zeros(kSamples * 2);
            analysis.Analyse(
                noData ? AudioInput() : AudioInput{2, kSamples, kSamples * 4, 2, zeros.data()},
                settings, 0, kRate, 0);
            EXPECT_EQ(analysis.FftSize(), noData ? 256 : 4096);
            EXPECT_THAT(analysis.Spectrum(), testing::Each(0.0F)) << exponent;
            EXPECT_EQ(analysis.Intensity(), 0.0F);
        }
    }
}

TEST(AudioAnalysis, EqualChannelsAreOneAndNotTwo) {
    AudioAnalysis mono;
    AudioAnalysis stereo;
    const Sound one = Sine(3000, 1.0, 1);
    const Sound two = Sine(3000, 1.0, 2);
    mono.Analyse(one.Input(), {}, 0, kRate, 0);
    stereo.Analyse(two.Input(), {}, 0, kRate, 0);
    for (std::size_t i = 0; i < 2048; ++i) {
        ASSERT_NEAR(mono.Spectrum()[i], stereo.Spectrum()[i], 1e-6) << i;
    }
}

TEST(AudioAnalysis, LevelsRiseAtOnceAndFallEverFaster) {
    AudioAnalysis analysis;
    const Sound loud = Sine(3000, 0.9);
    const Sound silence = Sine(3000, 0.0);
    constexpr std::size_t kBin = 279;
    analysis.Analyse(loud.Input(), Decibels(), 0, kRate, 0);
    analysis.Analyse(loud.Input(), Decibels(), 1, kRate, 0);
    analysis.Analyse(loud.Input(), Decibels(), 2, kRate, 0);
    // N samples are more than two frames: the peak leaves the window in the third silent one.
    for (int position = 3; position < 6; ++position) {
        analysis.Analyse(silence.Input(), Decibels(), position, kRate, 0);
    }
    float before = analysis.Spectrum()[kBin];
    std::vector<float> factors;
    for (int position = 6; position < 9; ++position) {
        analysis.Analyse(silence.Input(), Decibels(), position, kRate, 0);
        factors.push_back(analysis.Spectrum()[kBin] / before);
        before = analysis.Spectrum()[kBin];
    }
    EXPECT_NEAR(factors[1] / factors[0], 0.9F, 1e-4);
    EXPECT_NEAR(factors[2] / factors[1], 0.9F, 1e-4);
    analysis.Analyse(loud.Input(), Decibels(), 9, kRate, 0);
    EXPECT_GT(analysis.Spectrum()[kBin], before);
}

TEST(AudioAnalysis, ASecondRunForAPositionTakesNoSamplesAndShowsTheLevelsAsTheyAre) {
    AudioAnalysis analysis;
    const Sound loud = Sine(3000, 0.9);
    const Sound silence = Sine(3000, 0.0);
    for (int position = 0; position < 3; ++position) {
        analysis.Analyse(loud.Input(), {}, position, kRate, 0);
    }
    for (int position = 3; position < 6; ++position) {
        analysis.Analyse(silence.Input(), {}, position, kRate, 0);
    }
    EXPECT_GT(analysis.Intensity(), 0.0F);
    // The window is silent, the levels were still falling.
    analysis.Analyse(loud.Input(), {}, 5, kRate, 0);
    EXPECT_EQ(analysis.Intensity(), 0.0F);
    // The fall starts again at its slowest.
    analysis.Analyse(loud.Input(), Decibels(), 6, kRate, 0);
    const float peak = analysis.Spectrum()[279];
    for (int position = 7; position < 10; ++position) {
        analysis.Analyse(silence.Input(), Decibels(), position, kRate, 0);
    }
    EXPECT_LT(analysis.Spectrum()[279], peak);
}

TEST(AudioAnalysis, SmoothingBlendsWithTheLevelBefore) {
    AudioAnalysis plain;
    AudioAnalysis smooth;
    const Sound quiet = Sine(3000, 0.1);
    const Sound loud = Sine(3000, 0.9);
    for (AudioAnalysis* analysis : {&plain, &smooth}) {
        for (int position = 0; position < 3; ++position) {
            analysis->Analyse(quiet.Input(), Decibels(), position, kRate, 0);
        }
    }
    const float before = plain.Spectrum()[279];
    plain.Analyse(loud.Input(), Decibels(), 3, kRate, 0);
    smooth.Analyse(loud.Input(), Decibels(), 3, kRate, 0.25F);
    EXPECT_NEAR(smooth.Spectrum()[279], 0.75F * plain.Spectrum()[279] + 0.25F * before, 1e-5);
}

TEST(AudioAnalysis, TheBandIsPickedInHertz) {
    AudioAnalysis analysis;
    const Sound sound = Sine(3000, 0.5);
    struct Case {
        float low;
        float high;
        int32_t first;
        int32_t last;
    };
    const float width = 22050.0F / 2048;
    const std::vector<Case> cases = {
        {0, 22050, 0, 2047},
        {10.5F * width, 20.5F * width, 10, 21},
        {-500, 3 * width, 0, 4},
        {0, 1e30F, 0, 2047},
        {-1e30F, 0, 0, 1},
        {20000, 1e9F, 1857, 2047},
        // No bins: the range before stays.
        {1000, 500, 1857, 2047},
        {1e30F, 2e30F, 1857, 2047},
        {0, -1e30F, 1857, 2047},
    };
    int32_t position = 0;
    for (const Case& c : cases) {
        AudioSettings settings;
        settings.frequencyMin = c.low;
        settings.frequencyMax = c.high;
        analysis.Analyse(sound.Input(), settings, position++, kRate, 0);
        EXPECT_EQ(analysis.FirstBin(), c.first) << c.low << ".." << c.high;
        EXPECT_EQ(analysis.LastBin(), c.last) << c.low << ".." << c.high;
        EXPECT_EQ(analysis.Band().size(), static_cast<std::size_t>(c.last - c.first + 1));
        float sum = 0;
        for (const float value : analysis.Band()) sum += value;
        if (c.high > c.low) {
            EXPECT_NEAR(analysis.Intensity(), sum / static_cast<float>(c.last - c.first + 1), 1e-5);
        }
    }
}

TEST(AudioAnalysis, EqualLimitsMakeASwitch) {
    const Sound sound = Sine(3000, 0.9);
    AudioSettings settings = Decibels();
    settings.audioMin = settings.audioMax = 0.7F;
    AudioAnalysis analysis;
    AudioAnalysis plain;
    analysis.Analyse(sound.Input(), settings, 0, kRate, 0);
    plain.Analyse(sound.Input(), Decibels(), 0, kRate, 0);
    EXPECT_EQ(analysis.Spectrum()[279], 1.0F);
    for (std::size_t i = 0; i < 2048; ++i) {
        ASSERT_EQ(analysis.Spectrum()[i], plain.Spectrum()[i] > 0.7F ? 1.0F : 0.0F) << i;
    }
}

TEST(AudioAnalysis, NoInputReadsBeyondItsBytesOrGivesNonsense) {
    struct Case {
        const char* name;
        int32_t channels, samples, bytes;
    };
    // Exactly as large as it says, so that a sanitizer sees one byte too many.
    const auto data = std::make_unique<uint8_t[]>(99);
    std::fill_n(data.get(), 99, uint8_t{0x70});
    for (const Case& c : std::vector<Case>{{"no samples", 2, 0, 99},
                                           {"an odd number of bytes", 1, 50, 99},
                                           {"8 channels", 8, 6, 99},
                                           {"more samples than bytes", 2, 5000, 99},
                                           {"no channels", 0, 10, 99},
                                           {"channels below 0", -5, 10, 99},
                                           {"samples below 0", 2, -10, 99},
                                           {"bytes below 0", 2, 10, -99},
                                           {"a million channels", 1000000, 10, 99},
                                           {"any number of samples", 2, INT_MAX, 99},
                                           {"nothing fits", INT_MAX, INT_MAX, 1}}) {
        AudioAnalysis analysis;
        for (int position = 0; position < 2; ++position) {
            // One byte off any alignment.
            analysis.Analyse({c.channels, c.samples, std::min(c.bytes, 98), 2, data.get() + 1}, {},
                             position, kRate, 0);
            ExpectSane(analysis, c.name);
        }
    }
}

TEST(AudioAnalysis, NoSettingGivesNonsense) {
    const Sound sound = Sine(3000, 1.0);
    const float values[] = {0.0F,  1.0F,   -1.0F, 1e-9F,    45.0F,
                            1e30F, -1e30F, NAN,   INFINITY, -INFINITY};
    AudioAnalysis analysis;
    int32_t position = INT_MIN;
    for (const float value : values) {
        for (int field = 0; field < 7; ++field) {
            AudioSettings settings;
            float rate = kRate;
            float smoothing = 0;
            float* const targets[] = {&settings.audioMin,
                                      &settings.audioMax,
                                      &settings.frequencyMin,
                                      &settings.frequencyMax,
                                      &settings.compressRatio,
                                      &rate,
                                      &smoothing};
            *targets[field] = value;
            AudioAnalysis fresh;
            fresh.Analyse(sound.Input(), settings, 0, rate, smoothing);
            analysis.Analyse(sound.Input(), settings, position++, rate, smoothing);
            for (const AudioAnalysis* a : {&fresh, &analysis}) {
                for (const float bin : a->Spectrum()) {
                    ASSERT_TRUE(std::isfinite(bin)) << value << " as setting " << field;
                }
            }
        }
    }
}

TEST(AudioAnalysis, TheFirstRunAtPositionMinusOneSeesSilence) {
    AudioAnalysis analysis;
    const Sound sound = Sine(3000, 1.0);
    analysis.Analyse(sound.Input(), {}, -1, kRate, 0);
    EXPECT_EQ(analysis.Intensity(), 0.0F);
    EXPECT_TRUE(AudioAnalysis().Band().empty());
}

TEST(AudioAnalysis, SeveralMayRunAtOnce) {
    std::vector<std::thread> threads;
    std::vector<float> results(4);
    for (std::size_t i = 0; i < results.size(); ++i) {
        threads.emplace_back([i, &results] {
            const Sound odd = Sine(3000, 0.9, 2, 300);
            const Sound even = Sine(3000, 0.9, 2);
            AudioAnalysis analysis;
            // The number of samples changes from frame to frame: plans come and go.
            for (int32_t position = 0; position < 20; ++position) {
                analysis.Analyse((position % 2 != 0 ? odd : even).Input(), {}, position, kRate, 0);
            }
            results[i] = analysis.Intensity();
        });
    }
    for (std::thread& thread : threads) thread.join();
    EXPECT_THAT(results, testing::Each(results[0]));
    EXPECT_GT(results[0], 0.0F);
}

}  // namespace kelmo::test
