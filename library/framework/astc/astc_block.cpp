// SPDX-License-Identifier: GPL-3.0-or-later
#include "framework/astc/astc_block.h"

#include <algorithm>
#include <cstring>

#include "framework/astc/astc_bits.h"
#include "framework/astc/astc_block_mode.h"
#include "framework/astc/astc_endpoints.h"
#include "framework/astc/astc_paint.h"
#include "framework/astc/astc_quantization.h"

namespace astc_codec {

namespace {

constexpr uint32_t kConstantColorMark = 0x1FC;
constexpr int kMaxColorValues = 18;
constexpr unsigned kSinglePartitionColors = 17;
constexpr unsigned kMultiPartitionColors = 29;

bool DecodeConstantColor(const Bits128& bits, int texels, uint8_t* pixels) {
    if (bits.Field(10, 2) != 3) return false;
    constexpr uint32_t kOpen = 0x1FFF;
    const uint32_t minX = bits.Field(12, 13);
    const uint32_t maxX = bits.Field(25, 13);
    const uint32_t minY = bits.Field(38, 13);
    const uint32_t maxY = bits.Field(51, 13);
    const bool unbounded = (minX & maxX & minY & maxY) == kOpen;
    if (!unbounded && (minX >= maxX || minY >= maxY)) return false;
    // The upper byte of each 16-bit component.
    const uint8_t color[4] = {
        static_cast<uint8_t>(bits.high >> 8), static_cast<uint8_t>(bits.high >> 24),
        static_cast<uint8_t>(bits.high >> 40), static_cast<uint8_t>(bits.high >> 56)};
    for (int i = 0; i < texels; ++i) std::memcpy(pixels + i * 4, color, 4);
    return true;
}

/// What the head of a block says about it.
struct BlockHead {
    BlockMode mode;
    int partitions = 1;
    int partitionIndex = 0;
    std::array<unsigned, kMaxPartitions> endpointModes{};
    int colorValues = 0;
    int colorRange = 0;
    unsigned colorStart = kSinglePartitionColors;
    /// Channel that takes its weights from the second plane.
    int secondPlaneChannel = 0;
};

/// Endpoint modes of several partitions; returns the number of bits that they take directly below
/// the weights.
unsigned ReadEndpointModes(const Bits128& bits, BlockHead& head) {
    const uint32_t selector = bits.Field(23, 2);
    const auto partitions = static_cast<unsigned>(head.partitions);
    if (selector == 0) {
        head.endpointModes.fill(bits.Field(25, 4));
        return 0;
    }
    const unsigned extraBits = 3 * partitions - 4;
    const unsigned extra = bits.Field(128U - head.mode.weightBits - extraBits, extraBits);
    const unsigned joined = bits.Field(25, 4) | (extra << 4);
    for (unsigned i = 0; i < partitions; ++i) {
        const unsigned classBit = (joined >> i) & 1U;
        const unsigned low = (joined >> (partitions + 2 * i)) & 3U;
        head.endpointModes[i] = 4 * (selector - 1 + classBit) + low;
    }
    return extraBits;
}

bool ReadHead(const Bits128& bits, const Footprint& footprint, BlockHead& head) {
    head.mode = BlockModeOf(bits.Field(0, 11));
    head.partitions = static_cast<int>(bits.Field(11, 2)) + 1;
    if (!head.mode.legal || head.mode.gridWidth > footprint.Width() ||
        head.mode.gridHeight > footprint.Height() ||
        (head.mode.dualPlane && head.partitions == kMaxPartitions)) {
        return false;
    }
    unsigned extraBits = 0;
    if (head.partitions == 1) {
        head.endpointModes[0] = bits.Field(13, 4);
    } else {
        head.partitionIndex = static_cast<int>(bits.Field(13, 10));
        head.colorStart = kMultiPartitionColors;
        extraBits = ReadEndpointModes(bits, head);
    }
    for (int i = 0; i < head.partitions; ++i) {
        const unsigned mode = head.endpointModes[static_cast<std::size_t>(i)];
        if (IsHighRange(mode)) return false;
        head.colorValues += EndpointValues(mode);
    }
    if (head.colorValues > kMaxColorValues) return false;
    const int belowWeights = 128 - head.mode.weightBits - static_cast<int>(extraBits);
    const int selectorBits = head.mode.dualPlane ? 2 : 0;
    const int colorBits = belowWeights - selectorBits - static_cast<int>(head.colorStart);
    head.colorRange = ColorRangeFor(head.colorValues, colorBits);
    if (head.colorRange < 0) return false;
    if (head.mode.dualPlane) {
        head.secondPlaneChannel =
            static_cast<int>(bits.Field(static_cast<unsigned>(belowWeights - 2), 2));
    }
    return true;
}

void ReadEndpoints(const Bits128& bits, const BlockHead& head, Endpoints* endpoints) {
    uint8_t values[kMaxColorValues + kSequencePadding];
    DecodeSequence(ColorRange(head.colorRange), bits.DroppedBy(head.colorStart), head.colorValues,
                   ColorValues(head.colorRange), values);
    const uint8_t* next = values;
    for (int i = 0; i < head.partitions; ++i) {
        const unsigned mode = head.endpointModes[static_cast<std::size_t>(i)];
        endpoints[i] = DecodeEndpoints(mode, next);
        next += EndpointValues(mode);
    }
}

/// Weights of the grid points; beyond the last one zeros, since infill looks at the neighbours of
/// every point (with a factor of 0 where there is none).
using GridWeights = std::array<uint8_t, kMaxGridWeights + 16>;

void ReadWeights(const uint8_t* block, const BlockMode& mode, GridWeights& first,
                 GridWeights& second) {
    uint8_t sequence[kMaxGridWeights + kSequencePadding];
    DecodeSequence(WeightRange(mode.weightRange), Bits128::FromBytesReversed(block),
                   mode.weightCount, WeightValues(mode.weightRange), sequence);
    if (!mode.dualPlane) {
        std::memcpy(first.data(), sequence, mode.weightCount);
        std::memset(first.data() + mode.weightCount, 0, first.size() - mode.weightCount);
        return;
    }
    first.fill(0);
    second.fill(0);
    for (std::size_t i = 0; i < mode.weightCount / 2U; ++i) {
        first[i] = sequence[2 * i];
        second[i] = sequence[2 * i + 1];
    }
}

void Infill(const GridWeights& grid, const BlockMode& mode, const Footprint& footprint,
            uint8_t* weights) {
    const InfillTable& table = footprint.Infill(mode.gridWidth, mode.gridHeight);
    const int points = mode.gridWidth * mode.gridHeight;
    if (table.direct) {
        std::memcpy(weights, grid.data(), static_cast<std::size_t>(points));
        return;
    }
    // A point and its three neighbours in one number: one multiplication by the factors, which
    // stand in the opposite order, leaves the weighted sum in the top 16 bits. No sum below reaches
    // 16 bits (four weights of at most 64, factors of at most 16), so nothing is carried into it.
    uint64_t quads[kMaxGridWeights];
    for (int i = 0; i < points; ++i) {
        const uint8_t* const point = grid.data() + i;
        const uint8_t* const below = point + mode.gridWidth;
        quads[i] = point[0] | (uint64_t{point[1]} << 16) | (uint64_t{below[0]} << 32) |
                   (uint64_t{below[1]} << 48);
    }
    const uint8_t* const gridPoint = table.gridPoint.data();
    const uint64_t* const factors = table.factors.data();
    const int texels = footprint.Texels();
    for (int i = 0; i < texels; ++i) {
        const uint64_t sum = (quads[gridPoint[i]] * factors[i]) >> 48;
        weights[i] = static_cast<uint8_t>((sum + 8) >> 4);
    }
}

}  // namespace

bool DecodeBlock(const uint8_t* block, const Footprint& footprint, uint8_t* pixels) {
    const Bits128 bits = Bits128::FromBytes(block);
    if (bits.Field(0, 9) == kConstantColorMark) {
        return DecodeConstantColor(bits, footprint.Texels(), pixels);
    }
    BlockHead head;
    if (!ReadHead(bits, footprint, head)) return false;

    std::array<Endpoints, kMaxPartitions> endpoints;
    ReadEndpoints(bits, head, endpoints.data());

    GridWeights firstGrid;
    GridWeights secondGrid;
    ReadWeights(block, head.mode, firstGrid, secondGrid);
    TexelWeights first;
    TexelWeights second;
    Infill(firstGrid, head.mode, footprint, first.data());
    if (head.mode.dualPlane) Infill(secondGrid, head.mode, footprint, second.data());

    uint8_t scratch[kMaxBlockTexels];
    PaintJob job;
    job.texels = footprint.Texels();
    job.endpoints = endpoints.data();
    job.partitions = head.partitions;
    if (head.partitions > 1) {
        job.partitionMap = footprint.PartitionMap(head.partitions, head.partitionIndex, scratch);
    }
    job.weights = &first;
    if (head.mode.dualPlane) {
        job.secondWeights = &second;
        job.secondPlaneChannel = head.secondPlaneChannel;
    }
    Paint(job, pixels);
    return true;
}

}  // namespace astc_codec
