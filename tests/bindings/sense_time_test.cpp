// SPDX-License-Identifier: GPL-3.0-or-later
// The face library's functions: all there, one missing, none.
#include <gtest/gtest.h>

#include "bindings/sense_time_wrapper.h"

namespace THIRD_LIBRARY_IMPORT {
namespace {

constexpr const char* kNames[] = {
#define KELMO_FACE_SDK_NAME(NAME) #NAME,
    KELMO_FACE_SDK_FUNCTIONS(KELMO_FACE_SDK_NAME)
#undef KELMO_FACE_SDK_NAME
};

template <typename... Arguments>
int32_t Answer(Arguments...) {
    return 7;
}

void* Function(const std::string& name) {
#define KELMO_FACE_SDK_DOUBLE(NAME) \
    if (name == #NAME) return reinterpret_cast<void*>(static_cast<decltype(&kelmo::NAME)>(&Answer));
    KELMO_FACE_SDK_FUNCTIONS(KELMO_FACE_SDK_DOUBLE)
#undef KELMO_FACE_SDK_DOUBLE
    return nullptr;
}

/// Functions of a library that lacks `missing`; all give 7.
std::shared_ptr<SenseTimeSymbols> Without(const std::string& missing, bool& whole) {
    auto symbols = std::make_shared<SenseTimeSymbols>("st_mobile.dll");
    whole =
        symbols->Bind([&](const char* name) { return name == missing ? nullptr : Function(name); });
    return symbols;
}

int BoundCount(const SenseTimeSymbols& symbols) {
    int bound = 0;
#define KELMO_FACE_SDK_COUNT(NAME) bound += symbols.NAME != nullptr;
    KELMO_FACE_SDK_FUNCTIONS(KELMO_FACE_SDK_COUNT)
#undef KELMO_FACE_SDK_COUNT
    return bound;
}

class SenseTime : public ::testing::Test {
protected:
    ~SenseTime() override { ForgetSenseTimeSymbolsForTesting(); }
};

TEST_F(SenseTime, BindsUpToTheFirstFunctionThatIsMissing) {
    for (std::size_t i = 0; i < std::size(kNames); ++i) {
        bool whole = true;
        testing::internal::CaptureStdout();
        const auto symbols = Without(kNames[i], whole);
        EXPECT_EQ(testing::internal::GetCapturedStdout(),
                  std::string("load func (") + kNames[i] + ") from (st_mobile.dll) failed!\n");
        EXPECT_FALSE(whole);
        EXPECT_EQ(BoundCount(*symbols), static_cast<int>(i)) << kNames[i];
    }
    bool whole = false;
    EXPECT_EQ(BoundCount(*Without("", whole)), 18);
    EXPECT_TRUE(whole);
}

TEST_F(SenseTime, GivesWhatTheLibraryGivesAndMinusFourForWhatItLacks) {
    for (const bool there : {true, false}) {
        bool whole = false;
        testing::internal::CaptureStdout();
        SetSenseTimeSymbolsForTesting(Without(there ? "" : kNames[0], whole));
        testing::internal::GetCapturedStdout();
        const SenseTimeWrapper wrapper("folder");
        EXPECT_TRUE(wrapper.IsReady());
        void* handle = nullptr;
        float strength = 0.0F;
        kelmo::FaceSdkResult found;
        kelmo::FaceSdkRenderOutput output;
        testing::internal::CaptureStdout();
        const int32_t results[] = {
            wrapper.CreateEffect(&handle),
            wrapper.DestroyEffect(handle),
            wrapper.SetBeautyStrength(handle, 1, 0.5F),
            wrapper.GetBeautyStrength(handle, 1, strength),
            wrapper.SetBeautyParam(handle, 0, 1.0F),
            wrapper.CreateHumanAction("", 0, &handle),
            wrapper.DetectHumanAction(handle, nullptr, 4, 0, 0, 0, 0, 1, found),
            wrapper.DestroyHumanAction(handle),
            wrapper.Render(handle, {}, output),
            wrapper.ChangePackage(handle, "x"),
            wrapper.ReleaseCachedResource(handle),
            wrapper.SetOpenGLLibrary("gl")};
        std::string lines;
        for (const int32_t result : results) {
            EXPECT_EQ(result, there ? 7 : SenseTimeWrapper::kMissing);
            if (!there) lines += "API is null\n";
        }
        EXPECT_EQ(testing::internal::GetCapturedStdout(), lines);
    }
}

TEST_F(SenseTime, IsNotReadyWithoutTheLibrary) {
    SetSenseTimeSymbolsForTesting(nullptr);
    EXPECT_FALSE(SenseTimeWrapper("folder").IsReady());
    SenseTimeSymbols nowhere("no_such_face_library.dll");
    testing::internal::CaptureStdout();
    EXPECT_FALSE(nowhere.Load());
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "load lib: no_such_face_library.dll error\n");
    EXPECT_EQ(BoundCount(nowhere), 0);
}

}  // namespace
}  // namespace THIRD_LIBRARY_IMPORT
