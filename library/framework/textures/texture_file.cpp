// SPDX-License-Identifier: GPL-3.0-or-later
#include "framework/textures/texture_file.h"

#include <climits>
#include <memory>
#include <opencv2/imgcodecs.hpp>
#include <opencv2/imgproc.hpp>

#include "framework/astc/astc_file.h"
#include "platform/file_system.h"
#include "platform/host_access.h"

namespace kelmo {

namespace {

constexpr std::size_t kShortestImage = 4;

bool IsAstcPath(const std::string& path) {
    return path.size() >= 5 && path.find(".astc") != std::string::npos;
}

bool LoadAstc(const std::string& path, const std::string& bytes, cv::Mat& out) {
    std::string error;
    const std::unique_ptr<astc_codec::ASTCFile> file =
        astc_codec::LoadFromMemory(bytes.data(), bytes.size(), error);
    if (!file) {
        LogError("Load Texture astcFile Failed: %s, error:%s", path.c_str(), error.c_str());
        return false;
    }
    const auto width = static_cast<std::size_t>(file->width);
    const auto height = static_cast<std::size_t>(file->height);
    out.create(static_cast<int>(height), static_cast<int>(width), CV_8UC4);
    if (!astc_codec::DecompressToImage(*file, out.data, height * width * 4, width * 4)) {
        LogError("Load Texture Failed when astcFile DecompressToImage : %s", path.c_str());
        return false;
    }
    cv::cvtColor(out, out, cv::COLOR_RGBA2BGRA);
    cv::flip(out, out, 0);
    return true;
}

cv::Mat DecodeImage(const std::string& bytes) {
    if (bytes.size() < kShortestImage || bytes.size() > INT_MAX) return {};
    const cv::Mat view(1, static_cast<int>(bytes.size()), CV_8U, const_cast<char*>(bytes.data()));
    return cv::imdecode(view, cv::IMREAD_UNCHANGED);
}

/// Factor that brings the full range of a depth to 0..255.
double ScaleToBytes(int depth) {
    switch (depth) {
        case CV_8S:
            return 255.0 / 127.0;
        case CV_16U:
            return 255.0 / 65535.0;
        case CV_16S:
            return 255.0 / 32767.0;
        case CV_32S:
            return 255.0 / 2147483647.0;
        case CV_8U:
            return 1.0;
        default:
            return 255.0;
    }
}

/// The first three channels as BGRA.
cv::Mat FirstChannels(const cv::Mat& picture) {
    cv::Mat bgr(picture.size(), CV_MAKETYPE(picture.depth(), 3));
    const int pairs[] = {0, 0, 1, 1, 2, 2};
    cv::mixChannels(&picture, 1, &bgr, 1, pairs, 3);
    return bgr;
}

bool HasMaterialLayout(const cv::Mat& picture) {
    const int type = picture.type();
    return (picture.depth() == CV_8U && picture.channels() <= 4) || type == CV_16UC4;
}

}  // namespace

bool LoadTextureFile(const std::string& path, cv::Mat& out, int32_t* astcFlag) {
    std::string bytes;
    ReadWholeFile(path, bytes);
    if (IsAstcPath(path)) {
        if (astcFlag != nullptr) *astcFlag = 1;
        return LoadAstc(path, bytes, out);
    }
    out = DecodeImage(bytes);
    if (out.empty()) {
        LogError("Load Texture Failed: %s", path.c_str());
        return false;
    }
    if (out.channels() == 3) cv::cvtColor(out, out, cv::COLOR_BGR2BGRA);
    if (out.channels() == 1) cv::cvtColor(out, out, cv::COLOR_GRAY2BGRA);
    cv::flip(out, out, 0);
    return true;
}

cv::Mat ReadImageFile(const std::string& path) {
    std::string bytes;
    ReadWholeFile(path, bytes);
    try {
        return DecodeImage(bytes);
    } catch (const cv::Exception& error) {
        LogError("Load Texture Failed: %s: %s", path.c_str(), error.what());
        return {};
    }
}

cv::Mat ToMaterialLayout(const cv::Mat& picture) {
    cv::Mat result = picture;
    if (result.channels() > 4) result = FirstChannels(result);
    if (!HasMaterialLayout(result)) {
        result.convertTo(result, CV_8U, ScaleToBytes(result.depth()));
    }
    if (result.channels() == 3) cv::cvtColor(result, result, cv::COLOR_BGR2BGRA);
    return result.isContinuous() ? result : result.clone();
}

MaterialView MaterialView::Of(const cv::Mat& picture) {
    if (picture.empty()) return {};
    return {picture.data, picture.cols, picture.rows,
            static_cast<int32_t>(picture.cols * picture.elemSize())};
}

}  // namespace kelmo
