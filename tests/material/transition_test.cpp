// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <set>

#include "tests/material/effect_stage.h"
#include "tests/material/picture_compare.h"
#include "tests/material/test_pictures.h"

namespace kelmo::test {
namespace {

constexpr int64_t kFrames = 24;

/// Draws all frames up to that one, as a host does: some transitions measure the clips on the way.
Picture DrawAt(const EffectDescription& effect, int64_t last, Picture& first, Picture& second) {
    StagedEffect staged(effect, first.width, first.height, kFrames);
    Picture drawn;
    for (int64_t frame = 0; frame <= last; ++frame) drawn = staged.Draw(frame, first, second);
    return drawn;
}

std::string Stem(const EffectDescription& effect) {
    return "transition/" + FolderOf(effect).substr(FolderOf(effect).find('/') + 1);
}

/// Exactly, rounding apart: also those whose camera looks at a box, which stands so that a face
/// fills the frame.
TEST(EveryTransition, BeginsWithTheFirstClipAndEndsWithTheSecond) {
    Picture first = Landscape(96, 54);
    Picture second = City(96, 54);
    int tried = 0;
    for (const EffectDescription& effect : AllEffects()) {
        if (!IsTransition(effect) || IsPart(effect)) continue;
        SCOPED_TRACE(effect.name);
        EXPECT_TRUE(Equals(first, DrawAt(effect, 0, first, second), 1, Stem(effect) + "-begin"));
        EXPECT_TRUE(
            Equals(second, DrawAt(effect, kFrames, first, second), 1, Stem(effect) + "-end"));
        ++tried;
    }
    EXPECT_GE(tried, AtLeast(20));
}

TEST(EveryTransition, ShowsNeitherClipNorNothingInTheMiddle) {
    Picture first = Landscape(96, 54);
    Picture second = City(96, 54);
    for (const EffectDescription& effect : AllEffects()) {
        if (!IsTransition(effect) || IsPart(effect)) continue;
        SCOPED_TRACE(effect.name);
        // One colour in the middle is what a dip is for.
        const int64_t middle = effect.name == "Dip to Colour" ? kFrames / 4 : kFrames / 2;
        const Picture drawn = DrawAt(effect, middle, first, second);
        EXPECT_LT(Compare(first, drawn).psnr, 35.0) << "like the first clip";
        EXPECT_LT(Compare(second, drawn).psnr, 35.0) << "like the second clip";
        EXPECT_FALSE(IsFlat(drawn, 12));
    }
}

/// A transition works from its beginning to its end: nobody wants to wait for one that was to last
/// a second and takes half of it.
TEST(EveryTransition, HasNoDeadTime) {
    constexpr int64_t kLong = 100;
    const std::set<std::string> kOtherwise = {
        "Luminance Melt",                           // goes by the brightness of the clip
        "Moving Bubbles", "Moving Bubbles (fine)",  // the first bubbles rise from below the frame
        "Doors Open",     "Shutters Open",
        "Shutters Close",  // the camera comes to rest gently
    };
    Picture first = NoisyLandscape(96, 54);
    Picture second = City(96, 54);
    for (const EffectDescription& effect : AllEffects()) {
        if (!IsTransition(effect) || IsPart(effect) || kOtherwise.contains(effect.name)) continue;
        SCOPED_TRACE(effect.name);
        StagedEffect staged(effect, first.width, first.height, kLong);
        Picture drawn = staged.Draw(0, first, second);
        for (const int64_t frame : {10, 25, 40, 60, 75, 90, 100}) {
            const Picture next = staged.Draw(frame, first, second);
            EXPECT_GT(Compare(drawn, next, 2).share, 0.0005)
                << "nothing happens up to " << frame << " %";
            drawn = next;
        }
    }
}

}  // namespace
}  // namespace kelmo::test
