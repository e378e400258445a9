// SPDX-License-Identifier: GPL-3.0-or-later
#include "bindings/pose_block.h"

#include <gtest/gtest.h>

#include <cstring>
#include <vector>

namespace kelmo {
namespace {

/// Writes a block word by word.
class BlockWriter {
public:
    BlockWriter& Int(int32_t v) { return Word(&v); }
    BlockWriter& Float(float v) { return Word(&v); }
    BlockWriter& Person(int32_t points, int32_t tag) {
        Int(points);
        for (int32_t i = 0; i < points; ++i) Float(0.01F * static_cast<float>(i)).Float(-1.0F);
        return Int(tag);
    }
    BlockWriter& PadTo(std::size_t size) {
        bytes.resize(std::max(size, bytes.size()));
        return *this;
    }
    std::vector<uint8_t> bytes;

private:
    BlockWriter& Word(const void* word) {
        const auto* const first = static_cast<const uint8_t*>(word);
        bytes.insert(bytes.end(), first, first + 4);
        return *this;
    }
};

int32_t Parse(const std::vector<uint8_t>& bytes, AIDATA::HumanPoseDatas& poses) {
    // An exact copy, so that a sanitizer sees a read past the end.
    const std::unique_ptr<uint8_t[]> exact(new uint8_t[bytes.size()]);
    std::memcpy(exact.get(), bytes.data(), bytes.size());
    return ParsePoseBlock(exact.get(), bytes.size(), poses);
}

TEST(PoseBlockTest, ReadsPersonsOneAfterTheOther) {
    AIDATA::HumanPoseDatas poses;
    ASSERT_EQ(Parse(BlockWriter().Int(2).Person(18, 7).Person(3, -8).bytes, poses), 0);
    ASSERT_EQ(poses.persons.size(), 2U);
    EXPECT_EQ(poses.persons[0].points.size(), 18U);
    EXPECT_FLOAT_EQ(poses.persons[0].points[17].first, 0.17F);
    EXPECT_EQ(poses.persons[0].points[17].second, -1.0F) << "not found, and kept";
    EXPECT_EQ(poses.persons[0].tag, 7);
    EXPECT_EQ(poses.persons[1].points.size(), 3U);
    EXPECT_EQ(poses.persons[1].tag, -8);
}

TEST(PoseBlockTest, TakesABlockOfHundredBytesAndNoShorterOne) {
    // 4 + 4 + 11 * 8 + 4 bytes.
    const std::vector<uint8_t> exact = BlockWriter().Int(1).Person(11, 1).bytes;
    ASSERT_EQ(exact.size(), 100U);
    AIDATA::HumanPoseDatas poses;
    EXPECT_EQ(Parse(exact, poses), 0);
    EXPECT_EQ(poses.persons.size(), 1U);
    EXPECT_EQ(Parse({exact.begin(), exact.end() - 1}, poses), 1);
    EXPECT_TRUE(poses.persons.empty()) << "the list of the frame before is gone";
    EXPECT_EQ(ParsePoseBlock(nullptr, 200, poses), 1);
}

TEST(PoseBlockTest, CountsAreBelievedOnlyAsFarAsTheBytesGo) {
    const auto writer = [] { return BlockWriter(); };
    struct {
        const char* what;
        std::vector<uint8_t> bytes;
        std::size_t persons;
    } const cases[] = {
        {"no person", writer().Int(0).PadTo(200).bytes, 0},
        {"a negative count", writer().Int(-5).PadTo(200).bytes, 0},
        {"more persons than bytes", writer().Int(1000000000).Person(18, 1).bytes, 1},
        {"more points than bytes", writer().Int(2).Person(18, 1).Int(2147483647).bytes, 1},
        {"cut before the tag",
         {[&] {
             auto bytes = writer().Int(1).Person(18, 1).bytes;
             bytes.resize(bytes.size() - 2);
             return bytes;
         }()},
         0},
        {"cut within the second person",
         {[&] {
             auto bytes = writer().Int(2).Person(18, 1).Person(18, 2).bytes;
             bytes.resize(bytes.size() - 30);
             return bytes;
         }()},
         1},
        {"a negative number of points", writer().Int(1).Int(-1).Int(9).PadTo(120).bytes, 1},
    };
    for (const auto& c : cases) {
        AIDATA::HumanPoseDatas poses;
        EXPECT_EQ(Parse(c.bytes, poses), 0) << c.what;
        EXPECT_EQ(poses.persons.size(), c.persons) << c.what;
    }
}

}  // namespace
}  // namespace kelmo
