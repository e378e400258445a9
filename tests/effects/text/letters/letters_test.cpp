// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <limits>
#include <map>
#include <numeric>

#include "effects/text/letters/char_quads.h"
#include "effects/text/letters/letter_quads.h"
#include "effects/text/letters/text_array.h"
#include "host/text/host_text_path.h"
#include "tests/effects/support/material_effect.h"

namespace kelmo {
namespace {

/// Characters given point by point, in a canvas of the frame's size.
class PointText : public TextPath {
public:
    struct Char {
        std::vector<uint8_t> types;
        std::vector<float> xs, ys;
    };
    std::vector<Char> chars;
    std::vector<Char> layout;

    int32_t GetPathCount() override { return static_cast<int32_t>(chars.size()); }
    int32_t GetPath(int32_t i, const uint8_t** types, const float** xs, const float** ys,
                    int32_t) override {
        const Char& c = chars[static_cast<size_t>(i)];
        *types = c.types.data();
        *xs = c.xs.data();
        *ys = c.ys.data();
        return static_cast<int32_t>(c.types.size());
    }
    void GetAnchor(float* p, float* q) override { *p = *q = 0.25F; }
    void GetSize(int32_t* w, int32_t* h) override { *w = 200, *h = 100; }
    float GetAngle() override { return 0.0F; }
    bool HasDecoration() override { return false; }
    bool GetBox(float*, uint32_t*) override { return false; }
    void Clone(std::shared_ptr<TextPath>* out) override {
        *out = std::make_shared<PointText>(*this);
    }
    bool IsSame(TextPath*) override { return false; }
    int32_t GetLayoutPath(int32_t i, const uint8_t** types, const float** xs, const float** ys,
                          int32_t reserved) override {
        std::swap(chars, layout);
        const int32_t count = GetPath(i, types, xs, ys, reserved);
        std::swap(chars, layout);
        return count;
    }
    void GetOrigin(float* x, float* y) override { *x = *y = 0.0F; }
    int32_t GetRectCount() override { return 0; }
    uint32_t GetRectColor() override { return 0; }
    void GetRect(int32_t, float*) override {}
};

PointText::Char Square(float x, float y, float side) {
    return {{16, 20, 20, 20, 20}, {x, x + side, x + side, x, x}, {y, y, y + side, y + side, y}};
}

const cv::Size kFrame(200, 100);

TEST(CharOutlines, KeepWhatStandsInTheFrame) {
    PointText text;
    text.chars = {Square(40, 20, 20),
                  {},
                  Square(9000, 20, 20),
                  {{16}, {100}, {50}},
                  {{20, 25, 25, 24}, {90, 95, 99, 99}, {1, 2, 3, 4}}};
    text.chars.push_back({{16, 20}, {std::numeric_limits<float>::quiet_NaN(), 3}, {1, 2}});
    CharOutlines outlines;
    outlines.ReadCharOutlines(text, kFrame, {});
    ASSERT_EQ(outlines.Count(), 3U) << "the square, a point, a curve without beginning";
    ASSERT_EQ(outlines.CharPolylines()[0].size(), 1U);
    EXPECT_EQ(outlines.CharPolylines()[0][0].size(), 4U);
    EXPECT_NEAR(outlines.CharLengths()[0], 0.6F, 1e-5) << "in parts of the frame";
    EXPECT_EQ(outlines.CharPolylines()[0][0][0], cv::Point2f(0.3F, 0.8F));
    EXPECT_TRUE(outlines.CharPolylines()[1][0].empty());
    EXPECT_TRUE(outlines.CharPolylines()[2].empty());
    CharReading device;
    device.space = CharReading::Space::kDevice;
    text.chars.resize(1);
    outlines.ReadCharOutlines(text, kFrame, device);
    EXPECT_NEAR(outlines.CharEdges()[0][0][0].start.x, -0.6F, 1e-6);
    EXPECT_NEAR(outlines.Bound().x, 40, 1);
    EXPECT_NEAR(outlines.Bound().y, 20, 1);
}

TEST(CharOutlines, CurvesEndWhereTheyEndWhateverTheirSteps) {
    PointText text;
    text.chars = {{{16, 25, 25, 24, 24, 24}, {20, 60, 100, 120, 60, 20}, {50, 0, 50, 90, 90, 50}}};
    for (const float tolerance : {1.0F, 0.05F, 0.01F, 0.0F}) {
        CharOutlines outlines;
        CharReading reading;
        reading.tolerance = tolerance;
        outlines.ReadCharOutlines(text, kFrame, reading);
        const auto& line = outlines.CharPolylines()[0][0];
        EXPECT_LE(line.size(), 2U * CharOutlines::kMostSteps);
        EXPECT_LT(cv::norm(line.back() - cv::Point2f(0.1F, 0.5F)), 1e-5);
        if (tolerance == 0.01F) {
            const float top = std::max_element(line.begin(), line.end(), [](auto& a, auto& b) {
                                  return a.y < b.y;
                              })->y;
            EXPECT_NEAR(top, 0.75F, 0.002F) << "half way to the control point";
        }
    }
}

TEST(CharQuads, StandRoundTheirLettersWithTwoPixelsOfRoom) {
    PointText text;
    text.chars = {Square(40, 20, 20)};
    text.layout = {Square(0, 0, 10)};
    CharReading layout;
    layout.layout = true;
    CharOutlines outlines;
    outlines.ReadCharOutlines(text, kFrame, layout);
    const auto quads = BuildCharQuads(outlines, kFrame, outlines.Placement());
    ASSERT_EQ(quads.size(), 1U);
    EXPECT_LT(cv::norm(quads[0].center - cv::Point2f(-0.5F, 0.4F)), 1e-5) << "placed";
    float left = 200.0F, right = 0.0F;
    for (const auto& corner : quads[0].corners) {
        left = std::min(left, corner.x * 200);
        right = std::max(right, corner.x * 200);
    }
    EXPECT_NEAR(right - left, 2 * (10 + 4), 1e-3) << "twice as large as the layout";
    std::vector<float> none;
    FillCharVertices<4>({}, none, [](auto&...) { return std::array<float, 4>{}; });
    EXPECT_EQ(none.size(), 24U) << "room for a quad";
}

TEST(CharQuads, CornersAreNamedAsTheTextStands) {
    const std::array<cv::Point2f, 4> corners{{{0, 0}, {0, 1}, {1, 1}, {1, 0}}};
    for (std::size_t turn = 0; turn < 4; ++turn) {
        std::array<cv::Point2f, 4> turned;
        for (std::size_t k = 0; k < 4; ++k) turned[k] = corners[(k + turn) % 4];
        const UprightCorners upright = OrderCorners(turned, {0.5F, 0.5F}, 5.0F, 1.0F);
        EXPECT_EQ(upright.bottomLeft, corners[0]) << turn;
        EXPECT_EQ(upright.topRight, corners[2]) << turn;
    }
    EXPECT_EQ(OrderCorners(corners, {0.5F, 0.5F}, 90.0F, 1.0F).bottomLeft, corners[1]);
}

TEST(BlockLattice, NumbersWhatIsBright) {
    const struct {
        float pixelSize;
        int32_t block, gap;
    } sizes[] = {{30, 6, 2}, {5, 2, 1}, {25, 6, 2}, {-1, 2, 1}, {1e9F, 2000, 2}};
    cv::Mat picture(308, 548, CV_8UC4, cv::Scalar::all(0));
    BlockLattice lattice;
    for (const auto& c : sizes) {
        lattice.Find(picture, c.pixelSize);
        EXPECT_EQ(lattice.block, c.block);
        EXPECT_EQ(lattice.gap, c.gap);
        EXPECT_EQ(lattice.count, 0);
        EXPECT_TRUE(lattice.bound.empty());
    }
    picture(cv::Rect(80, 40, 240, 160)).setTo(cv::Scalar::all(200));
    lattice.Find(picture, 30);
    EXPECT_EQ(lattice.count, 30 * 20);
    EXPECT_EQ(lattice.bound, cv::Rect(80, 40, 238, 158));
    const auto code = [&](int x, int y) {
        const auto c = lattice.codes.at<cv::Vec4b>(y, x);
        return c[0] + c[1] + c[2] + c[3];
    };
    EXPECT_EQ(code(80, 40), 1);
    EXPECT_EQ(code(85, 197 - 5), 20) << "down the first column";
    EXPECT_EQ(code(86, 40), 0) << "a gap";
    EXPECT_EQ(code(80 + 8 * 13, 40), 261) << "beyond one byte";
}

std::shared_ptr<host::HostTextPath> Hi() {
    host::TextSettings settings;
    settings.text = "Hi!";
    settings.size = 60;
    settings.canvasWidth = 640;
    settings.canvasHeight = 360;
    return host::HostTextPath::Create(settings);
}

/// An effect that has its text, in a frame of 640 x 360.
struct Shown {
    explicit Shown(const char* guid) : effect(effects.Make(guid, 640, 360)) {
        own = effects.Engine().Effects().back().get();  // stages begin before their owner
        effect->SetParam("TextPath", kParamPointer, NLEParamValue::Pointer(text.get()));
    }
    void Set(const char* name, float value) {
        effect->SetParam(name, kParamFloat, NLEParamValue::Float(value));
    }
    int32_t Draw(int32_t position) {
        effect->SetPosition(position);
        FrameRecord target = FrameRecord::TargetLess(640, 360, 2560);
        return effect->DoEffect({}, test::RecordOf(clip), target, 640, 360, 2560);
    }
    test::MaterialEffects effects;
    std::shared_ptr<host::HostTextPath> text = Hi();
    cv::Mat clip = cv::Mat(360, 640, CV_8UC4, cv::Scalar::all(99));
    std::unique_ptr<NLEOpenGLFilter> effect;
    test::EffectRecord* own = nullptr;
};

TEST(SingleChar, LettersStandAloneOnlyWhileTheyMove) {
    Shown shown("BD7484D9-2F9B-4D9C-A6AE-080FF8AE6F8E");  // 4 seconds
    ASSERT_NE(shown.own, nullptr);
    const struct {
        float intro, outro;
        int32_t position, vertices;
    } cases[] = {{1, 0, 0, 18}, {1, 0, 24, 18}, {1, 0, 25, 6},  {0, 1, 10, 6},
                 {0, 1, 75, 6}, {0, 1, 76, 18}, {0, 9, 0, 6},   {0, 9, 1, 18},
                 {1, 1, 5, 6},  {1, 1, 90, 6},  {0, 0, 50, 18}, {1, 0, 99, 6}};
    for (const auto& c : cases) {
        shown.Set("Intro", c.intro);
        shown.Set("Outro", c.outro);
        ASSERT_EQ(shown.Draw(c.position), kFilterOk);
        EXPECT_EQ(shown.own->vertexCount, c.vertices)
            << c.intro << " " << c.outro << " " << c.position;
    }
    EXPECT_EQ(shown.own->UniformInt("charNums"), 3);
    const auto left = shown.own->Uniform("globalTextBLPoint");
    const auto right = shown.own->Uniform("globalTextTRPoint");
    EXPECT_LT(left[0], right[0]);
    EXPECT_LT(left[1], right[1]);
    shown.Set("Intro", 1);
    shown.Set("Outro", 0);
    shown.Draw(3);
    const auto centers = shown.own->AttributeValues("center");
    const auto bottoms = shown.own->AttributeValues("blrPnt");
    const auto tops = shown.own->AttributeValues("tlrPnt");
    for (std::size_t letter = 0; letter < 3; ++letter) {
        const std::size_t at = 4 * 6 * letter;
        EXPECT_EQ(centers[at + 2], static_cast<float>(letter));
        EXPECT_LT(bottoms[at], centers[at]);
        EXPECT_GT(bottoms[at + 2], centers[at]);
        EXPECT_LT(bottoms[at + 1], centers[at + 1]);
        EXPECT_GT(tops[at + 1], centers[at + 1]);
    }
}

TEST(SingleChar, BlursByItsTime) {
    const struct {
        const char* guid;
        float intro, outro;
        int32_t position, iterations;
        float alpha;
    } cases[] = {{"BD7484D9-2F9B-4D9C-A6AE-080FF8AE6F8E", 1, 0, 0, 4, 0},
                 {"BD7484D9-2F9B-4D9C-A6AE-080FF8AE6F8E", 1, 0, 15, 2, 0.6F},
                 {"65BE408A-EFD0-43A5-B86D-5692E0222B4B", 0, 1, 75, 0, 1},
                 {"65BE408A-EFD0-43A5-B86D-5692E0222B4B", 0, 1, 95, 3, 0.2F},
                 {"13880C53-02BE-4D47-A737-D9D4C57E8E47", 1, 0, 5, 1, 0.2F},
                 {"13880C53-02BE-4D47-A737-D9D4C57E8E47", 1, 0, 8, 0, 0.32F},
                 {"8B10B87A-AD01-4642-B6E4-9C76967D1EFD", 0, 1, 95, 2, 0.2F}};
    for (const auto& c : cases) {
        Shown shown(c.guid);
        shown.Set("Intro", c.intro);
        shown.Set("Outro", c.outro);
        ASSERT_EQ(shown.Draw(c.position), kFilterOk);
        const auto& blur = shown.effects.Engine().Effect(0);
        EXPECT_EQ(blur.UniformInt("uIterations"), c.iterations) << c.guid << " " << c.position;
        EXPECT_NEAR(shown.own->UniformFloat("dstAlpha"), c.alpha, 1e-3);
        EXPECT_EQ(blur.renderCount, std::max(2 * c.iterations, 1));
    }
}

TEST(SingleChar, RatioBlurShrinksThePictureWhileItIsAway) {
    Shown shown("C746C7DD-AE68-4476-9630-2C8EFFD2C10B");
    shown.Set("In_timeRatio", 0.4F);
    shown.Set("out_timeRatio", 0.6F);
    const struct {
        int32_t position, width;
        float dt;
    } cases[] = {{0, 1, 1}, {10, 256, 0.75F}, {50, 640, 0}, {60, 640, 0}, {80, 384, 0.5F}};
    for (const auto& c : cases) {
        ASSERT_EQ(shown.Draw(c.position), kFilterOk);
        EXPECT_EQ(shown.own->InputAt(0).width, c.width) << c.position;
        EXPECT_NEAR(shown.own->UniformFloat("dt"), c.dt, 1e-3);
    }
}

TEST(SingleChar, MotionBlurTakesItsSamplesRoundTheFrame) {
    const struct {
        float intro;
        int32_t count, position, renders;
        float length;
    } cases[] = {{1, 5, 3, 5, 2}, {1, 40, 3, 16, 2}, {1, 5, 0, 1, 2}, {1, 5, 3, 1, 0},
                 {0, 8, 3, 1, 2}, {0, 8, 8, 8, 2},   {1, 0, 3, 1, 2}};
    for (const auto& c : cases) {
        Shown shown("8CE351EA-04E6-41EE-BE75-373D7CE81EA3");
        shown.Set("Intro", c.intro);
        shown.Set("Outro", 0);
        shown.Set("motion_blur_length", c.length);
        shown.effect->SetParam("motion_blur_frame_count", kParamInt, NLEParamValue::Int(c.count));
        ASSERT_EQ(shown.Draw(c.position), kFilterOk);
        EXPECT_EQ(shown.own->renderCount, c.renders) << c.count << " at " << c.position;
        EXPECT_EQ(shown.effects.Engine().Effect(1).renderCount, c.renders > 1 ? 1 : 0);
        EXPECT_NEAR(shown.own->UniformFloat("global_time"), c.position / 25.0F, 1e-5);
    }
}

TEST(LetterQuads, AreKeptWhileTheTextStays) {
    Shown shown("26A97A4E-20A4-45F4-95BC-ECDE3F4A336E");
    ASSERT_EQ(shown.Draw(0), kFilterOk);
    ASSERT_EQ(shown.Draw(1), kFilterOk) << "without the object";
    EXPECT_EQ(shown.own->vertexCount, 18);
    EXPECT_EQ(shown.own->Uniform("iInputSize"), (std::vector<float>{640, 360}));
    const auto centers = shown.own->AttributeValues("center");
    const auto inPicture = shown.own->AttributeValues("texcoord_center");
    EXPECT_NEAR(inPicture[1], 0.5F - 0.5F * centers[1], 1e-6) << "downwards";
}

TEST(ShowChar, DissolvesTowardsTheMiddle) {
    Shown shown("3229721F-049E-489E-A4A4-7F100EFFE52F");
    const struct {
        int32_t position, width;
        float dt;
    } cases[] = {{0, 640, 1}, {25, 640, 0.875F}, {40, 384, 0.488F}, {50, 1, 0}, {75, 640, 0.875F}};
    for (const auto& c : cases) {
        ASSERT_EQ(shown.Draw(c.position), kFilterOk);
        EXPECT_NEAR(shown.own->UniformFloat("dt"), c.dt, 1e-3);
        EXPECT_EQ(shown.own->InputAt(0).width, c.width) << c.position;
    }
    EXPECT_EQ(shown.own->vertexCount, 18);
}

TEST(TextArray, LeavesADarkPictureAlone) {
    test::MaterialEffects effects;
    auto effect = effects.Make("2A03BBFE-64C1-484E-917C-35A6C6D47C88", 640, 360);
    cv::Mat clip(360, 640, CV_8UC4, cv::Scalar::all(0));
    EXPECT_EQ(test::DrawFrame(*effect, 0, test::RecordOf(clip)), kFilterFailed);
    clip(cv::Rect(100, 100, 200, 100)).setTo(cv::Scalar::all(255));
    FrameRecord target = FrameRecord::TargetLess(640, 360, 2560);
    EXPECT_EQ(effect->DoEffect({}, test::RecordOf(clip), target, 640, 360, 2560), kFilterOk);
    auto& own = effects.Engine().Effect(0);
    EXPECT_NEAR(own.UniformFloat("roiX"), 100 / 640.0, 0.02);
    EXPECT_NEAR(own.UniformFloat("roiHeight"), 100 / 360.0, 0.04);
    EXPECT_GT(own.UniformInt("blockTotalNum"), 100);
}

}  // namespace
}  // namespace kelmo
