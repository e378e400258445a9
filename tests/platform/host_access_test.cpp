// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/host_access.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <thread>
#include <vector>

#include "support/recording_host.h"

namespace kelmo::test {
namespace {

using testing::Each;
using testing::ElementsAre;
using testing::IsEmpty;

void Forward(int32_t level, const char* format, ...) {
    va_list arguments;
    va_start(arguments, format);
    ForwardLibraryLog(level, format, arguments);
    va_end(arguments);
}

TEST(HostAccess, AsksForTheFourSuitesInTheirOrder) {
    AcquiredHost host;
    EXPECT_THAT(host.acquiredNames,
                ElementsAre("Memory Allocator Suite", "Image Buffer ALlocator Suite",
                            "Host Util Suite", "GPU Device Suite"));
    EXPECT_THAT(host.acquiredVersions, Each(1));
    EXPECT_NE(HostUtil(), nullptr);
    EXPECT_NE(GpuDevices(), nullptr);
}

TEST(HostAccess, LivesWithAHostThatLacksSuites) {
    RecordingHost host;
    host.missingSuites = {kMemoryAllocatorSuite, kImageBufferAllocatorSuite, kHostUtilSuite,
                          kGpuDeviceSuite};
    AcquireHostSuites(&host);
    EXPECT_EQ(HostUtil(), nullptr);
    EXPECT_EQ(GpuDevices(), nullptr);
    LogError("nobody hears %d", 1);
    EXPECT_THAT(host.Lines(), IsEmpty());
    EXPECT_EQ(HostPath(kPathResources), "resources");
    AcquireHostSuites(nullptr);
}

TEST(HostAccess, ForgetsAHostThatWentAway) {
    {
        AcquiredHost host;
        ASSERT_NE(HostUtil(), nullptr);
    }
    EXPECT_EQ(HostUtil(), nullptr);
    EXPECT_EQ(GpuDevices(), nullptr);
    LogInfo("to nobody");
    Forward(kLogInfo, "to nobody");
}

TEST(HostAccess, PresetsTheBufferOfAPathAndReturnsTheAnswer) {
    AcquiredHost host;
    EXPECT_EQ(HostPath(kPathResources), "resources");
    host.resourceFolder = "/data/\u7d20\u6750";
    host.pluginFolder = "/plugins";
    EXPECT_EQ(HostPath(kPathResources), "/data/\u7d20\u6750");
    EXPECT_EQ(HostPath(kPathPlugin), "/plugins");
    EXPECT_THAT(host.pathPresets, ElementsAre("resources", "resources", "qorPlugin"));
    EXPECT_THAT(host.pathSizes, Each(4096));
}

TEST(HostAccess, StaysInsideTheBufferOfALongPath) {
    AcquiredHost host;
    for (const std::size_t size : {2000u, 4094u, 5000u}) {
        host.resourceFolder.assign(size, 'x');
        EXPECT_EQ(HostPath(kPathResources), std::string(std::min<std::size_t>(size, 4095), 'x'));
        EXPECT_EQ(host.Texts(kLogError).size(), size > 4094 ? 1u : 0u);
    }
}

TEST(HostAccess, LogsAtTheLevelOfTheFunction) {
    AcquiredHost host;
    LogInfo("info %d", 1);
    LogWarning("warning %s", "two");
    LogError("error %.1f", 3.0);
    Forward(7, "library %c", 'x');
    EXPECT_THAT(host.Lines(), ElementsAre(LogLine{2, "info 1"}, LogLine{3, "warning two"},
                                          LogLine{4, "error 3.0"}, LogLine{7, "library x"}));
}

TEST(HostAccess, HandsPercentSignsOfATextOnAsTheyAre) {
    AcquiredHost host;
    LogError("%s", "100%n %s %d");
    EXPECT_THAT(host.Texts(kLogError), ElementsAre("100%n %s %d"));
}

TEST(HostAccess, CutsLongLinesAtTheSizeOfTheBuffer) {
    AcquiredHost host;
    const std::string text(10000, 'y');
    LogError("%s", text.c_str());
    Forward(kLogError, "%s", text.c_str());
    const std::vector<std::string> lines = host.Texts(kLogError);
    ASSERT_EQ(lines.size(), 2u);
    EXPECT_EQ(lines[0], text.substr(0, 4095));
    EXPECT_EQ(lines[1], text.substr(0, 8191));
}

TEST(HostAccess, NeverMixesTheLinesOfThreads) {
    AcquiredHost host;
    std::vector<std::thread> threads;
    for (char letter : {'a', 'b', 'c', 'd'}) {
        threads.emplace_back([letter] {
            for (int i = 0; i < 200; ++i) {
                LogInfo("%s", std::string(300, letter).c_str());
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    const std::vector<std::string> lines = host.Texts(kLogInfo);
    ASSERT_EQ(lines.size(), 800u);
    for (const std::string& line : lines) {
        ASSERT_EQ(line, std::string(300, line[0]));
    }
}

TEST(HostAccess, SeesTheDevicesOfTheHost) {
    AcquiredHost host;
    host.devices = {kQorDeviceTypeCpu, kQorGPUDeviceTypeOpenGL};
    QorGpuDeviceInfo info;
    ASSERT_EQ(GpuDevices()->GetDeviceCount(), 2);
    ASSERT_EQ(GpuDevices()->GetDeviceInfo(1, &info), 0);
    EXPECT_EQ(info.type, 2);
    EXPECT_NE(GpuDevices()->GetDeviceInfo(2, &info), 0);
}

}  // namespace
}  // namespace kelmo::test
