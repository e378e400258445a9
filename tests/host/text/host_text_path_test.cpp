// SPDX-License-Identifier: GPL-3.0-or-later
#include "host/text/host_text_path.h"

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <limits>

#include "host/session/host_error.h"

namespace kelmo::host::test {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;

constexpr const char* kSans = "/usr/share/fonts/truetype/dejavu/DejaVuSans.ttf";
constexpr const char* kNotoSans = "/usr/share/fonts/truetype/noto/NotoSans-Regular.ttf";
constexpr const char* kBitmapOnly = "/usr/share/fonts/truetype/noto/NotoColorEmoji.ttf";

/// The text of a font that is the same everywhere.
TextSettings Sans(const std::string& text, float size = 100) {
    TextSettings settings;
    settings.text = text;
    settings.fontFile = kSans;
    settings.families.clear();
    settings.size = size;
    return settings;
}

struct Extent {
    float left = std::numeric_limits<float>::max();
    float top = std::numeric_limits<float>::max();
    float right = std::numeric_limits<float>::lowest();
    float bottom = std::numeric_limits<float>::lowest();
    int32_t points = 0;

    void Add(const Extent& other) {
        left = std::min(left, other.left);
        top = std::min(top, other.top);
        right = std::max(right, other.right);
        bottom = std::max(bottom, other.bottom);
        points += other.points;
    }
};

Extent PathExtent(TextPath& text, int32_t index, bool layout = false) {
    const uint8_t* types = nullptr;
    const float* xs = nullptr;
    const float* ys = nullptr;
    const int32_t count = layout ? text.GetLayoutPath(index, &types, &xs, &ys, 0)
                                 : text.GetPath(index, &types, &xs, &ys, 0);
    Extent extent;
    for (int32_t i = 0; i < count; ++i) {
        extent.Add({xs[i], ys[i], xs[i], ys[i], 1});
    }
    return extent;
}

Extent WholeExtent(TextPath& text) {
    Extent extent;
    for (int32_t i = 0; i < text.GetPathCount(); ++i) {
        extent.Add(PathExtent(text, i));
    }
    return extent;
}

std::vector<float> Lefts(TextPath& text) {
    std::vector<float> lefts;
    for (int32_t i = 0; i < text.GetPathCount(); ++i) {
        lefts.push_back(PathExtent(text, i).left);
    }
    return lefts;
}

/// Shoelace sum of all points of a stream, control points included; above 0 is clockwise on screen.
double Winding(TextPath& text, int32_t index) {
    const uint8_t* types = nullptr;
    const float* xs = nullptr;
    const float* ys = nullptr;
    const int32_t count = text.GetPath(index, &types, &xs, &ys, 0);
    double sum = 0;
    for (int32_t i = 0, start = 0; i < count; ++i) {
        start = types[i] == kTextMoveTo ? i : start;
        const int32_t next = i + 1 < count && types[i + 1] != kTextMoveTo ? i + 1 : start;
        sum += double(xs[i]) * ys[next] - double(xs[next]) * ys[i];
    }
    return sum;
}

class HostText : public ::testing::Test {
protected:
    void SetUp() override {
        if (!std::filesystem::exists(kSans)) {
            GTEST_SKIP() << "needs the DejaVu fonts: " << kSans;
        }
    }
};

TEST_F(HostText, HasOnePathForEachCharacterInReadingOrder) {
    const auto text = HostTextPath::Create(Sans("A b\nC"));
    ASSERT_EQ(text->GetPathCount(), 4);
    EXPECT_EQ(PathExtent(*text, 1).points, 0) << "a space has no outline";
    EXPECT_LT(PathExtent(*text, 0).right, PathExtent(*text, 2).left + 1);
    EXPECT_GT(PathExtent(*text, 3).top, PathExtent(*text, 0).bottom) << "the second line";
    // A capital of this font is 0.729 em high.
    EXPECT_NEAR(PathExtent(*text, 0).bottom - PathExtent(*text, 0).top, 72.9, 0.2);
}

TEST_F(HostText, StreamsAreClosedContoursOfWholeSegments) {
    const auto text = HostTextPath::Create(Sans("&8O%"));
    for (int32_t i = 0; i < text->GetPathCount(); ++i) {
        const uint8_t* types = nullptr;
        const float* xs = nullptr;
        const float* ys = nullptr;
        const int32_t count = text->GetPath(i, &types, &xs, &ys, 0);
        ASSERT_GT(count, 10);
        EXPECT_EQ(types[0], kTextMoveTo);
        int32_t start = 0;
        int32_t contours = 0;
        for (int32_t k = 1; k <= count;) {
            if (k == count || types[k] == kTextMoveTo) {
                EXPECT_EQ(xs[k - 1], xs[start]);
                EXPECT_EQ(ys[k - 1], ys[start]);
                ++contours;
                start = k++;
                continue;
            }
            const int32_t used = types[k] == kTextCubicTo       ? 3
                                 : types[k] == kTextQuadraticTo ? 2
                                                                : 1;
            ASSERT_LE(k + used, count);
            for (int32_t point = 1; point < used; ++point) {
                EXPECT_EQ(types[k + point], types[k]);
            }
            k += used;
        }
        EXPECT_GE(contours, 2) << "all of these have holes";
    }
}

TEST_F(HostText, FillsTheCanvasThatItMakes) {
    const auto text = HostTextPath::Create(Sans("Hxg"));
    int32_t width = 0;
    int32_t height = 0;
    text->GetSize(&width, &height);
    const Extent extent = WholeExtent(*text);
    EXPECT_GE(extent.left, 0);
    EXPECT_GE(extent.top, 0);
    EXPECT_LE(extent.right, width);
    EXPECT_LE(extent.bottom, height);
    EXPECT_GT(extent.right - extent.left, 0.8f * width);
    float x = 0;
    float y = 0;
    text->GetOrigin(&x, &y);
    EXPECT_EQ(x, width * 0.5f);
    EXPECT_EQ(y, height * 0.5f);
}

TEST_F(HostText, StandsWhereItIsPutOnAGivenCanvas) {
    TextSettings settings = Sans("HH");
    settings.canvasWidth = 1000;
    settings.canvasHeight = 500;
    const auto middle = HostTextPath::Create(settings);
    const Extent before = WholeExtent(*middle);
    EXPECT_NEAR((before.left + before.right) / 2, 500, 2);
    settings.positionX = 0.25f;
    settings.positionY = 1;
    const auto moved = HostTextPath::Create(settings);
    const Extent after = WholeExtent(*moved);
    EXPECT_NEAR(after.left - before.left, -250, 0.01);
    EXPECT_NEAR(after.top - before.top, 250, 0.01);
    EXPECT_EQ(PathExtent(*moved, 0, true).left, PathExtent(*middle, 0, true).left)
        << "the layout knows nothing of the placement";
    EXPECT_NEAR(PathExtent(*moved, 1, true).left - PathExtent(*moved, 0, true).left,
                PathExtent(*moved, 1).left - PathExtent(*moved, 0).left, 0.01);
}

TEST_F(HostText, AlignsLines) {
    std::vector<float> lefts;
    for (const TextAlignment alignment :
         {TextAlignment::kLeft, TextAlignment::kCenter, TextAlignment::kRight}) {
        TextSettings settings = Sans("HHHHHH\nH");
        settings.alignment = alignment;
        const auto text = HostTextPath::Create(settings);
        EXPECT_NEAR(PathExtent(*text, 0).left, lefts.empty() ? PathExtent(*text, 0).left : lefts[0],
                    0.01);
        if (lefts.empty()) {
            lefts.push_back(PathExtent(*text, 0).left);
        }
        lefts.push_back(PathExtent(*text, 6).left);
    }
    const float pitch = 75.2f;  // the advance of H at 100 pixels
    EXPECT_NEAR(lefts[1], lefts[0], 0.01);
    EXPECT_NEAR(lefts[2], lefts[0] + 2.5f * pitch, 0.2);
    EXPECT_NEAR(lefts[3], lefts[0] + 5 * pitch, 0.2);
}

TEST_F(HostText, SpacesLettersAndLines) {
    TextSettings settings = Sans("HHH\nH");
    settings.alignment = TextAlignment::kLeft;
    const auto tight = HostTextPath::Create(settings);
    settings.letterSpacing = 10;
    settings.lineSpacing = 2;
    const auto wide = HostTextPath::Create(settings);
    EXPECT_NEAR(Lefts(*wide)[2] - Lefts(*wide)[0], Lefts(*tight)[2] - Lefts(*tight)[0] + 20, 0.01);
    const float tightLines = PathExtent(*tight, 3).top - PathExtent(*tight, 0).top;
    const float wideLines = PathExtent(*wide, 3).top - PathExtent(*wide, 0).top;
    EXPECT_NEAR(wideLines, 2 * tightLines, 0.01);
}

TEST_F(HostText, SetsRightToLeftTextInReadingOrder) {
    TextSettings settings = Sans("\u05d0\u05d1\u05d2");
    const std::vector<float> hebrew = Lefts(*HostTextPath::Create(settings));
    ASSERT_EQ(hebrew.size(), 3u);
    EXPECT_GT(hebrew[0], hebrew[1]);
    EXPECT_GT(hebrew[1], hebrew[2]);

    // Latin, Hebrew with digits inside, Latin: only the Hebrew part turns, digits keep their order.
    settings.text = "a \u05d0\u05d1 12 b";
    const std::vector<float> mixed = Lefts(*HostTextPath::Create(settings));
    ASSERT_EQ(mixed.size(), 9u);
    EXPECT_LT(mixed[0], mixed[5]) << "a, then 1";
    EXPECT_LT(mixed[5], mixed[6]) << "1, then 2";
    EXPECT_LT(mixed[6], mixed[3]) << "2, then the second Hebrew letter";
    EXPECT_LT(mixed[3], mixed[2]);
    EXPECT_LT(mixed[2], mixed[8]) << "then b";
}

TEST_F(HostText, JoinsArabicLettersAndKeepsThemJoinedWhenSpaced) {
    TextSettings settings = Sans("\u0628\u0628\u0628");  // initial, middle and final form
    const auto text = HostTextPath::Create(settings);
    ASSERT_EQ(text->GetPathCount(), 3);
    settings.text = "\u0628";
    const auto alone = HostTextPath::Create(settings);
    EXPECT_NE(PathExtent(*text, 0).points, 0);
    EXPECT_LT(PathExtent(*text, 0).right - PathExtent(*text, 0).left,
              0.7f * (PathExtent(*alone, 0).right - PathExtent(*alone, 0).left));
    settings = Sans("\u0628\u0628\u0628");
    settings.letterSpacing = 30;
    EXPECT_EQ(Lefts(*HostTextPath::Create(settings)), Lefts(*text));
}

TEST_F(HostText, AccentsMoveWithTheirLetter) {
    const auto text = HostTextPath::Create(Sans("e\u0301x"));
    ASSERT_EQ(text->GetPathCount(), 2);
    const auto plain = HostTextPath::Create(Sans("ex"));
    EXPECT_LT(PathExtent(*text, 0).top, PathExtent(*plain, 0).top - 10);
}

// One font of the two has the letter, the other the letter and the mark.
TEST_F(HostText, MarksComeFromAFontThatHasThemAndTheirLetter) {
    if (!std::filesystem::exists(kNotoSans)) {
        GTEST_SKIP() << "needs the Noto fonts: " << kNotoSans;
    }
    const FontCatalogue fonts({std::filesystem::path(kNotoSans).parent_path().string()});
    const FontCatalogue nothing({});
    const struct {
        const char* name;
        const char* text;
        int32_t paths;
        const char* warningAlone;  // of the first font without the others
    } cases[] = {
        {"a mark behind its letter", "ax\u0363", 2, "U+0078"},
        {"one more of the same letter, and one that the first font has", "x\u0363x\u0301", 2,
         "U+0078"},
        {"a mark at the start of a line", "\u0363a", 2, "U+0363"},
        {"a mark that the font has within a letter", "e\u0301", 1, ""},
        {"a selector of variants that no font needs to have", "a\ufe0f", 1, ""},
        {"a mark of direction at the start", "\u200f\u0363", 1, "U+0363"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        std::string warning;
        const auto warn = [&](const std::string& line) { warning = line; };
        TextSettings settings = Sans(c.text);
        HostTextPath::Create(settings, warn, nothing);
        EXPECT_THAT(warning, HasSubstr(c.warningAlone));
        EXPECT_EQ(warning.empty(), *c.warningAlone == '\0');
        warning.clear();
        const auto text = HostTextPath::Create(settings, warn, fonts);
        EXPECT_EQ(warning, "");
        EXPECT_EQ(text->GetPathCount(), c.paths);
        EXPECT_GT(WholeExtent(*text).points, 0);
    }
}

// A second look into hundreds of files for each character would take seconds.
TEST_F(HostText, WhatAFontCoversIsReadOnce) {
    namespace fs = std::filesystem;
    if (!fs::exists(kNotoSans)) {
        GTEST_SKIP() << "needs the Noto fonts: " << kNotoSans;
    }
    const fs::path folder = KELMO_TEST_OUTPUT_DIR "/fonts";
    fs::create_directories(folder);
    fs::copy_file(kSans, folder / "font.ttf", fs::copy_options::overwrite_existing);
    const FontCatalogue fonts({folder.string()});
    EXPECT_EQ(fonts.FindCovering({'x', 0x0363}, false), nullptr);
    EXPECT_NE(fonts.FindCovering({'x', 0x0301}, true), nullptr);
    fs::copy_file(kNotoSans, folder / "font.ttf", fs::copy_options::overwrite_existing);
    EXPECT_EQ(fonts.FindCovering({0x0363}, false), nullptr);
    EXPECT_NE(FontCatalogue({folder.string()}).FindCovering({0x0363}, false), nullptr);
}

TEST_F(HostText, FilledContoursRunClockwiseOnScreenInFontsOfBothKinds) {
    TextSettings settings = Sans("H\u6f22");
    settings.families = {"Noto Sans CJK SC", "Noto Sans CJK JP"};
    std::string warning;
    const auto text =
        HostTextPath::Create(settings, [&](const std::string& line) { warning = line; });
    EXPECT_GT(Winding(*text, 0), 0);
    if (!warning.empty()) {
        GTEST_SKIP() << "no font for Chinese is installed: " << warning;
    }
    ASSERT_EQ(text->GetPathCount(), 2);
    EXPECT_GT(Winding(*text, 1), 0);
    EXPECT_GT(PathExtent(*text, 1).points, 50);
}

TEST_F(HostText, LeavesOutWhatNoFontDrawsAndSaysSo) {
    const FontCatalogue nothing({});
    std::vector<std::string> warnings;
    const auto warn = [&](const std::string& line) { warnings.push_back(line); };
    const auto text = HostTextPath::Create(Sans("A\U0001F9FF\u6f22B"), warn, nothing);
    ASSERT_EQ(warnings.size(), 1u);
    EXPECT_THAT(warnings[0], HasSubstr("U+6F22, U+1F9FF"));
    EXPECT_EQ(text->GetPathCount(), 2);
    EXPECT_GT(PathExtent(*text, 1).points, 0);
    HostTextPath::Create(Sans("plain text"), warn, nothing);
    EXPECT_EQ(warnings.size(), 1u);
}

TEST_F(HostText, TakesTextOfAnyKind) {
    const FontCatalogue nothing({});
    const struct {
        const char* name;
        std::string text;
        int32_t paths;
    } cases[] = {
        {"none", "", 0},
        {"line ends alone", "\n\r\n\r\u2028", 0},
        {"broken UTF-8 shows as U+FFFD", "a\xff\xc3", 3},
        {"controls are nothing", std::string("a\x01\x7f\0b", 5), 2},
        {"a tab is four spaces", "a\tb", 6},
        {"an accent alone", "\u0301", 1},
        {"marks of direction", "\u200f\u202eab\u202c", 5},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        const auto text = HostTextPath::Create(Sans(c.text), nullptr, nothing);
        EXPECT_EQ(text->GetPathCount(), c.paths);
        for (int32_t i = -1; i <= text->GetPathCount(); ++i) {
            EXPECT_GE(PathExtent(*text, i).points, 0);
        }
    }
}

TEST_F(HostText, DecorationFollowsTheText) {
    TextSettings settings = Sans("Hg\nlong line");
    settings.canvasWidth = 900;
    settings.canvasHeight = 400;
    EXPECT_FALSE(HostTextPath::Create(settings)->HasDecoration());
    settings.boxColor = 0xff112233;
    settings.boxPadding = 20;
    settings.underlineColor = 0x80445566;
    const auto text = HostTextPath::Create(settings);
    ASSERT_TRUE(text->HasDecoration());
    float box[8];
    uint32_t color = 0;
    ASSERT_TRUE(text->GetBox(box, &color));
    EXPECT_EQ(color, 0xff112233u);
    const Extent extent = WholeExtent(*text);
    EXPECT_LT(box[0], extent.left - 15);
    EXPECT_LT(box[1], extent.top - 15);
    EXPECT_GT(box[4], extent.right + 15);
    EXPECT_GT(box[5], extent.bottom + 15);
    EXPECT_NEAR(box[0] + box[2], 900, 0.01) << "around the middle of the canvas";
    ASSERT_EQ(text->GetRectCount(), 2);
    EXPECT_EQ(text->GetRectColor(), 0x80445566u);
    float rect[8];
    text->GetRect(1, rect);
    EXPECT_LT(rect[1], rect[5]);
    EXPECT_GT(rect[2] - rect[0], 300);
    EXPECT_GT(rect[1], PathExtent(*text, 2).bottom) << "below the feet of the l";
    // Lines alone come with a box that shows nothing, or they would not be drawn.
    settings.boxColor.reset();
    const auto lines = HostTextPath::Create(settings);
    EXPECT_TRUE(lines->HasDecoration());
    ASSERT_TRUE(lines->GetBox(box, &color));
    EXPECT_EQ(box[0], box[4]);
    EXPECT_EQ(box[1], box[5]);
    EXPECT_EQ(lines->GetRectCount(), 2);
    settings.text = "\n";  // lines without width have no underline
    const auto plain = HostTextPath::Create(settings);
    EXPECT_FALSE(plain->HasDecoration());
    EXPECT_FALSE(plain->GetBox(box, &color));
}

TEST_F(HostText, CanvasHoldsTheTallestLine) {
    int32_t width = 0;
    int32_t high = 0;
    int32_t both = 0;
    HostTextPath::Create(Sans("H\u6f22"))->GetSize(&width, &high);
    TextSettings settings = Sans("H\u6f22\nH");
    settings.lineSpacing = 0;  // one over the other; the font of the first line is the taller one
    HostTextPath::Create(settings)->GetSize(&width, &both);
    EXPECT_GE(both, high);
}

TEST_F(HostText, ClonesAreTheSameTextAndOutliveIt) {
    const TextSettings settings = Sans("same");
    auto text = HostTextPath::Create(settings);
    std::shared_ptr<TextPath> clone;
    text->Clone(&clone);
    EXPECT_TRUE(text->IsSame(clone.get()));
    EXPECT_TRUE(HostTextPath::Create(settings)->IsSame(clone.get())) << "made anew";
    EXPECT_FALSE(text->IsSame(nullptr));
    for (auto change : std::initializer_list<void (*)(TextSettings&)>{
             [](TextSettings& s) { s.text = "sane"; }, [](TextSettings& s) { s.size = 101; },
             [](TextSettings& s) { s.angle = 5; }, [](TextSettings& s) { s.anchorX = 0.1f; },
             [](TextSettings& s) { s.boxColor = 1; }}) {
        TextSettings other = settings;
        change(other);
        EXPECT_FALSE(HostTextPath::Create(other)->IsSame(clone.get()));
    }
    text.reset();
    EXPECT_GT(PathExtent(*clone, 0).points, 0);
}

TEST_F(HostText, RefusesWhatItCannotSet) {
    const FontCatalogue nothing({});
    const auto message = [&](TextSettings settings) {
        try {
            HostTextPath::Create(settings, nullptr, nothing);
        } catch (const HostError& error) {
            return std::string(error.what());
        }
        return std::string();
    };
    TextSettings settings = Sans("x");
    settings.fontFile = "/no/such/font.ttf";
    EXPECT_THAT(message(settings), HasSubstr("/no/such/font.ttf"));
    settings.fontFile.clear();
    EXPECT_THAT(message(settings), HasSubstr("no outline font"));
    for (const float size : {0.0f, -1.0f, 1e6f, std::nanf("")}) {
        EXPECT_THAT(message(Sans("x", size)), HasSubstr("size"));
    }
    settings = Sans("x");
    settings.lineSpacing = -0.5f;
    EXPECT_THAT(message(settings), HasSubstr("line spacing"));
    settings = Sans("x");
    settings.angle = std::numeric_limits<float>::infinity();
    EXPECT_THAT(message(settings), HasSubstr("finite"));
    if (std::filesystem::exists(kBitmapOnly)) {
        settings = Sans("x");
        settings.fontFile = kBitmapOnly;
        EXPECT_THAT(message(settings), HasSubstr("NotoColorEmoji"));
    }
}

TEST(OutlineStream, ReverseKeepsSegmentsWhole) {
    Outline outline;
    outline.Add(kTextMoveTo, 0, 0);
    outline.Add(kTextMoveTo, 1, 1);
    outline.Add(kTextCubicTo, 2, 2);
    outline.Add(kTextCubicTo, 3, 3);
    outline.Add(kTextCubicTo, 4, 4);
    outline.Add(kTextLineTo, 5, 5);
    outline.Add(kTextMoveTo, 6, 6);
    outline.Add(kTextLineTo, 7, 7);
    outline.Reverse(1);
    EXPECT_THAT(outline.xs, ElementsAre(0, 5, 4, 3, 2, 1, 7, 6));
    EXPECT_EQ(outline.xs, outline.ys);
    EXPECT_THAT(outline.types, ElementsAre(kTextMoveTo, kTextMoveTo, kTextLineTo, kTextCubicTo,
                                           kTextCubicTo, kTextCubicTo, kTextMoveTo, kTextLineTo));
    outline.Truncate(2);
    EXPECT_THAT(outline.ys, ElementsAre(0, 5));
    EXPECT_EQ(outline.Size(), outline.xs.size());
}

}  // namespace
}  // namespace kelmo::host::test
