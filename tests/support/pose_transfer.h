// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstring>
#include <map>
#include <utility>
#include <vector>

#include "contract/ai_transfer.h"

namespace kelmo::test {

using PosePoints = std::vector<std::pair<float, float>>;

/// The bytes of a pose block. `padding` zero bytes behind it make short lists long enough.
inline std::vector<uint8_t> PoseBlock(const std::vector<PosePoints>& persons,
                                      std::size_t padding = 0) {
    std::vector<uint8_t> block;
    const auto put = [&](const auto& word) {
        static_assert(sizeof word == 4);
        const std::size_t at = block.size();
        block.resize(at + 4);
        std::memcpy(block.data() + at, &word, 4);
    };
    put(static_cast<int32_t>(persons.size()));
    for (const PosePoints& points : persons) {
        put(static_cast<int32_t>(points.size()));
        for (const auto& [x, y] : points) {
            put(x);
            put(y);
        }
        put(int32_t{0});
    }
    block.resize(block.size() + padding);
    return block;
}

/// A host's object with body points alone.
class PoseTransfer : public ObjectAiDataTransfer {
public:
    bool GetMaskImage(void**, int32_t*, int32_t*, int32_t*) override { return false; }
    bool GetPoseBlock(void** bytes, int32_t* length) override {
        if (!hasBlock) return false;
        *bytes = block.data();
        *length = static_cast<int32_t>(block.size());
        return true;
    }
    void GetPosePoint(int32_t index, PosePointReference* reference) override {
        const auto known = references.find(index);
        if (known == references.end()) return;
        reference->x = known->second.first;
        reference->y = known->second.second;
    }

    bool hasBlock = true;
    std::vector<uint8_t> block;
    std::map<int32_t, std::pair<double, double>> references;
};

}  // namespace kelmo::test
