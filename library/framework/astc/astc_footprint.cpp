// SPDX-License-Identifier: GPL-3.0-or-later
#include "framework/astc/astc_footprint.h"

#include <algorithm>
#include <mutex>

namespace astc_codec {

namespace {

struct Size {
    uint8_t width;
    uint8_t height;
};

constexpr std::array<Size, 14> kSizes{{{4, 4},
                                       {5, 4},
                                       {5, 5},
                                       {6, 5},
                                       {6, 6},
                                       {8, 5},
                                       {8, 6},
                                       {8, 8},
                                       {10, 5},
                                       {10, 6},
                                       {10, 8},
                                       {10, 10},
                                       {12, 10},
                                       {12, 12}}};

/// Below this number of texels the partition pattern is drawn at twice the scale.
constexpr int kSmallBlockTexels = 31;

/// Position of a texel on the grid along one axis, in sixteenths of a grid step.
int GridPosition(int texel, int blockSide, int gridSide) {
    const int scale = (1024 + blockSide / 2) / (blockSide - 1);
    return (scale * texel * (gridSide - 1) + 32) >> 6;
}

uint64_t PackFactors(int right, int down) {
    const int both = (right * down + 8) >> 4;
    const int downOnly = down - both;
    const int rightOnly = right - both;
    const int self = 16 - right - down + both;
    return static_cast<uint64_t>(both) | (static_cast<uint64_t>(downOnly) << 16) |
           (static_cast<uint64_t>(rightOnly) << 32) | (static_cast<uint64_t>(self) << 48);
}

InfillTable BuildInfill(int width, int height, int gridWidth, int gridHeight) {
    InfillTable table;
    table.direct = width == gridWidth && height == gridHeight;
    if (table.direct) return table;
    const auto texels = static_cast<std::size_t>(width) * static_cast<std::size_t>(height);
    table.gridPoint.reserve(texels);
    table.factors.reserve(texels);
    for (int y = 0; y < height; ++y) {
        const int gridY = GridPosition(y, height, gridHeight);
        for (int x = 0; x < width; ++x) {
            const int gridX = GridPosition(x, width, gridWidth);
            table.gridPoint.push_back(
                static_cast<uint8_t>((gridX >> 4) + (gridY >> 4) * gridWidth));
            table.factors.push_back(PackFactors(gridX & 15, gridY & 15));
        }
    }
    return table;
}

/// The integer mixing that the format draws its partition patterns from.
uint32_t Mix(uint32_t value) {
    value ^= value >> 15;
    value -= value << 17;
    value += value << 7;
    value += value << 4;
    value ^= value >> 5;
    value += value << 16;
    value ^= value >> 7;
    value ^= value >> 3;
    value ^= value << 6;
    value ^= value >> 17;
    return value;
}

/// One of the planes whose highest decides the partition of a texel.
struct Plane {
    uint32_t stepX = 0;
    uint32_t stepY = 0;
    uint32_t offset = 0;

    uint32_t At(uint32_t x, uint32_t y) const { return (stepX * x + stepY * y + offset) & 63U; }
};

std::array<Plane, kMaxPartitions> PatternPlanes(int partitions, int index) {
    const uint32_t seed =
        static_cast<uint32_t>(index) + 1024U * (static_cast<uint32_t>(partitions) - 1U);
    const uint32_t mixed = Mix(seed);
    const uint32_t first = (seed & 2U) != 0 ? 4 : 5;
    const uint32_t second = partitions == 3 ? 6 : 5;
    const bool odd = (seed & 1U) != 0;
    const uint32_t shiftX = odd ? first : second;
    const uint32_t shiftY = odd ? second : first;
    constexpr uint32_t kOffsetShifts[] = {14, 10, 6, 2};
    std::array<Plane, kMaxPartitions> planes;
    for (uint32_t i = 0; i < static_cast<uint32_t>(partitions); ++i) {
        const uint32_t x = (mixed >> (8 * i)) & 15U;
        const uint32_t y = (mixed >> (8 * i + 4)) & 15U;
        planes[i] = {(x * x) >> shiftX, (y * y) >> shiftY, mixed >> kOffsetShifts[i]};
    }
    return planes;
}

}  // namespace

Footprint::Footprint(int blockWidth, int blockHeight) : width(blockWidth), height(blockHeight) {
    for (int gridHeight = 2; gridHeight <= height; ++gridHeight) {
        for (int gridWidth = 2; gridWidth <= width; ++gridWidth) {
            if (gridWidth * gridHeight > kMaxGridWeights) continue;
            infills[static_cast<std::size_t>(gridHeight)][static_cast<std::size_t>(gridWidth)] =
                BuildInfill(width, height, gridWidth, gridHeight);
        }
    }
    constexpr std::size_t kMaps = (kMaxPartitions - 1) * kPartitionIndices;
    maps = std::make_unique_for_overwrite<uint8_t[]>(kMaps * static_cast<std::size_t>(Texels()));
    mapStates = std::make_unique<std::atomic<MapState>[]>(kMaps);
}

const InfillTable& Footprint::Infill(int gridWidth, int gridHeight) const {
    return infills[static_cast<std::size_t>(gridHeight)][static_cast<std::size_t>(gridWidth)];
}

const uint8_t* Footprint::PartitionMap(int partitions, int index, uint8_t* scratch) const {
    const auto number = static_cast<std::size_t>(partitions - 2) * kPartitionIndices +
                        static_cast<std::size_t>(index);
    uint8_t* const map = maps.get() + number * static_cast<std::size_t>(Texels());
    std::atomic<MapState>& state = mapStates[number];
    MapState seen = state.load(std::memory_order_acquire);
    if (seen == MapState::kDone) return map;
    if (seen == MapState::kMissing &&
        state.compare_exchange_strong(seen, MapState::kBusy, std::memory_order_acquire)) {
        FillMap(partitions, index, map);
        state.store(MapState::kDone, std::memory_order_release);
        return map;
    }
    FillMap(partitions, index, scratch);
    return scratch;
}

void Footprint::FillMap(int partitions, int index, uint8_t* map) const {
    const std::array<Plane, kMaxPartitions> planes = PatternPlanes(partitions, index);
    const int scale = Texels() < kSmallBlockTexels ? 2 : 1;
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            uint8_t best = 0;
            uint32_t bestLevel = 0;
            for (int i = 0; i < partitions; ++i) {
                const uint32_t level = planes[static_cast<std::size_t>(i)].At(
                    static_cast<uint32_t>(x * scale), static_cast<uint32_t>(y * scale));
                // Ties go to the lower number.
                if (i == 0 || level > bestLevel) {
                    best = static_cast<uint8_t>(i);
                    bestLevel = level;
                }
            }
            *map++ = best;
        }
    }
}

std::shared_ptr<const Footprint> FindFootprint(uint64_t blockWidth, uint64_t blockHeight) {
    static std::mutex mutex;
    static std::array<std::shared_ptr<const Footprint>, kSizes.size()> known;
    const auto* const size =
        std::find_if(kSizes.begin(), kSizes.end(), [blockWidth, blockHeight](const Size& s) {
            return s.width == blockWidth && s.height == blockHeight;
        });
    if (size == kSizes.end()) return nullptr;
    const std::lock_guard<std::mutex> guard(mutex);
    std::shared_ptr<const Footprint>& entry =
        known[static_cast<std::size_t>(size - kSizes.begin())];
    if (!entry) entry = std::make_shared<Footprint>(size->width, size->height);
    return entry;
}

}  // namespace astc_codec
