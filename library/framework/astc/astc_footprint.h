// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <atomic>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

namespace astc_codec {

inline constexpr int kMaxBlockTexels = 144;
/// Texels are worked on four at a time: buffers have room for the last, half-empty four.
inline constexpr int kTexelPadding = 16;
inline constexpr int kMaxGridWeights = 64;
inline constexpr int kMaxPartitions = 4;
inline constexpr int kPartitionIndices = 1024;

/// How the texels of a block get their weights from a grid: each lies between four grid points.
struct InfillTable {
    /// The grid is as large as the block: weights are taken as they are.
    bool direct = false;
    /// For each texel the grid point to its upper left ...
    std::vector<uint8_t> gridPoint;
    /// ... and the factors of that point and its neighbours, in sixteenths, 16 bits each: bits
    /// 48..63 the point, 32 its right neighbour, 16 the one below, 0 the one below right.
    std::vector<uint64_t> factors;
};

/// All that depends on the size of a block alone; made once a process and size, then shared.
/// Callable from any thread.
class Footprint {
public:
    Footprint(int blockWidth, int blockHeight);
    Footprint(const Footprint&) = delete;
    Footprint& operator=(const Footprint&) = delete;

    int Width() const { return width; }
    int Height() const { return height; }
    int Texels() const { return width * height; }

    /// For a grid that is no larger than the block and has at most 64 points, 2..12 each way.
    const InfillTable& Infill(int gridWidth, int gridHeight) const;

    /// The partition of each texel, for 2..4 partitions. `scratch` (of Texels() bytes) is used, and
    /// returned, while another thread works out the same map.
    const uint8_t* PartitionMap(int partitions, int index, uint8_t* scratch) const;

private:
    static constexpr int kMaxGridSide = 12;
    enum class MapState : uint8_t { kMissing, kBusy, kDone };

    void FillMap(int partitions, int index, uint8_t* map) const;

    int width;
    int height;
    std::array<std::array<InfillTable, kMaxGridSide + 1>, kMaxGridSide + 1> infills;
    // Maps are worked out when a block first asks for them: a picture uses few of the 3072.
    std::unique_ptr<uint8_t[]> maps;
    std::unique_ptr<std::atomic<MapState>[]> mapStates;
};

/// The tables of a block size; null for a pair that is not one of the 14 two-dimensional sizes.
std::shared_ptr<const Footprint> FindFootprint(uint64_t blockWidth, uint64_t blockHeight);

}  // namespace astc_codec
