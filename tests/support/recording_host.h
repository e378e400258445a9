// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <map>
#include <mutex>
#include <set>
#include <string>
#include <vector>

#include "contract/qor_host.h"

namespace kelmo::test {

struct LogLine {
    int32_t level = 0;
    std::string text;

    bool operator==(const LogLine&) const = default;
};

/// A host for tests: offers all four suites, records what is asked and logged, and answers from the
/// public members, which a test sets before it hands the host over.
///
/// The log may be written and read from any thread; the rest is for one thread at a time.
class RecordingHost : public QorPluginHost {
public:
    RecordingHost();

    /// Answers of GetPath. An empty one leaves the preset buffer alone.
    std::string resourceFolder;
    std::string pluginFolder;
    /// Device types of GetDeviceInfo, in order; none by default.
    std::vector<int32_t> devices;
    /// GL texture ids of GetSurfaceTexture; a surface without one gives an error.
    std::map<void*, int32_t> surfaceTextures;
    /// Names of suites that this host refuses.
    std::set<std::string> missingSuites;
    /// Names and versions asked for, in order.
    std::vector<std::string> acquiredNames;
    std::vector<int32_t> acquiredVersions;
    /// Presets and sizes that arrived with GetPath, in order.
    std::vector<std::string> pathPresets;
    std::vector<int32_t> pathSizes;

    int32_t AcquireSuite(const char* name, int32_t version, void** suite) override;

    std::vector<LogLine> Lines() const;
    /// Texts of the lines of one level.
    std::vector<std::string> Texts(int32_t level) const;
    void ClearLines();

private:
    class UtilSuite : public QorHostUtilSuite {
    public:
        explicit UtilSuite(RecordingHost& host) : host(host) {}
        int32_t GetPath(int32_t kind, char* buffer, int32_t size) override;
        void Log(int32_t level, const char* format, ...) override;

    private:
        RecordingHost& host;
    };

    class DeviceSuite : public QorGpuDeviceSuite {
    public:
        explicit DeviceSuite(RecordingHost& host) : host(host) {}
        int32_t GetDeviceCount() override;
        int32_t GetDeviceInfo(int32_t index, QorGpuDeviceInfo* info) override;
        int32_t GetSurfaceTexture(void* surface, int32_t* texture, int32_t reserved) override;

    private:
        RecordingHost& host;
    };

    UtilSuite utilSuite;
    DeviceSuite deviceSuite;
    mutable std::mutex lineMutex;
    std::vector<LogLine> lines;
};

/// A recording host whose suites the library holds for the life of the object.
class AcquiredHost : public RecordingHost {
public:
    AcquiredHost();
    ~AcquiredHost() override;
};

}  // namespace kelmo::test
