// SPDX-License-Identifier: GPL-3.0-or-later
#include "ai/mask/person_mask.h"

#include <algorithm>
#include <cmath>
#include <opencv2/imgproc.hpp>
#include <vector>

namespace kelmo {

namespace {

constexpr int kSize = 256;
/// A smaller share of the frame is no person.
constexpr float kMinArea = 0.002f;
/// Intersection over union with the mask before, from which it shows the same people.
constexpr float kSamePeople = 0.1f;
constexpr float kKept = 0.7f;
/// Shares of the frame: a smaller hole in a person is a mistake, a larger one than the second none.
constexpr double kSpeck = 0.0008;
constexpr double kLargestHole = 0.008;
/// Mean over a hole between both from which the network is unsure about it.
constexpr double kUnsure = 0.25;
constexpr double kFilled = 0.98;

float Area(const cv::Mat& mask) {
    const float* value = mask.ptr<float>();
    const int count = static_cast<int>(mask.total());
    int inside = 0;
    for (int i = 0; i < count; ++i) inside += value[i] > 0.5f ? 1 : 0;
    return static_cast<float>(inside) / static_cast<float>(count);
}

float MaskOverlap(const cv::Mat& a, const cv::Mat& b) {
    // Whole numbers may be added in any order, many at a time.
    constexpr float kSteps = 16000.0f;
    const float* first = a.ptr<float>();
    const float* second = b.ptr<float>();
    int64_t both = 0, either = 0;
    const int width = a.cols;
    for (int y = 0; y < a.rows; ++y, first += width, second += width) {
        int32_t lower = 0, upper = 0;
        for (int x = 0; x < width; ++x) {
            lower += static_cast<int32_t>(std::min(first[x], second[x]) * kSteps);
            upper += static_cast<int32_t>(std::max(first[x], second[x]) * kSteps);
        }
        both += lower;
        either += upper;
    }
    return either > 0 ? static_cast<float>(both) / static_cast<float>(either) : 0.0f;
}

/// Moves `mask` towards `found`: less where the network is unsure.
void Blend(const cv::Mat& found, cv::Mat& mask) {
    const float* next = found.ptr<float>();
    float* value = mask.ptr<float>();
    const int count = static_cast<int>(mask.total());
    for (int i = 0; i < count; ++i) {
        const float sureness = 2 * next[i] - 1;
        const float kept = kKept * (1 - sureness * sureness);
        value[i] = next[i] + (value[i] - next[i]) * kept;
    }
}

/// Closes what the network leaves open inside a person: specks in dark clothes or fair hair, and
/// larger places where it is unsure. The gap between an arm and the body is large and sure.
void CloseHoles(cv::Mat& mask) {
    const cv::Mat inside = mask > 0.5f;
    std::vector<std::vector<cv::Point>> outlines;
    std::vector<cv::Vec4i> nesting;
    cv::findContours(inside, outlines, nesting, cv::RETR_CCOMP, cv::CHAIN_APPROX_NONE);
    const double frame = static_cast<double>(mask.total());
    for (size_t i = 0; i < outlines.size(); ++i) {
        if (nesting[i][3] < 0) continue;  // the outer edge of somebody
        const double share = cv::contourArea(outlines[i]) / frame;
        if (share > kLargestHole) continue;
        cv::Mat hole = cv::Mat::zeros(mask.size(), CV_8U);
        cv::drawContours(hole, outlines, static_cast<int>(i), cv::Scalar(255), cv::FILLED);
        // The outline of a hole is made of the person's pixels around it.
        hole &= ~inside;
        if (share > kSpeck && cv::mean(mask, hole)[0] < kUnsure) continue;
        mask.setTo(kFilled, hole);
    }
}

}  // namespace

PersonMask::PersonMask(std::shared_ptr<ModelStore> store)
    : store(store), gate(store), mask(cv::Mat::zeros(kSize, kSize, CV_32F)) {}

bool PersonMask::RunNetwork(PicturePyramid& frame, cv::Mat& result) {
    NetworkLease network = store->Lease(NetworkId::kPersonMask);
    if (!network) return false;
    cv::Rect place(0, 0, kSize, kSize);
    if (frame.Size().width > frame.Size().height)
        place = frame.Fit(kSize, ColourRange::kZeroToOne, network->Input()).place;
    else
        PicturePyramid::ToInput(change.Reduced(), ColourRange::kZeroToOne, network->Input());
    if (!network->Run()) return false;
    const float* const output = network->Output(0).data();
    result.create(place.size(), CV_32F);
    for (int y = 0; y < place.height; ++y)
        std::copy_n(output + (place.y + y) * kSize + place.x, place.width, result.ptr<float>(y));
    CloseHoles(result);
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
    if (succession == Succession::kSame) return ran;
    ran = RunNetwork(frame, found);
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
