// SPDX-License-Identifier: GPL-3.0-or-later
#include "tools/measure/reference_statistics.h"

#include <array>
#include <cstdio>
#include <nlohmann/json.hpp>
#include <opencv2/imgproc.hpp>
#include <stdexcept>

#include "framework/textures/texture_file.h"

namespace kelmo::measure {
namespace {

// The parameters' names count channels in the order b, g, r; what they hold are l, alpha, beta.
constexpr std::array<const char*, 3> kMeans = {"mean_b", "mean_g", "mean_r"};
constexpr std::array<const char*, 3> kDeviations = {"stddb", "stddg", "stddr"};

void Premultiply(cv::Mat& bgra) {
    bgra.forEach<cv::Vec4b>([](cv::Vec4b& pixel, const int*) {
        for (int channel = 0; channel < 3; ++channel) {
            pixel[channel] = static_cast<uint8_t>((pixel[channel] * pixel[3] + 127) / 255);
        }
    });
}

cv::Mat ToFrame(const cv::Mat& picture) {
    cv::Mat bytes = picture;
    if (picture.depth() == CV_16U) picture.convertTo(bytes, CV_8U, 1.0 / 257.0);
    if (bytes.depth() != CV_8U) return {};
    cv::Mat frame;
    switch (bytes.channels()) {
        case 1:
            cv::cvtColor(bytes, frame, cv::COLOR_GRAY2BGRA);
            return frame;
        case 3:
            cv::cvtColor(bytes, frame, cv::COLOR_BGR2BGRA);
            return frame;
        case 4:
            frame = bytes.clone();
            Premultiply(frame);
            return frame;
        default:
            return {};
    }
}

template <typename Visit>
void ForEachValue(const ColorStatistics& statistics, Visit visit) {
    for (std::size_t i = 0; i < 3; ++i) visit(kMeans[i], statistics.mean[i]);
    for (std::size_t i = 0; i < 3; ++i) visit(kDeviations[i], statistics.deviation[i]);
}

}  // namespace

ColorStatistics MeasureFile(const std::string& path) {
    cv::Mat frame;
    try {
        frame = ToFrame(ReadImageFile(path));
    } catch (const cv::Exception&) {
        frame.release();
    }
    if (frame.empty()) throw std::runtime_error(path + ": no picture that can be read");
    cv::Mat scratch;
    return MeasureColor(frame, scratch);
}

std::string AsParameters(const ColorStatistics& statistics) {
    std::string text;
    ForEachValue(statistics, [&](const char* name, double value) {
        char word[64];
        std::snprintf(word, sizeof word, "%s-p %s=%.6f", text.empty() ? "" : " ", name, value);
        text += word;
    });
    return text;
}

std::string AsJson(const ColorStatistics& statistics) {
    nlohmann::ordered_json json;
    ForEachValue(statistics, [&](const char* name, double value) { json[name] = value; });
    return json.dump(2);
}

}  // namespace kelmo::measure
