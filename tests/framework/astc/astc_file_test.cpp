// SPDX-License-Identifier: GPL-3.0-or-later
#include "framework/astc/astc_file.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <opencv2/core/utility.hpp>
#include <opencv2/imgcodecs.hpp>
#include <opencv2/imgproc.hpp>
#include <random>

#include "block_writer.h"

namespace astc_codec::test {

namespace {

std::unique_ptr<ASTCFile> Load(const std::string& bytes, std::string* error = nullptr) {
    std::string text;
    std::unique_ptr<ASTCFile> file = LoadFromMemory(bytes.data(), bytes.size(), text);
    if (error != nullptr) *error = text;
    return file;
}

std::string ConstantBlock() {
    return {"\xFC\xFD\xFF\xFF\xFF\xFF\xFF\xFF\x34\x12\x78\x56\x00\xFF\xFF\x80", 16};
}

std::string Repeated(const std::string& text, int times) {
    std::string result;
    for (int i = 0; i < times; ++i) result += text;
    return result;
}

std::string ReadFile(const std::filesystem::path& path) {
    std::ifstream stream(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()};
}

std::vector<uint8_t> Decoded(const ASTCFile& file) {
    const auto stride = static_cast<std::size_t>(file.width * 4);
    std::vector<uint8_t> pixels(stride * file.height);
    EXPECT_TRUE(DecompressToImage(file, pixels.data(), pixels.size(), stride));
    return pixels;
}

/// Blocks of random bits, those that decode.
std::string LegalBlocks(unsigned side, std::size_t count) {
    std::mt19937 random(side);
    std::string blocks;
    uint8_t pixels[144 * 4];
    while (blocks.size() < count * 16) {
        std::string block(16, '\0');
        for (char& byte : block) byte = static_cast<char>(random());
        const std::unique_ptr<ASTCFile> file = Load(FileOf(side, side, side, side, block));
        if (DecompressToImage(*file, pixels, side * side * 4, side * 4)) blocks += block;
    }
    return blocks;
}

}  // namespace

TEST(AstcFile, BrokenFilesAreRefusedWithTheReason) {
    struct Case {
        const char* name;
        std::string bytes;
        const char* error;
    };
    const std::string one = ConstantBlock();
    std::string wrongMagic = FileOf(4, 4, 4, 4, one);
    wrongMagic[0] = 'X';
    const std::vector<Case> cases = {
        {"nothing", "", "Incomplete header."},
        {"15 bytes", std::string(15, '\x13'), "Incomplete header."},
        {"wrong magic", wrongMagic, "Invalid ASTC header."},
        {"no block width", FileOf(0, 4, 4, 4, one), "Invalid block size."},
        {"no block height", FileOf(4, 0, 4, 4, one), "Invalid block size."},
        {"three of four blocks", FileOf(4, 4, 5, 5, Repeated(one, 3)),
         "Unexpected file length 48 expected 80 bytes."},
        {"one block too many", FileOf(4, 4, 4, 4, Repeated(one, 2)),
         "Unexpected file length 32 expected 32 bytes."},
        {"half a block", FileOf(4, 4, 4, 4, one + "12345678"),
         "Unexpected file length 24 expected 32 bytes."},
        {"largest picture", FileOf(4, 4, 0xFFFFFF, 0xFFFFFF, one),
         "Unexpected file length 16 expected 281474976710672 bytes."},
    };
    for (const Case& c : cases) {
        std::string error;
        EXPECT_EQ(Load(c.bytes, &error), nullptr) << c.name;
        EXPECT_EQ(error, c.error) << c.name;
    }
}

TEST(AstcFile, LayersAreJudgedByWidthAndHeightAlone) {
    std::string bytes = FileOf(4, 4, 4, 4, Repeated(ConstantBlock(), 2));
    bytes[13] = 2;
    std::string error;
    EXPECT_EQ(Load(bytes, &error), nullptr);
    EXPECT_EQ(error, "Unexpected file length 32 expected 32 bytes.");
    bytes.resize(32);
    const std::unique_ptr<ASTCFile> file = Load(bytes);
    ASSERT_NE(file, nullptr);
    EXPECT_EQ(file->depth, 2U);
}

TEST(AstcFile, PicturesThatCannotBeDecodedLoadAndThenFail) {
    std::vector<uint8_t> pixels(4096);
    struct Case {
        const char* name;
        std::string bytes;
        std::size_t buffer;
        std::size_t stride;
        bool decodes;
    };
    const std::string one = ConstantBlock();
    const std::vector<Case> cases = {
        {"a picture that fits exactly", FileOf(4, 4, 4, 4, one), 64, 16, true},
        {"rows with room behind them", FileOf(4, 4, 4, 4, one), 96, 24, true},
        {"no room behind the last row", FileOf(4, 4, 4, 4, one), 88, 24, true},
        {"0 x 0", FileOf(4, 4, 0, 0, ""), 64, 16, false},
        {"0 wide", FileOf(4, 4, 0, 4, ""), 64, 16, false},
        {"blocks of 7 x 7", FileOf(7, 7, 7, 7, one), 196, 28, false},
        {"blocks of 4 x 5", FileOf(4, 5, 4, 5, one), 80, 16, false},
        {"blocks of 12 x 8", FileOf(12, 8, 12, 8, one), 384, 48, false},
        {"stride too small", FileOf(4, 4, 4, 4, one), 48, 12, false},
        {"buffer larger than stride * height", FileOf(4, 4, 4, 4, one), 65, 16, false},
        {"buffer too small for the rows", FileOf(4, 4, 4, 4, one), 63, 16, false},
        {"illegal block", FileOf(4, 4, 4, 4, std::string(16, '\0')), 64, 16, false},
    };
    for (const Case& c : cases) {
        const std::unique_ptr<ASTCFile> file = Load(c.bytes);
        ASSERT_NE(file, nullptr) << c.name;
        EXPECT_EQ(DecompressToImage(*file, pixels.data(), c.buffer, c.stride), c.decodes) << c.name;
    }
}

TEST(AstcFile, OnePixelOfABlockIsWrittenAndNothingBeside) {
    const std::unique_ptr<ASTCFile> file = Load(FileOf(12, 12, 1, 1, ConstantBlock()));
    ASSERT_NE(file, nullptr);
    std::vector<uint8_t> pixels(12, 7);
    ASSERT_TRUE(DecompressToImage(*file, pixels.data(), 4, 4));
    EXPECT_THAT(pixels, testing::ElementsAre(0x12, 0x56, 0xFF, 0x80, 7, 7, 7, 7, 7, 7, 7, 7));
}

TEST(AstcFile, EdgeBlocksLeaveThePaddingOfTheRowsAlone) {
    const std::unique_ptr<ASTCFile> file = Load(FileOf(4, 4, 5, 5, Repeated(ConstantBlock(), 4)));
    ASSERT_NE(file, nullptr);
    constexpr std::size_t kStride = 28;
    std::vector<uint8_t> pixels(kStride * 5, 7);
    ASSERT_TRUE(DecompressToImage(*file, pixels.data(), pixels.size(), kStride));
    for (std::size_t y = 0; y < 5; ++y) {
        for (std::size_t x = 0; x < kStride; ++x) {
            const uint8_t color[] = {0x12, 0x56, 0xFF, 0x80};
            EXPECT_EQ(pixels[y * kStride + x], x < 20 ? color[x % 4] : 7) << x << ", " << y;
        }
    }
}

TEST(AstcFile, EncodedPicturesMatchTheirEncoderWithinOneLevel) {
    int files = 0;
    for (const auto& entry :
         std::filesystem::directory_iterator(KELMO_SOURCE_DIR "/tests/data/astc")) {
        if (entry.path().extension() != ".astc") continue;
        ++files;
        std::string error;
        const std::unique_ptr<ASTCFile> file = Load(ReadFile(entry.path()), &error);
        ASSERT_NE(file, nullptr) << entry.path() << ": " << error;
        cv::Mat decoded(static_cast<int>(file->height), static_cast<int>(file->width), CV_8UC4);
        ASSERT_TRUE(DecompressToImage(*file, decoded.data, decoded.total() * 4, decoded.step))
            << entry.path();
        cv::Mat reference = cv::imread(
            std::filesystem::path(entry.path()).replace_extension(".png"), cv::IMREAD_UNCHANGED);
        ASSERT_EQ(reference.size(), decoded.size()) << entry.path();
        cv::cvtColor(reference, reference,
                     reference.channels() == 4   ? cv::COLOR_BGRA2RGBA
                     : reference.channels() == 3 ? cv::COLOR_BGR2RGBA
                                                 : cv::COLOR_GRAY2RGBA);
        EXPECT_LE(cv::norm(decoded, reference, cv::NORM_INF), 1.0) << entry.path();
    }
    EXPECT_EQ(files, 28);
}

TEST(AstcFile, AnyLegalBlocksDecodeAlikeOnOneThreadAndOnMany) {
    const int threads = cv::getNumThreads();
    constexpr unsigned kColumns = 24;
    constexpr unsigned kRows = 16;
    for (const unsigned side : {4U, 5U, 8U, 12U}) {
        const std::string blocks = LegalBlocks(side, kColumns * kRows);
        const std::unique_ptr<ASTCFile> file =
            Load(FileOf(side, side, kColumns * side, kRows * side, blocks));
        ASSERT_NE(file, nullptr);
        cv::setNumThreads(8);
        const std::vector<uint8_t> many = Decoded(*file);
        cv::setNumThreads(1);
        EXPECT_EQ(Decoded(*file), many) << side;
    }
    cv::setNumThreads(threads);
}

}  // namespace astc_codec::test
