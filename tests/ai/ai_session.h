// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <opencv2/core.hpp>
#include <string>
#include <vector>

#include "contract/ai_filter.h"

namespace kelmo::test {

/// Folder of resources of the build tree, with or without models in it.
std::string Resources();
std::string ModelFolder();
bool HaveModels();

#define KELMO_NEED_MODELS()         \
    if (!kelmo::test::HaveModels()) \
    GTEST_SKIP() << "the networks are not there; scripts/fetch-models gets them"

/// The library as the plug-in sees it: loaded once, by its exports. Lines that it logs are
/// collected.
struct AiLibrary {
    static AiLibrary& Get();

    CreateNLEAIEffectFilterFromGUIDFn create = nullptr;
    DeleteNLEAIEffectFilterFn destroy = nullptr;
    NLEEffectFilterTransformFn transform = nullptr;
    NLEEffectFilterSetParameterFn setParameter = nullptr;
    NLEEffectFilterGetAIResDataFn getResult = nullptr;

    /// Lines since the last call.
    static std::vector<std::string> TakeLog();

private:
    AiLibrary();
};

/// One filter of the library.
class AiSession {
public:
    explicit AiSession(const char* guid, const std::string& resources = Resources());
    ~AiSession();
    AiSession(const AiSession&) = delete;
    AiSession& operator=(const AiSession&) = delete;

    bool Exists() const { return handle != nullptr; }
    void* Handle() const { return handle; }
    int32_t Set(const char* name, float value);
    /// The first channel of the mask of a frame, of the size `size` or the frame's; checks that all
    /// channels are alike.
    cv::Mat Mask(const cv::Mat& bgra, cv::Size size = {});
    std::shared_ptr<AIDATA::HumanFaceInfoMultiDatas> Faces(const cv::Mat& bgra);
    std::shared_ptr<AIDATA::HumanPoseDatas> Bodies(const cv::Mat& bgra);

private:
    std::shared_ptr<AIDATA::BaseAIDATA> Analyse(const cv::Mat& bgra);
    void* handle;
};

inline constexpr const char* kMask = "2193B116-1AD4-49F4-84A1-FFA3CB983A94";
inline constexpr const char* kEdgeMask = "974A1C95-921E-4D28-89D5-23B7B249589A";
inline constexpr const char* kFace = "0C670CEA-AF42-4309-B86B-7A3169EAC541";
inline constexpr const char* kFaceShock = "AD36FDCA-6B5E-4399-8625-DE97EBF12E41";
inline constexpr const char* kPose = "02E5BBF3-8C49-4392-9B0F-5B72E56FC762";

/// A photo of build/media as 4 channels; empty when it was not fetched.
cv::Mat Photo(const std::string& name);
/// Moved by whole and broken pixels, the border repeated.
cv::Mat Moved(const cv::Mat& bgra, float x, float y);
/// With even noise of a deviation, the same for the same seed.
cv::Mat Noisy(const cv::Mat& bgra, double deviation, uint64_t seed);
cv::Mat Mirrored(const cv::Mat& bgra);

#define KELMO_NEED_PHOTO(variable, name)                                              \
    const cv::Mat variable = kelmo::test::Photo(name);                                \
    if (variable.empty())                                                             \
    GTEST_SKIP() << "the photo " << name << " is not there; scripts/fetch-media and " \
                 << "scripts/fetch-models --test-photos get it"

/// Skipped without the networks and the photo of scripts/fetch-media.
class PhotoTest : public ::testing::Test {
protected:
    void SetUp() override;
    const cv::Mat astronaut = Photo("astronaut.png");
};

}  // namespace kelmo::test
