// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <mutex>
#include <string>
#include <string_view>

namespace kelmo::host {

/// What the command says beside its results: everything here goes to standard error, one line each.
///
/// Verbosity -1 shows errors only, 0 warnings and notes too, 1 also what the plug-in warns of,
/// 2 also its information lines.
///
/// Thread rule: any thread.
class Console {
public:
    void SetVerbosity(int level) { verbosity = level; }
    int Verbosity() const { return verbosity; }

    void Error(std::string_view text);
    void Warning(std::string_view text);
    void Note(std::string_view text);
    /// A log line of the plug-in, level as in QorLogLevel.
    void PluginLine(int32_t level, std::string_view text);

    /// Replaces the progress line at the foot of a terminal; an empty text removes it.
    void ShowProgress(std::string_view text);
    static bool OnTerminal();

private:
    void Write(std::string_view prefix, std::string_view text);

    std::mutex mutex;
    int verbosity = 0;
    bool progressShown = false;
};

}  // namespace kelmo::host
