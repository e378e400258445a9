// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <opencv2/core.hpp>

namespace kelmo {

/// Cuts a person out: each byte of a picture times the first byte of its mask pixel, as
/// `multiplyTable` has it. The body of a parallel loop over stripes, which write disjoint rows.
///
/// All three pictures are 8 bits with 4 channels, of one size, and borrowed; `dst` is written
/// whole. Most pixels of a mask are all outside or all inside, so that blocks of these are cleared
/// or copied.
class parallelMaskBlendInvoker : public cv::ParallelLoopBody {
public:
    parallelMaskBlendInvoker(cv::Mat* dst, const cv::Mat* src, const cv::Mat* mask,
                             int32_t stripeCount);
    void operator()(const cv::Range& stripes) const override;

private:
    /// The last stripe takes the rows that the division leaves.
    cv::Range RowsOf(int32_t stripe) const;

    cv::Mat* dst;
    const cv::Mat* src;
    const cv::Mat* mask;
    int32_t stripeCount;
};

/// The same over all rows, on OpenCV's threads; makes `dst` fit.
void BlendWithMask(cv::Mat& dst, const cv::Mat& src, const cv::Mat& mask);

}  // namespace kelmo
