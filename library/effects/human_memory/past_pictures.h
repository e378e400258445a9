// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>
#include <opencv2/core.hpp>
#include <vector>

namespace kelmo {

/// A queue of fixed length: each new picture drives out the oldest one. Full from the beginning,
/// with blank pictures of 4 x 4.
///
/// Pictures are copied, and made smaller where nobody sees it, so that a long queue at 4K stays
/// within memory: masks become grey and at most `kMaskSide` on their shorter side (networks find
/// people in less), cutouts at most `kCutoutSide`. Memory is reused from one picture to the next.
class PastPictures {
public:
    enum class Content { kMask, kCutout };
    static constexpr int kMaskSide = 540;
    static constexpr int kCutoutSide = 1080;

    PastPictures();

    /// All blank again, `count` (at least 1) of them.
    void Restart(std::size_t count);
    /// `picture` has 4 channels of 8 bits.
    void Push(const cv::Mat& picture, Content content);
    std::size_t Count() const { return ring.size(); }
    /// Counted from the oldest, 0; valid until the next `Push`. One channel or four.
    const cv::Mat& At(std::size_t age) const;

private:
    cv::Mat blank;
    std::vector<cv::Mat> ring;
    /// Where the oldest one lies.
    std::size_t front = 0;
    cv::Mat small;
};

}  // namespace kelmo
