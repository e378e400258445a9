// SPDX-License-Identifier: GPL-3.0-or-later
#include "bindings/pose_block.h"

#include <cstring>
#include <type_traits>

namespace kelmo {

namespace {

static_assert(sizeof(float) == 4);

constexpr std::size_t kPointSize = 2 * sizeof(float);

/// Little-endian words one after the other, never past the end.
class WordReader {
public:
    WordReader(const uint8_t* bytes, std::size_t size) : next(bytes), left(size) {}

    bool Read(int32_t& value) {
        uint32_t word = 0;
        if (!ReadWord(word)) return false;
        value = static_cast<int32_t>(word);
        return true;
    }
    bool Read(float& value) {
        uint32_t word = 0;
        if (!ReadWord(word)) return false;
        std::memcpy(&value, &word, sizeof value);
        return true;
    }
    std::size_t Left() const { return left; }

private:
    bool ReadWord(uint32_t& word) {
        if (left < sizeof word) return false;
        word = 0;
        for (int byte = 3; byte >= 0; --byte) word = word << 8 | next[byte];
        next += sizeof word;
        left -= sizeof word;
        return true;
    }

    const uint8_t* next;
    std::size_t left;
};

/// False when the block ends before the person does.
bool ReadPerson(WordReader& reader, AIDATA::HumanPose& person) {
    int32_t count = 0;
    if (!reader.Read(count)) return false;
    const std::size_t points = count > 0 ? static_cast<std::size_t>(count) : 0;
    // Checked before anything is allocated for the points.
    if (points > reader.Left() / kPointSize) return false;
    person.points.resize(points);
    for (auto& [x, y] : person.points) {
        if (!reader.Read(x) || !reader.Read(y)) return false;
    }
    return reader.Read(person.tag);
}

}  // namespace

int32_t ParsePoseBlock(const uint8_t* bytes, std::size_t size, AIDATA::HumanPoseDatas& poses) {
    if (bytes == nullptr || size < kMinPoseBlockSize) {
        poses.persons.clear();
        return 1;
    }
    WordReader reader(bytes, size);
    int32_t count = 0;
    reader.Read(count);
    // Entries of the frame before are overwritten, so that their point lists need no new memory.
    std::size_t kept = 0;
    for (; static_cast<int64_t>(kept) < count; ++kept) {
        if (kept == poses.persons.size()) poses.persons.emplace_back();
        if (!ReadPerson(reader, poses.persons[kept])) break;
    }
    poses.persons.resize(kept);
    return 0;
}

}  // namespace kelmo
