// SPDX-License-Identifier: GPL-3.0-or-later
#include "ai/mask/person_mask.h"

#include <algorithm>
#include <cmath>

namespace kelmo {

namespace {

constexpr int kSize = 256;
/// A smaller share of the frame is no person.
constexpr float kMinArea = 0.002f;
/// Intersection over union with the mask before, from which it shows the same people.
constexpr float kSamePeople = 0.1f;
constexpr float kKept = 0.7f;

float Area(const cv::Mat& mask) {
    return static_cast<float>(cv::countNonZero(mask > 0.5)) / static_cast<float>(mask.total());
}

float MaskOverlap(const cv::Mat& a, const cv::Mat& b) {
    cv::Mat lower, upper;
    cv::min(a, b, lower);
    cv::max(a, b, upper);
    const double whole = cv::sum(upper)[0];
    return whole > 0 ? static_cast<float>(cv::sum(lower)[0] / whole) : 0.0f;
}

/// Moves `mask` towards `found`: less where the network is unsure.
void Blend(const cv::Mat& found, cv::Mat& mask) {
    const float* next = found.ptr<float>();
    float* value = mask.ptr<float>();
    for (size_t i = 0; i < mask.total(); ++i) {
        const float sureness = 2 * next[i] - 1;
        const float kept = kKept * (1 - sureness * sureness);
        value[i] = next[i] + (value[i] - next[i]) * kept;
    }
}

}  // namespace

PersonMask::PersonMask(std::shared_ptr<ModelStore> store)
    : store(store), gate(store), mask(cv::Mat::zeros(kSize, kSize, CV_32F)) {}

bool PersonMask::RunNetwork(cv::Mat& result) {
    NetworkLease network = store->Lease(NetworkId::kPersonMask);
    if (!network) return false;
    PicturePyramid::ToInput(change.Reduced(), ColourRange::kZeroToOne, network->Input());
    if (!network->Run()) return false;
    const std::span<const float> output = network->Output(0);
    result.create(kSize, kSize, CV_32F);
    std::copy(output.begin(), output.end(), result.ptr<float>());
    return true;
}

bool PersonMask::Counts(const cv::Mat& next, Succession succession, PicturePyramid& frame) {
    if (Area(next) < kMinArea) return false;
    if (someone && succession == Succession::kContinues && MaskOverlap(mask, next) >= kSamePeople)
        return true;
    return gate.SeesPerson(frame);
}

bool PersonMask::Next(PicturePyramid& frame) {
    const Succession succession = change.Next(frame);
    if (succession == Succession::kSame) return true;
    const bool ran = RunNetwork(found);
    const bool before = someone;
    someone = ran && Counts(found, succession, frame);
    if (!someone)
        mask.setTo(0.0f);
    else if (!before || succession == Succession::kJump)
        found.copyTo(mask);
    else
        Blend(found, mask);
    return ran;
}

}  // namespace kelmo
