// SPDX-License-Identifier: GPL-3.0-or-later
#include "framework/engine/effect_engine.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/support/engine_session.h"
#include "tests/support/recording_host.h"

namespace kelmo {
namespace {

using test::AcquiredHost;
using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;

/// The engine as a process starts with it, looked for in one of the folders of fake libraries.
class EffectEngineTest : public ::testing::Test {
protected:
    ~EffectEngineTest() override {
        SetEngineFolderForTesting("");
        SetOpenGLDevice(false);
    }
    static void LookIn(const std::string& folder) {
        SetEngineFolderForTesting(KELMO_FAKE_ENGINE_FOLDER "/" + folder);
    }

    AcquiredHost host;
};

TEST_F(EffectEngineTest, DeviceStateStartsWithoutADevice) {
    EXPECT_FALSE(HasOpenGLDevice());
    EXPECT_EQ(NoOpenGLDevice(), 1);
    SetOpenGLDevice(true);
    EXPECT_TRUE(HasOpenGLDevice());
    EXPECT_EQ(NoOpenGLDevice(), 0);
}

TEST_F(EffectEngineTest, WithADeviceTheFirstLibraryIsUsedAndOnlyOnce) {
    LookIn("all");
    SetOpenGLDevice(true);
    NLEOpenGLEffectEngine* const engine = AcquireEffectEngine();
    ASSERT_NE(engine, nullptr);
    EXPECT_EQ(AcquireEffectEngine(), engine);
    EXPECT_THAT(host.Texts(kLogInfo), ElementsAre("TZOpenGLEffectMgr asked, no device: 0"));
}

TEST_F(EffectEngineTest, WithoutADeviceMesaIsAskedFirst) {
    LookIn("all");
    ASSERT_NE(AcquireEffectEngine(), nullptr);
    EXPECT_THAT(host.Texts(kLogInfo), ElementsAre("TZOpenGLEffectMgr-mesa asked, no device: 1"));
    EXPECT_THAT(host.Texts(kLogError), IsEmpty());
}

TEST_F(EffectEngineTest, ALibraryThatRefusesMakesWayForTheNext) {
    LookIn("refusing");
    ASSERT_NE(AcquireEffectEngine(), nullptr);
    EXPECT_THAT(host.Texts(kLogInfo), ElementsAre("TZOpenGLEffectMgr-mesa asked, no device: 1",
                                                  "TZOpenGLEffectMgr-dx asked, no device: 1"));
    EXPECT_THAT(host.Texts(kLogError), ElementsAre("load TZOpenGLEffectMgr-mesa.dll failed !,try "
                                                   "TZOpenGLEffectMgr-dx.dll"));
}

TEST_F(EffectEngineTest, ALibraryWithoutTheDestroyExportIsNeverAsked) {
    LookIn("lacking");
    EXPECT_EQ(AcquireEffectEngine(), nullptr);
    EXPECT_THAT(host.Texts(kLogInfo), IsEmpty());
    EXPECT_THAT(host.Texts(kLogError),
                ElementsAre("load TZOpenGLEffectMgr-mesa.dll failed !,try "
                            "TZOpenGLEffectMgr-dx.dll",
                            "load TZOpenGLEffectMgr-dx.dll failed !,no opengl can use!l"));
    EXPECT_THAT(host.Texts(kLogWarning),
                Contains(HasSubstr("DestroyNLEOpenGLEffectEngineInstance")));
}

TEST_F(EffectEngineTest, WithADeviceThereIsNoFallback) {
    LookIn("refusing");
    SetOpenGLDevice(true);
    EXPECT_EQ(AcquireEffectEngine(), nullptr);
    EXPECT_THAT(host.Texts(kLogError), ElementsAre("load TZOpenGLEffectMgr.dll failed !"));
}

TEST_F(EffectEngineTest, AFailedSearchIsRepeatedByTheNextCall) {
    LookIn("empty");
    EXPECT_EQ(AcquireEffectEngine(), nullptr);
    const std::size_t lines = host.Texts(kLogError).size();
    EXPECT_EQ(AcquireEffectEngine(), nullptr);
    EXPECT_EQ(host.Texts(kLogError).size(), 2 * lines);
}

TEST_F(EffectEngineTest, ShutdownReturnsTheEngineAndALaterCallAsksTheSameLibraryAgain) {
    LookIn("all");
    SetOpenGLDevice(true);
    ShutdownEffectEngine();
    AcquireEffectEngine();
    ShutdownEffectEngine();
    ShutdownEffectEngine();
    EXPECT_NE(AcquireEffectEngine(), nullptr);
    EXPECT_THAT(host.Texts(kLogInfo),
                ElementsAre("TZOpenGLEffectMgr asked, no device: 0", "TZOpenGLEffectMgr destroyed",
                            "TZOpenGLEffectMgr asked, no device: 0"));
}

TEST_F(EffectEngineTest, AHostThatComesBackWithAnotherDeviceGetsTheOtherLibrary) {
    LookIn("all");
    AcquireEffectEngine();
    ShutdownEffectEngine();
    host.ClearLines();
    SetOpenGLDevice(true);
    AcquireEffectEngine();
    EXPECT_THAT(host.Texts(kLogInfo), ElementsAre("TZOpenGLEffectMgr asked, no device: 0"));
}

TEST_F(EffectEngineTest, ALibraryThatRefusesAfterAShutdownMakesWayForTheNext) {
    LookIn("all");
    AcquireEffectEngine();
    ShutdownEffectEngine();
    host.ClearLines();
    setenv("KELMO_FAKE_REFUSING", "TZOpenGLEffectMgr-mesa", 1);
    EXPECT_EQ(PresentEffectEngine(), nullptr);
    EXPECT_NE(AcquireEffectEngine(), nullptr);
    unsetenv("KELMO_FAKE_REFUSING");
    EXPECT_EQ(host.Texts(kLogInfo).back(), "TZOpenGLEffectMgr-dx asked, no device: 1");
    EXPECT_EQ(host.Texts(kLogError).size(), 1U);
}

TEST_F(EffectEngineTest, AnEngineOfATestIsForgottenAndNeverDestroyed) {
    test::RecordingEngine engine;
    SetEngineForTesting(&engine);
    EXPECT_EQ(AcquireEffectEngine(), &engine);
    ShutdownEffectEngine();
    LookIn("empty");
    EXPECT_EQ(AcquireEffectEngine(), nullptr);
}

}  // namespace
}  // namespace kelmo
