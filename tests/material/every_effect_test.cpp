// SPDX-License-Identifier: GPL-3.0-or-later
// What holds for every entry of the catalogue, whatever it draws.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <set>

#include "host/session/host_error.h"
#include "tests/material/effect_stage.h"
#include "tests/material/picture_compare.h"
#include "tests/material/test_pictures.h"

namespace kelmo::test {
namespace {

using testing::IsEmpty;

constexpr int kWidth = 96;
constexpr int kHeight = 54;

/// Ten frames, drawn up to the fifth: enough for what remembers earlier frames.
constexpr int64_t kFrames = 10;
constexpr int64_t kLast = 4;

Picture DrawSome(StagedEffect& effect, Picture& first, Picture& second) {
    Picture drawn;
    for (int64_t frame = 0; frame <= kLast; ++frame) {
        drawn = effect.Draw(frame, first, second, LoudSound(frame));
    }
    return drawn;
}

std::string FileStem(const EffectDescription& effect, const char* test) {
    std::string folder = FolderOf(effect);
    std::replace(folder.begin(), folder.end(), '/', '-');
    return std::string(test) + "/" + folder;
}

TEST(EveryEffect, DrawsAtAnyShapeWithoutAComplaint) {
    ASSERT_GE(static_cast<int>(AllEffects().size()), AtLeast(60));
    TakeComplaints();
    const std::pair<int, int> sizes[] = {{96, 54}, {54, 96}, {31, 17}, {2, 2}};
    for (const EffectDescription& effect : AllEffects()) {
        SCOPED_TRACE(effect.name);
        for (const auto& [width, height] : sizes) {
            // Looks of one class and few shaders: one stands for all at the other shapes.
            if (IsTitle(effect) && effect.name != "Gold Title" && width != kWidth) continue;
            Picture first = TestCard(width, height);
            Picture second = City(width, height);
            StagedEffect staged(effect, width, height, kFrames);
            EXPECT_TRUE(IsPremultiplied(DrawSome(staged, first, second))) << width << "x" << height;
        }
        EXPECT_THAT(TakeComplaints(), IsEmpty());
    }
}

/// Levels that change a pixel so that one sees it.
constexpr int kSeen = 12;

/// At its good moment an effect is to be seen. A clip with noise and highlights gives each
/// something to do.
TEST(EveryEffect, ShowsAtItsGoodMomentNeitherTheClipNorOneColour) {
    Picture first = NoisyLandscape(160, 90);
    Picture second = City(160, 90);
    for (const EffectDescription& effect : AllEffects()) {
        if (IsPart(effect)) continue;  // works inside another, which is here too
        SCOPED_TRACE(effect.name);
        const Picture drawn = DrawGoodMoment(effect, first, second);
        const bool mayBeFlat = effect.name == "Dip to Colour";  // that one colour is what it is for
        EXPECT_TRUE(mayBeFlat || !IsFlat(drawn));
        if (effect.name == "Retouch") continue;  // there is a person here, and no face
        EXPECT_GT(Compare(first, drawn, kSeen).share, 0.002) << "like the clip";
        if (!IsTransition(effect)) continue;
        EXPECT_GT(Compare(second, drawn, kSeen).share, 0.002) << "like the second clip";
    }
}

TEST(EveryEffect, DrawsTheSamePictureAgainAndInAnotherInstance) {
    Picture first = Landscape(kWidth, kHeight);
    Picture second = City(kWidth, kHeight);
    for (const EffectDescription& effect : AllEffects()) {
        SCOPED_TRACE(effect.name);
        if (IsOfTheMoment(effect)) continue;
        StagedEffect one(effect, kWidth, kHeight, kFrames);
        StagedEffect other(effect, kWidth, kHeight, kFrames);
        const Picture drawn = DrawSome(one, first, second);
        EXPECT_TRUE(Equals(drawn, DrawSome(other, first, second), 0, FileStem(effect, "again")));
        if (GoesOn(effect)) continue;
        const Picture again = one.Draw(kLast, first, second, LoudSound(kLast));
        // Levels of sound stop falling when time stands still, and stand from then on.
        if (!effect.WantsAudio()) {
            EXPECT_TRUE(Equals(drawn, again, 0, FileStem(effect, "again")));
        }
        EXPECT_TRUE(Equals(again, one.Draw(kLast, first, second, LoudSound(kLast)), 0,
                           FileStem(effect, "again")))
            << "the same frame once more";
    }
}

std::string TextOf(const host::ParameterDescription& parameter, double value) {
    if (parameter.kind == host::ParameterKind::kCheckBox) return value != 0 ? "on" : "off";
    return parameter.IsWhole() ? std::to_string(std::lround(value)) : std::to_string(value);
}

/// Looks of one class and one shader have the same parameters: once is enough for those.
bool IsKnownOfFamily(const EffectDescription& effect, const std::string& parameter) {
    static std::set<std::string> seen;
    const std::string folder = FolderOf(effect);
    const std::string family = folder.substr(0, folder.find('/'));
    const bool ofLooks = family == "text3d" || family == "edge_flow" || family == "afterimage";
    return ofLooks && !seen.insert(family + "/" + parameter).second;
}

/// Each number at its ends, the others at their defaults.
TEST(EveryEffect, StandsTheEndsOfItsParameters) {
    Picture first = TestCard(48, 27);
    Picture second = City(48, 27);
    int tried = 0;
    for (const EffectDescription& effect : AllEffects()) {
        for (const host::ParameterDescription& parameter : effect.parameters) {
            if (parameter.IsText() || parameter.IsColor()) continue;
            if (IsKnownOfFamily(effect, parameter.name)) continue;
            for (const double value : {parameter.min, parameter.max}) {
                const std::string assignment = parameter.name + "=" + TextOf(parameter, value);
                SCOPED_TRACE(effect.name + " " + assignment);
                StagedEffect staged(effect, 48, 27, kFrames, {assignment});
                Picture drawn;
                ASSERT_NO_THROW(drawn = staged.Draw(kLast, first, second, LoudSound(kLast)));
                EXPECT_TRUE(IsPremultiplied(drawn));
                ++tried;
            }
        }
    }
    EXPECT_GE(tried, AtLeast(250));
}

/// Sizes are given as parts of the frame, so a small preview shows what the film will show. Those
/// whose picture is made of single pixels or of the grain of their size cannot.
TEST(EveryEffect, LooksTheSameAtTwiceTheSize) {
    const std::set<std::string> kOfPixels = {
        "Film Grain",     // grains of about a pixel
        "Smart Denoise",  // judges pixels
        "VHS Tape",       // 240 lines, whatever the picture has
        "Retro Television",
        "Halftone",       // cells have five pixels at least
        "Pencil Sketch",  // strokes below a pixel
        "ASCII",          // dots of a sign, below a pixel on a small picture
        "Old Computer",   // the same of its pattern
        "Cartoon",        // lines have a pixel at least
        "Neon Edges",     // those too
        "Wireframe Title",
        "Soft Blur",    // counted in halvings of the picture
        "Retro Dream",  // by the same blur
        "Star Highlights",
        "Cross Highlights",
        "Heart Highlights",
        "Star Highlights (own picture)",
    };
    Picture smallFirst = Landscape(320, 180);
    Picture smallSecond = City(320, 180);
    Picture largeFirst = Landscape(640, 360);
    Picture largeSecond = City(640, 360);
    for (const EffectDescription& effect : AllEffects()) {
        if (IsPart(effect) || IsOfTheMoment(effect)) continue;
        if (kOfPixels.contains(effect.name)) continue;
        SCOPED_TRACE(effect.name);
        StagedEffect smallEffect(effect, 320, 180, kFrames);
        StagedEffect largeEffect(effect, 640, 360, kFrames);
        const Picture drawn = DrawSome(smallEffect, smallFirst, smallSecond);
        const Picture halved = Halved(DrawSome(largeEffect, largeFirst, largeSecond));
        // Letters cut out of a photo have hard borders.
        const double least = IsTitle(effect) ? 24.0 : 26.0;
        EXPECT_TRUE(LooksLike(halved, drawn, FileStem(effect, "size"), {least, 255, 1.0}));
    }
}

TEST(EveryEffect, OfSoundHearsIt) {
    Picture first = Landscape(kWidth, kHeight);
    int heard = 0;
    for (const EffectDescription& effect : AllEffects()) {
        if (!effect.WantsAudio()) continue;
        SCOPED_TRACE(effect.name);
        StagedEffect loud(effect, kWidth, kHeight, kFrames);
        StagedEffect quiet(effect, kWidth, kHeight, kFrames);
        StagedEffect deaf(effect, kWidth, kHeight, kFrames);
        Picture pictures[3];
        for (int64_t frame = 0; frame <= kLast; ++frame) {
            pictures[0] = loud.Draw(frame, first, first, LoudSound(frame));
            pictures[1] = quiet.Draw(frame, first, first, Silence());
            pictures[2] = deaf.Draw(frame, first, first);
        }
        EXPECT_LT(Compare(pictures[0], pictures[1]).psnr, 30.0) << "sound against silence";
        EXPECT_TRUE(Equals(pictures[1], pictures[2], 0, FileStem(effect, "silence")))
            << "no sound is silence";
        ++heard;
    }
    EXPECT_GE(heard, AtLeast(3));
}

}  // namespace
}  // namespace kelmo::test
