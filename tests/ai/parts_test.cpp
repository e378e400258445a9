// SPDX-License-Identifier: GPL-3.0-or-later
// Parts of the library that need no network.
#include <gmock/gmock.h>

#include <opencv2/imgproc.hpp>
#include <random>

#include "ai/detect/anchor_detector.h"
#include "ai/face/face_layout.h"
#include "ai/face/head_angles.h"
#include "ai/mask/coverage_writer.h"
#include "ai/mask/mask_edge.h"
#include "ai/picture/one_euro.h"
#include "ai/picture/picture_change.h"
#include "ai/runtime/flex_map.h"

namespace kelmo {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

/// {"a": 5, "f": 1.5 (float), "l": [3, 300] (list of 16-bit numbers)}, written by hand: keys, list,
/// vector of keys, the map's values and their types, the root.
std::vector<uint8_t> SampleMap() {
    return {'a',        0,                              // 0
            'f',        0,                              // 2
            'l',        0,                              // 4
            2,          0,                              // 6: list: count
            3,          0,          0x2c,        1,     // 8: 3, 300
            3,          0,          0,           0,     // 12: keys: count, 4 bytes wide
            16,         0,          0,           0,     // 16: back to 0
            18,         0,          0,           0,     // 20: back to 2
            20,         0,          0,           0,     // 24: back to 4
            12,         0,          0,           0,     // 28: keys are 12 back, at 16
            4,          0,          0,           0,     // 32: width of the keys
            3,          0,          0,           0,     // 36: count
            5,          0,          0,           0,     // 40: a
            0,          0,          0xc0,        0x3f,  // 44: f = 1.5
            40,         0,          0,           0,     // 48: l is 40 back, at 8
            1 << 2 | 2, 3 << 2 | 2, 11 << 2 | 1,        // 52: types: int, float, list of int16
            15,                                         // 55: the map is 15 back, at 40
            9 << 2 | 2, 1};
}

TEST(FlexMap, ReadsNumbersAndLists) {
    const auto bytes = SampleMap();
    const FlexMap map(bytes.data(), bytes.size());
    EXPECT_EQ(map.Number("a"), 5);
    EXPECT_EQ(map.Number("f"), 1.5);
    EXPECT_THAT(map.Integers("l"), ElementsAre(3, 300));
    EXPECT_EQ(map.Number("l"), std::nullopt);
    EXPECT_EQ(map.Integer("f"), 1);
    auto huge = bytes;
    huge[47] = 0x7f;  // f is 2^127 now
    EXPECT_EQ(FlexMap(huge.data(), huge.size()).Integer("f"), std::nullopt);
    EXPECT_THAT(map.Integers("a"), IsEmpty());
    EXPECT_EQ(map.Number("absent"), std::nullopt);
    EXPECT_EQ(map.Number(""), std::nullopt);
}

TEST(FlexMap, NeverReadsOutsideDamagedBytes) {
    const auto whole = SampleMap();
    const auto readAll = [](const std::vector<uint8_t>& bytes) {
        const FlexMap map(bytes.data(), bytes.size());
        for (const char* key : {"a", "f", "l"}) {
            map.Number(key);
            map.Integers(key);
        }
    };
    for (size_t size = 0; size < whole.size(); ++size)
        readAll({whole.begin() + ptrdiff_t(size), whole.end()});
    for (size_t i = 0; i < whole.size(); ++i)
        for (int value = 0; value < 256; ++value) {
            auto damaged = whole;
            damaged[i] = uint8_t(value);
            readAll(damaged);
        }
    FlexMap(nullptr, 0).Number("a");
}

/// Against scaling every pixel and looking each up; the writer is the same object all the time.
TEST(CoverageWriter, GivesWhatScalingTheWholeMaskGives) {
    cv::Mat mask(144, 256, CV_8U, cv::Scalar(0));
    cv::circle(mask, {100, 70}, 50, 255, -1, cv::LINE_AA);
    cv::rectangle(mask, {180, 20}, {255, 143}, 255, -1);
    cv::GaussianBlur(mask, mask, {5, 5}, 0);
    cv::line(mask, {0, 0}, {20, 143}, 90, 1);
    const auto firm = [](float p) { return std::clamp((p - 0.2f) / 0.6f, 0.0f, 1.0f); };
    const CoverageCurve curves[] = {CoverageCurve([](float p) { return p; }), CoverageCurve(firm)};
    CoverageWriter writer;
    for (const cv::Size size : {cv::Size(1280, 720), cv::Size(256, 144), cv::Size(720, 1280),
                                cv::Size(301, 77), cv::Size(31, 17), cv::Size(1, 1)}) {
        for (const cv::Mat& source :
             {mask, cv::Mat(mask.row(70)), cv::Mat(mask.col(100).clone())}) {
            cv::Mat scaled;
            cv::resize(source, scaled, size, 0, 0, cv::INTER_LINEAR);
            for (const CoverageCurve& curve : curves) {
                cv::Mat whole(size.height, size.width + 3, CV_8UC4, cv::Scalar::all(77));
                cv::Mat drawn = whole.colRange(0, size.width);
                writer.Write(source, curve, drawn);
                int worst = 0;
                for (int y = 0; y < size.height; ++y)
                    for (int x = 0; x < size.width; ++x) {
                        const int wanted = curve.Pixel(scaled.at<uint8_t>(y, x)) & 255;
                        for (int c = 0; c < 4; ++c)
                            worst =
                                std::max(worst, std::abs(drawn.at<cv::Vec4b>(y, x)[c] - wanted));
                    }
                EXPECT_LE(worst, 4) << size << " of " << source.size();
                EXPECT_EQ(cv::norm(whole.colRange(size.width, size.width + 3),
                                   cv::Mat(size.height, 3, CV_8UC4, cv::Scalar::all(77))),
                          0)
                    << "beyond the row";
            }
        }
    }
}

TEST(MaskEdge, MovesTheEdgeByItsThickness) {
    const float radius = 200;
    for (float thickness : {-80.0f, -20.0f, -5.0f, 5.0f, 20.0f, 80.0f}) {
        cv::Mat mask(1080, 1080, CV_8U, cv::Scalar(0));
        cv::circle(mask, {540, 540}, int(radius), 255, -1);
        ApplyMaskEdge({thickness, 0.0f}, mask.size(), mask);
        const double found = std::sqrt(cv::sum(mask)[0] / 255 / CV_PI);
        EXPECT_NEAR(found, radius + thickness, 1.5 + 0.03 * std::abs(thickness)) << thickness;
    }
}

TEST(MaskEdge, FeathersRoundTheEdgeWhateverTheSizeOfTheMask) {
    for (int side : {270, 540, 1080}) {
        cv::Mat mask(side, side, CV_8U, cv::Scalar(0));
        mask.colRange(0, side / 2).setTo(255);
        ApplyMaskEdge({0.0f, 80.0f}, {1080, 1080}, mask);
        const auto at = [&](double fraction) {
            return mask.at<uint8_t>(side / 2, int(side * fraction)) / 255.0;
        };
        EXPECT_EQ(at(0.5 - 41.0 / 1080 - 1.0 / side), 1) << side;
        EXPECT_NEAR(at(0.5 - 20.0 / 1080), 0.75, 0.06) << side;
        EXPECT_NEAR(at(0.5 + 20.0 / 1080), 0.25, 0.06) << side;
        EXPECT_EQ(at(0.5 + 41.0 / 1080 + 1.0 / side), 0) << side;
    }
}

TEST(MaskEdge, LeavesMasksWithoutEdgeAndTakesOddNumbers) {
    for (int value : {0, 255}) {
        cv::Mat mask(30, 40, CV_8U, cv::Scalar(value));
        ApplyMaskEdge({100.0f, 100.0f}, mask.size(), mask);
        EXPECT_EQ(cv::countNonZero(mask != value), 0);
    }
    const MaskEdge odd = MaskEdge{NAN, INFINITY}.Clamped();
    EXPECT_TRUE(odd.IsNeutral());
    EXPECT_EQ((MaskEdge{-1e9f, -3.0f}.Clamped().thickness), -200.0f);
    EXPECT_EQ((MaskEdge{-1e9f, -3.0f}.Clamped().feather), 0.0f);
}

TEST(OneEuro, CalmsNoiseAndFollowsMotion) {
    std::mt19937 random(1);
    std::normal_distribution<float> noise(0.0f, 0.002f);
    OneEuro filter;
    float raw = 0, calm = 0, last = 0, lastRaw = 0;
    for (int i = 0; i < 200; ++i) {
        float value = 5 + noise(random);
        const float before = value;
        filter.Apply({&value, 1}, 1.0f);
        if (i > 10) raw += std::abs(before - lastRaw), calm += std::abs(value - last);
        last = value, lastRaw = before;
    }
    EXPECT_LT(calm, 0.4f * raw);
    float value = 0;
    for (int i = 1; i <= 25; ++i) {
        value = 5 + 0.1f * float(i);  // 2.5 units a second
        filter.Apply({&value, 1}, 1.0f);
    }
    EXPECT_NEAR(value, 7.5f, 0.03f);
    filter.Reset();
    value = 100;
    filter.Apply({&value, 1}, 1.0f);
    EXPECT_EQ(value, 100);
}

TEST(PictureChange, TellsCutsFromMotion) {
    cv::Mat a(180, 320, CV_8UC4), b(180, 320, CV_8UC4);
    for (int y = 0; y < a.rows; ++y)
        for (int x = 0; x < a.cols; ++x) {
            const auto wave = uint8_t(128 + 80 * std::sin(x * 0.05) * std::cos(y * 0.07));
            a.at<cv::Vec4b>(y, x) = {wave, wave, wave, 255};
            b.at<cv::Vec4b>(y, x) = {uint8_t(255 - wave), 20, 200, 255};
        }
    cv::Mat moved = a.clone();
    a.colRange(0, 310).copyTo(moved.colRange(10, 320));
    PictureChange change;
    PicturePyramid frame;
    const auto next = [&](const cv::Mat& picture) {
        frame.Reset(picture);
        return change.Next(frame);
    };
    EXPECT_EQ(next(a), Succession::kJump);
    EXPECT_EQ(next(a), Succession::kSame);
    EXPECT_EQ(next(moved), Succession::kContinues);
    EXPECT_EQ(next(moved), Succession::kSame);
    EXPECT_EQ(next(b), Succession::kJump);
    EXPECT_EQ(next(b(cv::Rect(0, 0, 300, 180))), Succession::kJump);
}

TEST(PicturePyramid, CropsLandWhereTheMappingSays) {
    cv::Mat picture(700, 900, CV_8UC4, cv::Scalar(0, 0, 0, 255));
    PicturePyramid frame;
    for (const float side : {50.0f, 200.0f, 600.0f})
        for (const float angle : {0.0f, 0.6f, -2.0f}) {
            const RotatedSquare square{{450, 350}, side, angle};
            const CropMapping mapping(square, 64);
            const cv::Point2f target = mapping.ToFrame(40, 20);
            picture.setTo(cv::Scalar(0, 0, 0, 255));
            cv::circle(picture, {cvRound(target.x * 16 - 8), cvRound(target.y * 16 - 8)},
                       cvRound(side / 12 * 16), cv::Scalar(255, 255, 255, 255), -1, cv::LINE_AA, 4);
            frame.Reset(picture);
            std::vector<float> input(64 * 64 * 3);
            frame.Crop(square, 64, ColourRange::kZeroToOne, input);
            double total = 0, x = 0, y = 0;
            for (int i = 0; i < 64 * 64; ++i) {
                const double weight = input[size_t(i) * 3];
                total += weight, x += weight * (i % 64 + 0.5), y += weight * (i / 64 + 0.5);
            }
            EXPECT_NEAR(x / total, 40, 0.15) << side << " " << angle;
            EXPECT_NEAR(y / total, 20, 0.15) << side << " " << angle;
        }
}

TEST(PicturePyramid, FitKeepsTheAspectAndTellsTheWayBack) {
    const cv::Mat picture(90, 160, CV_8UC4, cv::Scalar(51, 102, 255, 255));
    PicturePyramid frame;
    frame.Reset(picture);
    std::vector<float> input(32 * 32 * 3);
    const Letterbox box = frame.Fit(32, ColourRange::kMinusOneToOne, input);
    const float* inside = &input[(16 * 32 + 16) * 3];
    EXPECT_NEAR(inside[0], 1.0f, 0.01);  // red first
    EXPECT_NEAR(inside[1], -0.2f, 0.01);
    EXPECT_NEAR(inside[2], -0.6f, 0.01);
    EXPECT_EQ(input[3 * (2 * 32 + 16)], -1.0f);  // a bar
    const cv::Point2f centre = box.ToFrame(16, 16);
    EXPECT_NEAR(centre.x, 80, 0.01);
    EXPECT_NEAR(centre.y, 45, 0.01);
}

Detection At(float x, float score) {
    return {{x, 0, 10, 10}, {{x + 5, 5}}, score};
}

TEST(MergeDetections, MergesWhatOverlapsAndPutsTheBestFirst) {
    const auto merged = MergeDetections({At(0, 0.6f), At(50, 0.7f), At(2, 0.9f), At(200, 0.5f)});
    ASSERT_EQ(merged.size(), 3u);
    EXPECT_FLOAT_EQ(merged[0].score, 0.9f);
    EXPECT_NEAR(merged[0].box.x, (2 * 0.9f + 0 * 0.6f) / 1.5f, 1e-4);
    EXPECT_NEAR(merged[0].keypoints[0].x, merged[0].box.x + 5, 1e-4);
    EXPECT_FLOAT_EQ(merged[1].box.x, 50);
    EXPECT_THAT(MergeDetections({}), IsEmpty());
}

/// Twenty points of a curved shield.
HeadModel Shield() {
    std::vector<HeadModel::Point> points;
    for (size_t i = 0; i < 20; ++i) {
        const double x = double(i % 5) - 2, y = double(i / 5) - 1.5;
        points.push_back({i, 1.0 + double(i % 3), {x, y, 0.3 * (x * x + y * y)}});
    }
    return HeadModel(std::move(points));
}

TEST(HeadModel, FindsTheAnglesThatAShapeWasTurnedBy) {
    const HeadModel model = Shield();
    const double degree = CV_PI / 180;
    for (const auto& [pitch, yaw, roll] :
         {std::tuple(0, 0, 0), std::tuple(20, 0, 0), std::tuple(0, -35, 0), std::tuple(0, 0, 50),
          std::tuple(-15, 40, -70)}) {
        const double p = pitch * degree, y = yaw * degree, r = roll * degree;
        const cv::Matx33d turn = cv::Matx33d(cos(r), -sin(r), 0, sin(r), cos(r), 0, 0, 0, 1) *
                                 cv::Matx33d(cos(y), 0, sin(y), 0, 1, 0, -sin(y), 0, cos(y)) *
                                 cv::Matx33d(1, 0, 0, 0, cos(p), -sin(p), 0, sin(p), cos(p));
        FaceShape shape;
        for (size_t i = 0; i < 20; ++i) {
            const double x = double(i % 5) - 2, v = double(i / 5) - 1.5;
            const cv::Point3d q = turn * cv::Point3d(x, v, 0.3 * (x * x + v * v));
            shape.points[i] =
                cv::Point3f(float(300 + 40 * q.x), float(200 + 40 * q.y), float(40 * q.z));
        }
        const HeadAngles found = model.Fit(shape);
        EXPECT_NEAR(found.pitch, pitch, 0.01);
        EXPECT_NEAR(found.yaw, yaw, 0.01);
        EXPECT_NEAR(found.roll, roll, 0.01);
    }
}

TEST(HeadModel, RefusesBytesThatHoldNoGeometry) {
    std::mt19937 random(7);
    for (int i = 0; i < 2000; ++i) {
        std::vector<uint8_t> bytes(random() % 64);
        for (uint8_t& byte : bytes) byte = uint8_t(random());
        EXPECT_FALSE(HeadModel::Parse(bytes));
    }
    EXPECT_FALSE(HeadModel::Load("/no/such/file"));
}

TEST(FaceLandmarks, SpreadTheJawEvenlyFromEarToEar) {
    FaceShape shape;
    for (cv::Point3f& point : shape.points) point = {50, 50, 0};
    // The jaw as a half circle, its points unevenly spread.
    const int jaw[] = {127, 234, 93,  132, 58,  172, 136, 150, 149, 176, 148, 152,
                       377, 400, 378, 379, 365, 397, 288, 361, 323, 454, 356};
    for (size_t i = 0; i < std::size(jaw); ++i) {
        const double t = double(i) / (std::size(jaw) - 1);
        const double angle = CV_PI * (1 - (t + 0.06 * std::sin(2 * CV_PI * t)));
        shape.points[size_t(jaw[i])] = {float(100 + 100 * cos(angle)),
                                        float(100 + 100 * sin(angle)), 0};
    }
    const auto marks = FaceLandmarks(shape);
    EXPECT_NEAR(marks[0].x, 0, 1e-3);
    EXPECT_NEAR(marks[16].y, 200, 1e-3);
    EXPECT_NEAR(marks[32].x, 200, 1e-3);
    for (size_t i = 1; i <= 32; ++i)
        EXPECT_NEAR(cv::norm(marks[i] - marks[i - 1]), CV_PI * 100 / 32, 0.3) << i;
}

}  // namespace
}  // namespace kelmo
