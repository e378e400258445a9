// SPDX-License-Identifier: GPL-3.0-or-later
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>

#include "effects/transition/box_mesh.h"
#include "effects/transition/bubble_guids.h"
#include "effects/transition/clip_measure.h"
#include "effects/transition/moving_bubble.h"
#include "framework/shared/easing.h"
#include "framework/shared/matrix4.h"
#include "tests/effects/support/material_effect.h"

namespace kelmo {
namespace {

using test::DrawFrame;
using test::EffectRecord;

// --- curves and matrices
// --------------------------------------------------------------------------------

TEST(Easing, KeepsItsEndsAndNamedValues) {
    EXPECT_EQ(SmoothTime(0.0F), 0.0F);
    EXPECT_EQ(SmoothTime(0.5F), 0.5F);
    EXPECT_EQ(SmoothTime(1.0F), 1.0F);
    EXPECT_EQ(Bounce(0.0F), 0.0F);
    EXPECT_FLOAT_EQ(Bounce(1.0F), 1.0F);
    EXPECT_NEAR(Bounce(1.5F / 2.75F), 0.75F, 1e-6);
    EXPECT_NEAR(Bounce(0.99999F / 2.75F), 1.0F, 1e-4) << "touches the ground";
    EXPECT_FLOAT_EQ(BezierAt(0, 0, 1.92F, 1, 1.0F), 1.0F);
    EXPECT_GT(BezierAt(0, 0, 1.92F, 1, 0.85F), 1.0F) << "swings beyond";
}

std::array<float, 4> Apply(const Matrix4& m, const std::array<float, 4>& v) {
    std::array<float, 4> out{};
    for (int row = 0; row < 4; ++row) {
        for (int k = 0; k < 4; ++k) out[row] += m[k * 4 + row] * v[k];
    }
    return out;
}

TEST(Matrix4, MultipliesSoThatTheRightOneActsFirst) {
    const Matrix4 m = Multiply(Translation(1, 2, 3), ScaleY(10));
    EXPECT_EQ(Apply(m, {5, 5, 5, 1}), (std::array<float, 4>{6, 52, 8, 1}));
}

TEST(Matrix4, RotationsKeepLengthAndTurnAsNamed) {
    for (const auto& [rx, ry, rz] :
         {std::array{30.0F, 0.0F, 0.0F}, {0.0F, 50.0F, 0.0F}, {10.0F, 20.0F, 70.0F}}) {
        const auto v = Apply(Rotation(rx, ry, rz), {1, 2, 3, 1});
        EXPECT_NEAR(v[0] * v[0] + v[1] * v[1] + v[2] * v[2], 14.0F, 1e-4);
    }
    EXPECT_NEAR(Apply(Rotation(0, 90, 0), {1, 0, 0, 1})[2], 1.0F, 1e-6);
    EXPECT_NEAR(Apply(Rotation(0, 0, 90), {0, 1, 0, 1})[0], 1.0F, 1e-6);
    EXPECT_NEAR(Apply(EulerMatrix(0, 0, 90), {0, 0, 1, 1})[1], 1.0F, 1e-6);
    EXPECT_NEAR(Projection()[0], 2.4142134F, 1e-5);
    EXPECT_TRUE(std::signbit(Projection()[14]));
}

// --- boxes
// ----------------------------------------------------------------------------------------------

TEST(BoxMesh, FacesLieOnTheirNormalsAndShowTheirPictureUpright) {
    const struct {
        const char* name;
        const BoxMesh& mesh;
        int vertices;
    } cases[] = {{"cube", CubeMesh(), 36},
                 {"left half", HalfBoxMesh(BoxSplit::kLeftRight), 18},
                 {"top half", HalfBoxMesh(BoxSplit::kTopBottom), 18}};
    for (const auto& c : cases) {
        ASSERT_EQ(c.mesh.VertexCount(), c.vertices) << c.name;
        for (int i = 0; i < c.vertices; i += 3) {
            const float* p = &c.mesh.positions[i * 3];
            const float* n = &c.mesh.normals[i * 3];
            const float u[3] = {p[3] - p[0], p[4] - p[1], p[5] - p[2]};
            const float v[3] = {p[6] - p[0], p[7] - p[1], p[8] - p[2]};
            const float cross[3] = {u[1] * v[2] - u[2] * v[1], u[2] * v[0] - u[0] * v[2],
                                    u[0] * v[1] - u[1] * v[0]};
            const float length =
                std::sqrt(cross[0] * cross[0] + cross[1] * cross[1] + cross[2] * cross[2]);
            for (int k = 0; k < 3; ++k) {
                EXPECT_NEAR(std::abs(cross[k] / length), std::abs(n[k]), 1e-6)
                    << c.name << " " << i;
            }
        }
    }
}

class BoxTransitions : public ::testing::Test {
protected:
    Matrix4 MvpAt(NLEOpenGLFilter& effect, int32_t position) {
        EXPECT_EQ(DrawFrame(effect, position, first, first), kFilterOk);
        const auto values = effects.Engine().Effects().back()->Uniform("uMVP");
        Matrix4 m{};
        std::copy_n(values.begin(), 16, m.begin());
        return m;
    }
    /// Where the corner (1, 1) of the front face lands on the frame.
    static std::pair<float, float> Corner(const Matrix4& mvp, const std::array<float, 4>& at) {
        const auto p = Apply(mvp, at);
        return {p[0] / p[3], p[1] / p[3]};
    }

    test::MaterialEffects effects;
    cv::Mat clip = cv::Mat(36, 64, CV_8UC4, cv::Scalar(10, 20, 30, 255));
    FrameRecord first = test::RecordOf(clip);
};

TEST_F(BoxTransitions, StartWithTheFirstClipSquareToTheCameraAndEndOnASide) {
    const struct {
        const char* guid;
    } cases[] = {
        {"1746D500-2911-41ED-BE27-EA9579BB485F"}, {"7A8BA0FC-8579-40D3-8117-D0CB8F6012D2"},
        {"3D2FD42E-E235-465B-99AC-1613AD661E89"}, {"75E87EE4-EC9E-4398-BA61-0653057F144A"},
        {"B04A402D-5C04-4110-AEAD-2E3DBEC1FEFF"},
    };
    const float edge = 2.41421356F / 2.412F;
    for (const auto& c : cases) {
        const auto effect = effects.Make(c.guid);
        const auto start = Corner(MvpAt(*effect, 0), {1, 1, 1, 1});
        // Two of the cameras come from up to 1.5 exp(-5) further away.
        EXPECT_NEAR(start.first, edge, 5e-3) << c.guid;
        EXPECT_NEAR(start.second, edge, 5e-3) << c.guid;
        // At the end some face fills the frame again: its corners are corners of the cube.
        const Matrix4 end = MvpAt(*effect, 100);
        int filled = 0;
        for (int k = 0; k < 8; ++k) {
            const std::array<float, 4> corner = {k & 1 ? 1.0F : -1.0F, k & 2 ? 1.0F : -1.0F,
                                                 k & 4 ? 1.0F : -1.0F, 1.0F};
            const auto p = Corner(end, corner);
            filled += std::abs(std::abs(p.first) - edge) < 5e-3 &&
                      std::abs(std::abs(p.second) - edge) < 5e-3;
        }
        EXPECT_EQ(filled, 4) << c.guid;
        EXPECT_EQ(MvpAt(*effect, 150), end) << "past the end it stays";
    }
}

TEST_F(BoxTransitions, HandTheMeshOverWithDepthAndBlackBehind) {
    const auto effect = effects.Make("1746D500-2911-41ED-BE27-EA9579BB485F");
    MvpAt(*effect, 30);
    const EffectRecord& r = effects.Engine().Effect(0);
    EXPECT_EQ(r.vertexCount, 36);
    EXPECT_EQ(r.blendMode, kBlendReplace);
    EXPECT_TRUE(r.depthTest && r.depthWrite);
    EXPECT_EQ(r.clearColor, (std::vector<float>{0, 0, 0, 1}));
    EXPECT_EQ(r.AttributeValues("texcoord").size(), 72U);
    EXPECT_EQ(r.UniformFloat("iFrame"), 30.0F);
}

TEST_F(BoxTransitions, OfTwoBoxesOpenOrClose) {
    const struct {
        const char* guid;
        float start;
        float end;
        bool upright;
    } cases[] = {
        {"7670F4D7-B202-4420-BBC5-1149491EB811", 0.0F, 1.0F, true},
        {"EBC160A4-C522-4DEE-8FF2-24596EFF5CDA", 1.0F, 0.0F, true},
        {"7CFE9C6C-03FE-45D2-92FD-0598CF965DE1", 0.0F, 1.0F, false},
        {"1C7CC9AD-ACD1-4D08-9A39-82682F5BE775", 1.0F, 0.0F, false},
    };
    for (const auto& c : cases) {
        const auto effect = effects.Make(c.guid);
        const EffectRecord& r = *effects.Engine().Effects().back();
        for (const auto& [position, value] : {std::pair{0, c.start}, {100, c.end}, {140, c.end}}) {
            ASSERT_EQ(DrawFrame(*effect, position, first, first), kFilterOk);
            EXPECT_NEAR(r.UniformFloat("uProcessTime"), value, 1e-5) << c.guid;
            const auto rotate = r.Array("uBoxRotateData");
            const int axis = c.upright ? 1 : 0;
            EXPECT_NEAR(rotate[axis], 90.0F * value, 1e-3) << c.guid;
            EXPECT_NEAR(rotate[4 + axis], -90.0F * value, 1e-3) << c.guid;
            EXPECT_NEAR(r.Array("uBoxMoveData")[2], 1.0F - value - 3.412F, 1e-5) << c.guid;
        }
        EXPECT_EQ(r.instanceCount, 2);
        EXPECT_EQ(r.vertexCount, 18);
    }
}

// --- bubbles
// --------------------------------------------------------------------------------------------

TEST(Bubbles, HaveTheNamedValuesWhereTheHashIsZero) {
    EXPECT_EQ(BubbleHash(0.0F), 0.0);
    const BubbleSwarm swarm = MakeBubbles();
    ASSERT_EQ(swarm.VertexCount(), 80 * 6);
    EXPECT_THAT(std::vector<float>(swarm.positions.begin(), swarm.positions.begin() + 4),
                ::testing::Pointwise(::testing::FloatNear(1e-6F), {-1.0F, -0.1F, 0.0F, 1.0F}));
    EXPECT_THAT(std::vector<float>(swarm.attributes.begin(), swarm.attributes.begin() + 4),
                ::testing::Pointwise(::testing::FloatNear(1e-6F), {0.2F, 0.2F, -0.25F, -1.0F}));
    const BubbleSwarm fine = MakeFineBubbles();
    ASSERT_EQ(fine.VertexCount(), 160 * 6);
    const std::size_t second = 80 * 6;
    EXPECT_EQ(fine.texcoords[second * 3 + 2], 80.0F);
    EXPECT_EQ(fine.positions[second * 4], -1.0F);
    EXPECT_NEAR(fine.attributes[second * 4 + 1], 0.05263158F * 0.019F, 1e-8);
}

TEST(Bubbles, AreTheSameForAnyNumberOfThreads) {
    const int threads = cv::getNumThreads();
    cv::setNumThreads(1);
    const BubbleSwarm one = MakeFineBubbles();
    cv::setNumThreads(8);
    const BubbleSwarm many = MakeFineBubbles();
    cv::setNumThreads(threads);
    EXPECT_EQ(one.positions, many.positions);
    EXPECT_EQ(one.attributes, many.attributes);
}

TEST_F(BoxTransitions, WithBubblesBindTheSwarmBehindTheClips) {
    const struct {
        const char* guid;
        const char* mask;
        int32_t vertices;
    } cases[] = {{kBubbleTransitionGuid, "bubble_mask.", 480},
                 {kFineBubbleTransitionGuid, "bubble_mask.", 960}};
    for (const auto& c : cases) {
        effects.Engine().ClearCalls();
        const std::size_t before = effects.Engine().Effects().size();
        const auto effect = effects.Make(c.guid);
        ASSERT_EQ(DrawFrame(*effect, 40, first, first), kFilterOk);
        const EffectRecord& mask = effects.Engine().Effect(before);
        const EffectRecord& picture = effects.Engine().Effect(before + 1);
        EXPECT_EQ(mask.vertexCount, c.vertices);
        EXPECT_EQ(mask.blendMode, kBlendAdd);
        EXPECT_EQ(mask.UniformFloat("global_time"), 1.6F);
        EXPECT_EQ(picture.InputAt(2).kind, EffectRecord::Input::kTexture);
        EXPECT_GT(effects.Engine().DrawnBy(picture.InputAt(2).texture), 0);
    }
}

// --- measured clips
// ---------------------------------------------------------------------------------------

cv::Mat Gray(int rows, int cols, int level) {
    return {rows, cols, CV_8UC4, cv::Scalar(level, level, level, 255)};
}

TEST(ClipMeasure, GrayRangeLeavesOutFivePercentAtEachEnd) {
    cv::Mat gray;
    GrayRange range;
    cv::Mat ramp(10, 256, CV_8UC4);
    for (int x = 0; x < 256; ++x) ramp.col(x).setTo(cv::Scalar(x, x, x, 255));
    ASSERT_TRUE(MeasureGrayRange(ramp, gray, range));
    EXPECT_NEAR(range.low * 255.0F, 0.05F * 255, 1.5F);
    EXPECT_NEAR(range.high * 255.0F, 0.95F * 255, 1.5F);
    ASSERT_TRUE(MeasureGrayRange(Gray(8, 8, 77), gray, range));
    EXPECT_EQ(range.low, range.high) << "one level";
    const GrayRange before = range;
    EXPECT_FALSE(MeasureGrayRange(Gray(8, 8, 0), gray, range)) << "black";
    EXPECT_FALSE(MeasureGrayRange(cv::Mat(), gray, range));
    EXPECT_EQ(range.low, before.low);
}

TEST(ClipMeasure, OpaqueBandHasTheLastOpeningAndTheFirstClosingEdge) {
    const struct {
        const char* name;
        std::string row;  // '#' opaque, '.' transparent
        int left;
        int right;
    } cases[] = {
        {"opaque throughout", "##########", 0, 9},
        {"transparent throughout", "..........", 0, 9},
        {"a band", "..#####...", 2, 6},
        {"a single pixel is no opening", "..#...####", 6, 9},
        {"two pixels wide", "#", 0, 0},
    };
    for (const auto& c : cases) {
        const int width = static_cast<int>(c.row.size());
        cv::Mat picture = cv::Mat::zeros(3, width, CV_8UC4);
        for (int x = 0; x < width; ++x) {
            if (c.row[x] == '#') picture.at<cv::Vec4b>(1, x) = {9, 9, 9, 255};
        }
        const OpaqueBand band = MeasureOpaqueBand(picture, width);
        EXPECT_EQ(band.left, c.left) << c.name;
        EXPECT_EQ(band.right, c.right) << c.name;
    }
}

TEST_F(BoxTransitions, ThatMeasureLookAtTheClipThatIsOn) {
    cv::Mat dim = Gray(36, 64, 51);
    cv::Mat bright = Gray(36, 64, 204);
    const FrameRecord a = test::RecordOf(dim);
    const FrameRecord b = test::RecordOf(bright);
    const struct {
        const char* guid;
        int32_t position;
        float low;
    } cases[] = {
        {"A0E5D13F-BB74-4BF6-8CBD-06BEE7B7D0CD", 50, 0.2F},
        {"A0E5D13F-BB74-4BF6-8CBD-06BEE7B7D0CD", 51, 0.8F},
        {"BF8C1132-B7E8-4279-90A9-0A45FB8E5573", 90, 0.2F},
    };
    for (const auto& c : cases) {
        const auto effect = effects.Make(c.guid);
        EXPECT_TRUE(effect->NeedsCpuFrame());
        ASSERT_EQ(DrawFrame(*effect, c.position, a, b), kFilterOk);
        EXPECT_NEAR(effects.Engine().Effects().back()->UniformFloat("minGray"), c.low, 1e-5);
    }
    const auto twill = effects.Make("348A2924-3423-4F00-A56E-E8154FAC95C5");
    cv::Mat band = cv::Mat::zeros(36, 64, CV_8UC4);
    band(cv::Rect(16, 0, 32, 36)).setTo(cv::Scalar(9, 9, 9, 255));
    ASSERT_EQ(DrawFrame(*twill, 50, a, test::RecordOf(band)), kFilterOk);
    EXPECT_FLOAT_EQ(effects.Engine().Effects().back()->UniformFloat("edgeLeft"), 0.25F);
    EXPECT_FLOAT_EQ(effects.Engine().Effects().back()->UniformFloat("edgeRight"), 47.0F / 64.0F);
}

TEST_F(BoxTransitions, ThatFillWithAWaveKnowWhereThePictureIs) {
    const auto effect = effects.Make("1B2C80A3-80A6-42A5-9642-3D67939F0664");
    cv::Mat framed = cv::Mat::zeros(40, 80, CV_8UC4);
    framed(cv::Rect(20, 10, 40, 20)).setTo(cv::Scalar(90, 90, 90, 255));
    ASSERT_EQ(DrawFrame(*effect, 10, test::RecordOf(framed), first), kFilterOk);
    const EffectRecord& r = effects.Engine().Effect(0);
    EXPECT_EQ(r.Uniform("orig_roi"), (std::vector<float>{0.25F, 0.25F, 0.5F, 0.5F}));
    cv::Mat black = cv::Mat::zeros(40, 80, CV_8UC4);
    ASSERT_EQ(DrawFrame(*effect, 11, test::RecordOf(black), first), kFilterOk);
    EXPECT_EQ(r.Uniform("orig_roi"), (std::vector<float>{0, 0, 0, 0}));
}

}  // namespace
}  // namespace kelmo
