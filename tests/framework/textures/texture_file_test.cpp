// SPDX-License-Identifier: GPL-3.0-or-later
#include "framework/textures/texture_file.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <opencv2/imgcodecs.hpp>

#include "contract/qor_host.h"
#include "support/recording_host.h"
#include "support/temporary_folder.h"

namespace kelmo::test {

namespace {

/// Two rows of one colour each: the upper (10, 20, 30, 40) of the picture's depth, the lower 0.
cv::Mat TwoRows(int type, double scale = 1.0) {
    cv::Mat picture(2, 3, type, cv::Scalar::all(0));
    cv::Scalar top(10, 20, 30, 40);
    picture.row(0).setTo(top * scale);
    return picture;
}

std::vector<double> Pixel(const cv::Mat& picture, int row) {
    cv::Mat values;
    picture.row(row).col(0).reshape(1).convertTo(values, CV_64F);
    return {values.begin<double>(), values.end<double>()};
}

/// One block of 4 x 4 whose rows are black, black, white, white from the top of the picture.
std::string AstcBytes() {
    const char block[] = "\x42\x00\x00\xFE\x01\x00\x00\x00\x00\x00\x00\x00\xFF\xFF\x00\x00";
    return std::string("\x13\xAB\xA1\x5C\x04\x04\x01\x04\x00\x00\x04\x00\x00\x01\x00\x00", 16) +
           std::string(block, 16);
}

}  // namespace

TEST(TextureFile, PicturesComeWithFourChannelsTheirDepthAndTheBottomRowFirst) {
    struct Case {
        const char* name;
        int type;
        double scale;
        int loadedType;
        std::vector<double> color;
    };
    const std::vector<Case> cases = {
        {"grey.png", CV_8UC1, 1, CV_8UC4, {10, 10, 10, 255}},
        {"bgr.png", CV_8UC3, 1, CV_8UC4, {10, 20, 30, 255}},
        {"bgra.png", CV_8UC4, 1, CV_8UC4, {10, 20, 30, 40}},
        {"bgr.bmp", CV_8UC3, 1, CV_8UC4, {10, 20, 30, 255}},
        {"grey16.png", CV_16UC1, 1000, CV_16UC4, {10000, 10000, 10000, 65535}},
        {"bgr16.png", CV_16UC3, 1000, CV_16UC4, {10000, 20000, 30000, 65535}},
        {"bgra16.png", CV_16UC4, 1000, CV_16UC4, {10000, 20000, 30000, 40000}},
        {"grey.tiff", CV_32FC1, 0.5, CV_32FC4, {5, 5, 5, 1}},
        {"bgr.tiff", CV_32FC3, 0.5, CV_32FC4, {5, 10, 15, 1}},
    };
    const TemporaryFolder folder;
    for (const Case& c : cases) {
        const std::string path = folder.Path(c.name);
        // TIFF would round floats to logarithms without being told not to.
        ASSERT_TRUE(cv::imwrite(path, TwoRows(c.type, c.scale), {cv::IMWRITE_TIFF_COMPRESSION, 1}))
            << c.name;
        cv::Mat picture;
        ASSERT_TRUE(LoadTextureFile(path, picture)) << c.name;
        EXPECT_EQ(picture.type(), c.loadedType) << c.name;
        EXPECT_EQ(Pixel(picture, 1), c.color) << c.name;
        EXPECT_EQ(Pixel(picture, 0)[0], 0) << c.name;
    }
}

TEST(TextureFile, AstcPicturesComeAsBgraWithTheBottomRowFirst) {
    const TemporaryFolder folder;
    cv::Mat picture;
    int32_t astc = 0;
    ASSERT_TRUE(LoadTextureFile(folder.Write("a.astc", AstcBytes()), picture, &astc));
    EXPECT_EQ(astc, 1);
    EXPECT_EQ(picture.type(), CV_8UC4);
    EXPECT_EQ(Pixel(picture, 3), (std::vector<double>{0, 0, 0, 255}));
    EXPECT_EQ(Pixel(picture, 0), (std::vector<double>{255, 255, 255, 255}));
}

TEST(TextureFile, TheNameDecidesWhatIsAnAstcFile) {
    const TemporaryFolder folder;
    AcquiredHost host;
    cv::Mat picture;
    int32_t astc = 0;
    folder.MakeFolder("x.astc");
    const std::string path = folder.Path("x.astc/b.png");
    ASSERT_TRUE(cv::imwrite(path, TwoRows(CV_8UC3)));
    EXPECT_FALSE(LoadTextureFile(path, picture, &astc));
    EXPECT_EQ(astc, 1);
    EXPECT_THAT(host.Texts(kLogError), testing::ElementsAre("Load Texture astcFile Failed: " +
                                                            path + ", error:Invalid ASTC header."));
    astc = 0;
    host.ClearLines();
    const std::string upper = folder.Write("a.ASTC", AstcBytes());
    EXPECT_FALSE(LoadTextureFile(upper, picture, &astc));
    EXPECT_EQ(astc, 0);
    EXPECT_THAT(host.Texts(kLogError), testing::ElementsAre("Load Texture Failed: " + upper));
}

TEST(TextureFile, BrokenFilesAreNamedInTheLog) {
    struct Case {
        const char* name;
        const char* bytes;
        std::size_t length;
        std::string text;
    };
    const std::string sevenBySeven =
        std::string("\x13\xAB\xA1\x5C\x07\x07\x01\x07\x00\x00\x07\x00\x00\x01\x00\x00", 16) +
        std::string(16, '\0');
    const std::vector<Case> cases = {
        {"empty.png", "", 0, "Load Texture Failed: %s"},
        {"short.png", "abc", 3, "Load Texture Failed: %s"},
        {"text.png", "not a picture", 13, "Load Texture Failed: %s"},
        {"cut.png", "\x89PNG\r\n\x1A\n\0\0\0\rIHDR", 16, "Load Texture Failed: %s"},
        {"100%d.png", "abcd", 4, "Load Texture Failed: %s"},
        {"empty.astc", "", 0, "Load Texture astcFile Failed: %s, error:Incomplete header."},
        {"7x7.astc", sevenBySeven.data(), sevenBySeven.size(),
         "Load Texture Failed when astcFile DecompressToImage : %s"},
    };
    const TemporaryFolder folder;
    AcquiredHost host;
    for (const Case& c : cases) {
        host.ClearLines();
        const std::string path = folder.Write(c.name, {c.bytes, c.length});
        cv::Mat picture;
        EXPECT_FALSE(LoadTextureFile(path, picture)) << c.name;
        std::string text = c.text;
        text.replace(text.find("%s"), 2, path);
        EXPECT_THAT(host.Texts(kLogError), testing::ElementsAre(text)) << c.name;
    }
    host.ClearLines();
    cv::Mat picture;
    for (const std::string& path : {folder.Path("missing.png"), folder.Path(), std::string()}) {
        EXPECT_FALSE(LoadTextureFile(path, picture));
        EXPECT_EQ(host.Texts(kLogError).back(), "Load Texture Failed: " + path);
    }
}

TEST(TextureFile, ReadImageFileKeepsThePictureAsItIs) {
    const TemporaryFolder folder;
    const std::string path = folder.Path("\xC3\xA4.png");
    const cv::Mat picture = TwoRows(CV_16UC3, 1000);
    ASSERT_TRUE(cv::imwrite(path, picture));
    const cv::Mat read = ReadImageFile(path);
    ASSERT_EQ(read.type(), CV_16UC3);
    EXPECT_EQ(cv::norm(read, picture, cv::NORM_INF), 0);
    EXPECT_TRUE(ReadImageFile(folder.Write("three", "abc")).empty());
    EXPECT_TRUE(ReadImageFile(folder.Write("four", "abcd")).empty());
    EXPECT_TRUE(ReadImageFile(folder.Path("missing")).empty());
}

TEST(MaterialLayout, WhatTheEngineCannotTellApartBecomesEightBits) {
    struct Case {
        const char* name;
        cv::Mat picture;
        int type;
        std::vector<double> color;
    };
    cv::Mat five(2, 3, CV_8UC(5));
    five.reshape(1).setTo(6);
    const auto filled = [](int type, const cv::Scalar& value) {
        return cv::Mat(2, 3, type, value);
    };
    const std::vector<Case> cases = {
        {"grey", filled(CV_8UC1, 9), CV_8UC1, {9}},
        {"grey with alpha", filled(CV_8UC2, {9, 7}), CV_8UC2, {9, 7}},
        {"four of 8 bits", filled(CV_8UC4, {1, 2, 3, 4}), CV_8UC4, {1, 2, 3, 4}},
        {"four of 16 bits", filled(CV_16UC4, {1, 2, 3, 4}), CV_16UC4, {1, 2, 3, 4}},
        {"two of 16 bits", filled(CV_16UC2, {65535, 257}), CV_8UC2, {255, 1}},
        {"three of 8 bits", filled(CV_8UC3, {1, 2, 3}), CV_8UC4, {1, 2, 3, 255}},
        {"float", filled(CV_32FC4, {0, 0.5, 1, 2}), CV_8UC4, {0, 128, 255, 255}},
        {"two floats", filled(CV_32FC2, {1, -1}), CV_8UC2, {255, 0}},
        {"double", filled(CV_64FC3, {0, 1, 0.2}), CV_8UC4, {0, 255, 51, 255}},
        {"signed", filled(CV_16SC4, {32767, -5, 0, 16384}), CV_8UC4, {255, 0, 0, 128}},
        {"signed bytes", filled(CV_8SC1, 127), CV_8UC1, {255}},
        {"five channels", five, CV_8UC4, {6, 6, 6, 255}},
        {"a part of a picture",
         cv::Mat(4, 9, CV_8UC4, cv::Scalar(1, 2, 3, 4))({2, 1, 3, 2}),
         CV_8UC4,
         {1, 2, 3, 4}},
    };
    for (const Case& c : cases) {
        const cv::Mat result = ToMaterialLayout(c.picture);
        EXPECT_EQ(result.type(), c.type) << c.name;
        EXPECT_EQ(Pixel(result, 1), c.color) << c.name;
        const MaterialView view = MaterialView::Of(result);
        EXPECT_EQ(view.cols, 3) << c.name;
        EXPECT_EQ(view.rows, 2) << c.name;
        EXPECT_EQ(view.step, 3 * static_cast<int>(result.elemSize())) << c.name;
        EXPECT_EQ(view.pixels, result.data) << c.name;
        EXPECT_TRUE(result.isContinuous()) << c.name;
    }
}

TEST(MaterialLayout, AnEmptyPictureHasNoPixels) {
    const MaterialView view = MaterialView::Of(cv::Mat());
    EXPECT_EQ(view.pixels, nullptr);
    EXPECT_EQ(view.cols + view.rows + view.step, 0);
}

}  // namespace kelmo::test
