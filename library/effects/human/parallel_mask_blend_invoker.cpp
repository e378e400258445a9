// SPDX-License-Identifier: GPL-3.0-or-later
#include "effects/human/parallel_mask_blend_invoker.h"

#include <cstring>
#include <opencv2/core/hal/intrin.hpp>

#include "framework/shared/multiply_table.h"

namespace kelmo {
namespace {

constexpr int32_t kStripes = 8;
constexpr int kChannels = 4;
/// Pixels of one vector, and of one look at the mask.
constexpr int kVector = 4;
constexpr int kBlock = 16;
constexpr int kVectorBytes = kVector * kChannels;

using Pixels = cv::v_uint32x4;
using Lanes = cv::v_uint16x8;

Pixels Load(const uint8_t* bytes) {
    return cv::v_reinterpret_as_u32(cv::v_load(bytes));
}

bool AreAll(const Pixels& pixels, uint32_t value) {
    return cv::v_check_all(cv::v_reinterpret_as_u8(pixels) ==
                           cv::v_reinterpret_as_u8(cv::v_setall_u32(value)));
}

/// A table cannot be read at sixteen places at once. This is its content, worked out: with
/// t = product + 128, t + t / 256 has in its upper byte product / 255 to the nearest, for all
/// bytes.
Lanes Multiply(const Lanes& bytes, const Lanes& coverage) {
    const Lanes sum = cv::v_add_wrap(cv::v_mul_wrap(bytes, coverage), cv::v_setall_u16(128));
    return cv::v_add_wrap(sum, sum >> 8);
}

/// A lane of 16 bits holds two bytes of a pixel, which are worked on one after the other.
void BlendVector(uint8_t* dst, const uint8_t* src, const Pixels& coverage) {
    const Lanes factors = cv::v_reinterpret_as_u16(coverage | (coverage << 16));
    const Lanes both = cv::v_reinterpret_as_u16(cv::v_load(src));
    const Lanes even = Multiply(both & cv::v_setall_u16(0xFF), factors);
    const Lanes odd = Multiply(both >> 8, factors);
    const Lanes blended = (even >> 8) | (odd & cv::v_setall_u16(0xFF00));
    cv::v_store(dst, cv::v_reinterpret_as_u8(blended));
}

void BlendBlock(uint8_t* dst, const uint8_t* src, const uint8_t* mask) {
    const Pixels vectors[] = {Load(mask), Load(mask + kVectorBytes), Load(mask + 2 * kVectorBytes),
                              Load(mask + 3 * kVectorBytes)};
    // The first byte of a pixel is the lowest one of its lane.
    const Pixels first = cv::v_setall_u32(0xFF);
    if (AreAll((vectors[0] | vectors[1] | vectors[2] | vectors[3]) & first, 0)) {
        std::memset(dst, 0, kBlock * kChannels);
    } else if (AreAll(vectors[0] & vectors[1] & vectors[2] & vectors[3] & first, 0xFF)) {
        std::memcpy(dst, src, kBlock * kChannels);
    } else {
        for (int i = 0; i < kBlock / kVector; ++i) {
            BlendVector(dst + i * kVectorBytes, src + i * kVectorBytes, vectors[i] & first);
        }
    }
}

void BlendPixel(uint8_t* dst, const uint8_t* src, uint8_t coverage) {
    if (coverage == 0) {
        std::memset(dst, 0, kChannels);
    } else if (coverage == 255) {
        std::memcpy(dst, src, kChannels);
    } else {
        for (int channel = 0; channel < kChannels; ++channel) {
            dst[channel] = multiplyTable[src[channel] * 256 + coverage];
        }
    }
}

void BlendRow(uint8_t* dst, const uint8_t* src, const uint8_t* mask, int pixels) {
    int x = 0;
    for (; x + kBlock <= pixels; x += kBlock) {
        BlendBlock(dst + x * kChannels, src + x * kChannels, mask + x * kChannels);
    }
    for (; x < pixels; ++x) {
        BlendPixel(dst + x * kChannels, src + x * kChannels, mask[x * kChannels]);
    }
}

}  // namespace

parallelMaskBlendInvoker::parallelMaskBlendInvoker(cv::Mat* dst, const cv::Mat* src,
                                                   const cv::Mat* mask, int32_t stripeCount)
    : dst(dst), src(src), mask(mask), stripeCount(stripeCount) {
    CV_Assert(src->type() == CV_8UC4 && mask->type() == CV_8UC4 && dst->type() == CV_8UC4);
    CV_Assert(src->size() == dst->size() && mask->size() == dst->size() && stripeCount > 0);
}

cv::Range parallelMaskBlendInvoker::RowsOf(int32_t stripe) const {
    const int32_t rowsPerStripe = dst->rows / stripeCount;
    const int32_t first = stripe * rowsPerStripe;
    return {first, stripe == stripeCount - 1 ? dst->rows : first + rowsPerStripe};
}

void parallelMaskBlendInvoker::operator()(const cv::Range& stripes) const {
    for (int32_t stripe = stripes.start; stripe < stripes.end; ++stripe) {
        const cv::Range rows = RowsOf(stripe);
        for (int y = rows.start; y < rows.end; ++y) {
            BlendRow(dst->ptr(y), src->ptr(y), mask->ptr(y), dst->cols);
        }
    }
}

void BlendWithMask(cv::Mat& dst, const cv::Mat& src, const cv::Mat& mask) {
    dst.create(src.size(), CV_8UC4);
    cv::parallel_for_(cv::Range(0, kStripes),
                      parallelMaskBlendInvoker(&dst, &src, &mask, kStripes));
}

}  // namespace kelmo
