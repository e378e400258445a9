// SPDX-License-Identifier: GPL-3.0-or-later
// What the retouching moves, what it leaves alone, and that the caller's context stays as it was.
#include <epoxy/gl.h>
#include <gtest/gtest.h>

#include <cmath>
#include <opencv2/imgproc.hpp>

#include "beauty/retoucher.h"
#include "platform/gl_textures.h"
#include "tests/support/egl_test_context.h"

namespace kelmo::beauty {
namespace {

/// A face of an oval with its eyes, nose and mouth at their usual places, 100 pixels wide.
FaceSdkFace OvalFace(float x, float y) {
    FaceSdkFace face;
    const auto put = [&](int index, float px, float py) {
        face.landmarks[index] = {x + px, y + py};
    };
    const auto ring = [&](std::initializer_list<int> indices, float px, float py, float rx,
                          float ry) {
        float angle = 0.0F;
        for (const int index : indices) {
            put(index, px - rx * std::cos(angle), py - ry * std::sin(angle));
            angle += 6.2831853F / static_cast<float>(indices.size());
        }
    };
    for (int i = 0; i <= 32; ++i) {
        const float angle = 3.14159265F * static_cast<float>(i) / 32.0F;
        put(i, -50.0F * std::cos(angle), 70.0F * std::sin(angle) - 10.0F);
    }
    for (int i = 0; i < 5; ++i) {
        put(33 + i, -38.0F + 7.0F * static_cast<float>(i), -30.0F);
        put(38 + i, 10.0F + 7.0F * static_cast<float>(i), -30.0F);
        put(47 + i, -10.0F + 5.0F * static_cast<float>(i), 22.0F);
    }
    for (int i = 0; i < 4; ++i) {
        put(43 + i, 0.0F, -10.0F + 8.0F * static_cast<float>(i));
        put(64 + i, -36.0F + 7.0F * static_cast<float>(i), -27.0F);
        put(68 + i, 12.0F + 7.0F * static_cast<float>(i), -27.0F);
    }
    for (int i = 0; i < 6; ++i)
        put(78 + i, i % 2 == 0 ? -8.0F : 8.0F, 4.0F * static_cast<float>(i));
    ring({52, 53, 72, 54, 55, 56, 73, 57}, -23.0F, -12.0F, 9.0F, 4.0F);
    ring({58, 59, 75, 60, 61, 62, 76, 63}, 23.0F, -12.0F, 9.0F, 4.0F);
    for (const int pupil : {74, 104}) put(pupil, -23.0F, -12.0F);
    for (const int pupil : {77, 105}) put(pupil, 23.0F, -12.0F);
    ring({84, 85, 86, 87, 88, 89, 90, 91, 92, 93, 94, 95}, 0.0F, 36.0F, 18.0F, 8.0F);
    ring({96, 97, 98, 99, 100, 101, 102, 103}, 0.0F, 36.0F, 14.0F, 4.0F);
    return face;
}

TEST(FaceWarpTest, MovesWhatIsAskedFor) {
    const FaceSdkFace face = OvalFace(200.0F, 150.0F);
    const FaceSdkResult faces{&face, 1, 400, 300};
    const struct {
        Beauty type;
        float strength;
        int landmark;
        cv::Point2f direction;  // of its move
    } cases[] = {{kShrinkFace, 1.0F, 10, {1.0F, 0.0F}},    {kShrinkFace, 1.0F, 22, {-1.0F, 0.0F}},
                 {kNarrowFace, 1.0F, 6, {1.0F, 0.0F}},     {kShrinkJaw, 1.0F, 11, {1.0F, 0.0F}},
                 {kCheekbones, 1.0F, 5, {1.0F, 0.0F}},     {kFaceShape, 1.0F, 21, {-1.0F, 0.0F}},
                 {kChinLength, 1.0F, 16, {0.0F, 1.0F}},    {kChinLength, -1.0F, 16, {0.0F, -1.0F}},
                 {kEnlargeEyes, 1.0F, 52, {-1.0F, 0.0F}},  {kRoundEyes, 1.0F, 72, {0.0F, -1.0F}},
                 {kEyeDistance, 1.0F, 77, {1.0F, 0.0F}},   {kEyeAngle, 1.0F, 61, {0.0F, -1.0F}},
                 {kEyeAngle, 1.0F, 52, {0.0F, -1.0F}},     {kInnerCorners, 1.0F, 55, {1.0F, 0.0F}},
                 {kOuterCorners, 1.0F, 52, {-1.0F, 0.0F}}, {kNarrowNose, 1.0F, 78, {1.0F, 0.0F}},
                 {kNoseLength, 1.0F, 46, {0.0F, 1.0F}},    {kNoseBridge, 1.0F, 79, {-1.0F, 0.0F}},
                 {kMouthSize, -1.0F, 84, {1.0F, 0.0F}},    {kPhiltrum, 1.0F, 87, {0.0F, 1.0F}}};
    FaceWarp warp;
    for (const auto& c : cases) {
        Strengths strengths;
        strengths.Set(c.type, c.strength);
        cv::Point2f moves[kFaceSdkLandmarks];
        FaceWarp::Targets(face, strengths, moves);
        EXPECT_GT(moves[c.landmark].dot(c.direction), 0.5F) << c.type << " " << c.landmark;
        ASSERT_TRUE(warp.Make(faces, strengths));
        // The picture goes the same way, and stays beyond the surroundings of the face.
        const cv::Mat& field = warp.Field();
        const cv::Point2f place =
            cv::Point2f(face.landmarks[c.landmark].x, face.landmarks[c.landmark].y) +
            moves[c.landmark];
        const auto from = field.at<cv::Vec2f>(static_cast<int>(place.y / 300.0F * field.rows),
                                              static_cast<int>(place.x / 400.0F * field.cols));
        EXPECT_LT(from[0] * c.direction.x + from[1] * c.direction.y, 0.0F) << c.type;
        EXPECT_EQ(cv::norm(field.colRange(0, field.cols / 4), cv::NORM_INF), 0.0);
    }
    EXPECT_FALSE(warp.Make(faces, Strengths()));
}

TEST(RetouchTest, LeavesPixelsAloneThatNothingIsAskedOf) {
    const test::EglTestContext context;
    if (!context.IsValid()) GTEST_SKIP() << "no OpenGL here";
    cv::Mat picture(300, 400, CV_8UC4);
    cv::randu(picture, cv::Scalar(0, 0, 0, 255), cv::Scalar(255, 255, 255, 256));
    const FaceSdkFace face = OvalFace(200.0F, 150.0F);
    GLTextures textures(2);
    const auto stride = static_cast<int32_t>(picture.step);
    const FaceSdkTexture in{textures.Upload(0, picture.data, 400, 300, stride), 400, 300, 6};
    const FaceSdkTexture out{textures.Upload(1, nullptr, 400, 300, 0), 400, 300, 6};
    Retoucher retoucher;
    const struct {
        Beauty type;
        float strength;
        int32_t faces;
        bool changes;
        bool changesAll;
    } cases[] = {{kSmooth, 0.0F, 1, false, false}, {kSmooth, 1.0F, 0, false, false},
                 {kSmooth, 1.0F, 1, true, false},  {kChinLength, 1.0F, 1, true, false},
                 {kContrast, 1.0F, 0, true, true}, {kSharpen, NAN, 1, false, false}};
    for (const auto& c : cases) {
        retoucher.strengths = Strengths();
        retoucher.strengths.Set(c.type, c.strength);
        glViewport(1, 2, 3, 4);
        glEnable(GL_BLEND);
        ASSERT_TRUE(retoucher.Draw({&face, c.faces, 400, 300}, in, out));
        GLint viewport[4] = {};
        glGetIntegerv(GL_VIEWPORT, viewport);
        EXPECT_EQ(viewport[3], 4);
        EXPECT_TRUE(glIsEnabled(GL_BLEND));
        EXPECT_EQ(glGetError(), static_cast<GLenum>(GL_NO_ERROR));
        cv::Mat drawn(300, 400, CV_8UC4);
        glBindTexture(GL_TEXTURE_2D, static_cast<GLuint>(out.id));
        glGetTexImage(GL_TEXTURE_2D, 0, GL_BGRA, GL_UNSIGNED_BYTE, drawn.data);
        cv::flip(drawn, drawn, 0);
        EXPECT_EQ(cv::norm(picture, drawn, cv::NORM_INF) > 0.0, c.changes) << c.type;
        const cv::Rect corner(0, 0, 80, 60);
        EXPECT_EQ(cv::norm(picture(corner), drawn(corner), cv::NORM_INF) > 0.0, c.changesAll);
    }
    retoucher.Release();
    textures.Release();
}

}  // namespace
}  // namespace kelmo::beauty
