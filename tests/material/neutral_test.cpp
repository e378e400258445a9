// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <algorithm>
#include <set>

#include "tests/material/effect_stage.h"
#include "tests/material/picture_compare.h"
#include "tests/material/test_pictures.h"

namespace kelmo::test {
namespace {

constexpr const char* kStraightLine = R"([{"_time":0.0,"_value":0.0},{"_time":1.0,"_value":1.0}])";

std::string Straight(const char* knots) {
    return std::string(knots) + "=" + kStraightLine;
}

/// Values with which an effect does nothing.
struct NeutralCase {
    std::string effect;
    std::vector<std::string> values;
};

/// Of the filters that have no "amount"; or whose amount alone is not everything.
std::vector<NeutralCase> SpecialCases() {
    return {
        {"Gaussian Blur", {"radius=0"}},
        {"Mirror", {"mode=0", "position=1"}},
        {"Twirl", {"angle=0"}},
        {"3D Transform",
         {"rotate_x=0", "rotate_y=0", "rotate_z=0", "position_x=0", "position_y=0", "position_z=0",
          "scale=1"}},
        {"Background Blur", {"blur=0"}},
        {"Clones", {"opacity=0"}},
        {"Colour Blur",
         {"uEclosion=0", "uEnhance=0", "WholeBlurIntension=0", "RBlurIntension=0",
          "GBlurIntension=0", "BBlurIntension=0"}},
        {"Colour Grade",
         {"exposure=0", "contrast=1", "saturation=1", "temperature=0", "tint=0", "split=0"}},
        {"Corner Pin",
         {"left_upx=0", "left_upy=0", "right_upx=1", "right_upy=0", "left_downx=0", "left_downy=1",
          "right_downx=1", "right_downy=1"}},
        {"Cross Highlights", {"alpha=0"}},
        {"Face Magnifier", {"magnification=1", "rim=0"}},
        {"Flip Clock", {"General_opacity=0"}},
        {"Flip Countdown", {"General_opacity=0"}},
        {"Glow", {"intensity=0"}},
        {"Hallucination", {"filter=0"}},
        {"Heart Highlights", {"alpha=0"}},
        {"Hero Echo", {"opacity=0"}},
        {"Match Colour", {"strength=0"}},
        {"Match Colour", {"Enabled=0"}},
        {"Person Glitch", {"strength=0"}},
        {"Person Mosaic", {"size=0"}},
        {"Pulse", {"zoom=0", "flash=0", "split=0", "audio_min=1", "audio_max=1"}},
        {"RGB Curves",
         {Straight("rKnots"), Straight("gKnots"), Straight("bKnots"), Straight("yKnots")}},
        {"Retouch",
         {"smooth_strength=0", "whiten_strength=0", "bright_eye_ratio=0",
          "remove_dark_circles_ratio=0", "remove_nasolabial_folds_ratio=0", "white_teeth_ratio=0"}},
        {"Retro Dream", {"strength=0"}},
        {"Retro Film", {"strength=0"}},
        {"Retro Television", {"strength=0"}},
        {"Smart Denoise", {"strength=0"}},
        {"Soft Blur", {"uIterations=0"}},
        {"Star Highlights", {"alpha=0"}},
        {"Star Highlights (own picture)", {"alpha=0"}},
        {"Tilt Shift", {"blur=0", "saturation=1"}},
        {"Wave Warp", {"height=0", "cross_height=0"}},
        {"Delayed Copies", {"opacity=0"}},
    };
}

/// With an amount of 0 a filter does nothing.
std::vector<NeutralCase> NeutralCases() {
    std::vector<NeutralCase> cases = SpecialCases();
    std::set<std::string> special;
    for (const NeutralCase& c : cases) special.insert(c.effect);
    for (const EffectDescription& effect : AllEffects()) {
        if (IsTransition(effect) || IsPart(effect) || special.contains(effect.name)) continue;
        if (IsTitle(effect)) {  // letters that have come
            if (effect.Parameter("Intro"))
                cases.push_back({effect.name, {"Intro=0.01", "Outro=0"}});
        } else if (effect.Parameter("amount")) {
            cases.push_back({effect.name, {"amount=0"}});
        }
    }
    return cases;
}

std::string Stem(const char* test, const EffectDescription& effect) {
    return std::string(test) + "/" + FolderOf(effect).substr(FolderOf(effect).find('/') + 1);
}

Picture DrawThird(const EffectDescription& effect, Picture& first,
                  const std::vector<std::string>& values = {}) {
    StagedEffect staged(effect, first.width, first.height, 10, values);
    Picture drawn;
    for (int64_t frame = 0; frame < 3; ++frame) {
        drawn = staged.Draw(frame, first, first, LoudSound(frame));
    }
    return drawn;
}

TEST(NeutralValues, LeaveThePictureAsItIs) {
    Picture card = TestCard(96, 54);
    Picture noisy = NoisyLandscape(54, 96);
    for (const NeutralCase& c : NeutralCases()) {
        SCOPED_TRACE(c.effect);
        const EffectDescription& effect = EffectNamed(c.effect);
        EXPECT_TRUE(Equals(card, DrawThird(effect, card, c.values), 1, Stem("neutral", effect)));
        EXPECT_TRUE(Equals(noisy, DrawThird(effect, noisy, c.values), 1, Stem("neutral", effect)));
    }
}

/// Filters that have no such values, with the reason. Whoever adds a filter adds it to one of the
/// two lists.
TEST(NeutralValues, AreKnownForEveryFilterThatHasThem) {
    const std::set<std::string> kWithout = {
        "Fractal Noise",  // draws its own picture
        "Particle Cube",  // so does this
        "Kaleidoscope",   // folds the picture at any value
        "Pixelate",       // has a least size of the squares
        "Spectrum Bars",  // bars have a foot
        "Waveform Glow",  // the line is there without a swing
    };
    std::set<std::string> known = kWithout;
    for (const NeutralCase& c : NeutralCases()) known.insert(c.effect);
    for (const EffectDescription& effect : AllEffects()) {
        if (IsTransition(effect) || IsPart(effect) || IsTitle(effect)) continue;
        EXPECT_TRUE(known.contains(effect.name)) << effect.name;
    }
}

TEST(AClearPicture, StaysClearUnlessTheFilterDrawsItself) {
    const std::set<std::string> kDrawing = {
        "Fractal Noise",      // draws its own picture
        "Lens Flare",         // light
        "Spectrum Bars",      // bars
        "Cinema Bars",        // bars too
        "Photo Frame",        // a card on a table
        "Waveform Glow",      // a line
        "Background Colour",  // a wall
        "Magic Circle",
        "Star Flight",  // a sky
        "Night Sky",
        "Photo Cloud",  // cards
        "Snowfall",
        "Fireflies",
        "Particle Cube",
        "Progress Wave",
        "Burning Eyes",
        "Laser Eyes",
        "Light Echo",
        "Outline Shockwave",
        "Rainbow Wake",
        "Rising Spirits",
        "Flip Clock",
        "Flip Countdown",
        "Neon Outline",
        "Sticker Cutout",  // a poster
        "Body Lightning",
        "Forearm Lightning",
        "Body Scan Ring",
        "Electric Ring",
        "Rainbow Ring",
        "Sound Wave Ring",
        "Rising Lightning",
        "Teleport Ring",
        "Hand Lightning Crown",
        "Hand Lightning to the Ground",
        "Angel Halo Sticker",
        "Angel Wings Sticker",
        "Aura Afterimage",
        "Burning Silhouette",
        "Colour Flash Afterimage",
        "Flame Afterimage",
        "Glowing Afterimage",
        "Hologram Afterimage",
        "Neon Rings Afterimage",
        "Pixel Afterimage",
        "Pop Dots Afterimage",
        "Rainbow Afterimage",
        "Smoke Afterimage",
        "Two-Sided Afterimage",
        "Crown Sticker",
        "Pixel Sunglasses Sticker",
    };
    Picture clear = Clear(96, 54);
    for (const EffectDescription& effect : AllEffects()) {
        if (IsTransition(effect) || IsPart(effect)) continue;
        SCOPED_TRACE(effect.name);
        const Picture drawn = DrawThird(effect, clear);
        const std::string folder = FolderOf(effect);
        const bool ofPeople = folder.starts_with("edge_flow/") || folder.starts_with("afterimage/");
        if (IsTitle(effect) || ofPeople) continue;  // drawn where there is somebody
        const bool opens = effect.name.starts_with("Light Opening");  // out of a colour
        if (opens || kDrawing.contains(effect.name)) {
            EXPECT_FALSE(Equals(clear, drawn, 1, Stem("clear", effect)));
        } else {
            EXPECT_TRUE(Equals(clear, drawn, 0, Stem("clear", effect)));
        }
    }
}

}  // namespace
}  // namespace kelmo::test
