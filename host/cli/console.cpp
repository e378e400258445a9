// SPDX-License-Identifier: GPL-3.0-or-later
#include "host/cli/console.h"

#include <unistd.h>

#include <cstdio>

#include "contract/qor_host.h"

namespace kelmo::host {

namespace {
constexpr const char* kClearLine = "\r\033[K";
}

bool Console::OnTerminal() {
    return isatty(STDERR_FILENO) == 1;
}

void Console::Write(std::string_view prefix, std::string_view text) {
    const std::lock_guard<std::mutex> lock(mutex);
    if (progressShown) std::fputs(kClearLine, stderr);
    progressShown = false;
    std::fprintf(stderr, "%.*s%.*s\n", static_cast<int>(prefix.size()), prefix.data(),
                 static_cast<int>(text.size()), text.data());
}

void Console::Error(std::string_view text) {
    Write("kelmo: ", text);
}

void Console::Warning(std::string_view text) {
    if (verbosity >= 0) Write("kelmo: warning: ", text);
}

void Console::Note(std::string_view text) {
    if (verbosity >= 0) Write("", text);
}

void Console::PluginLine(int32_t level, std::string_view text) {
    const int needed = level >= kLogError ? 0 : level == kLogWarning ? 1 : 2;
    if (verbosity >= needed) Write("plug-in: ", text);
}

void Console::ShowProgress(std::string_view text) {
    const std::lock_guard<std::mutex> lock(mutex);
    if (text.empty() && !progressShown) return;
    std::fprintf(stderr, "%s%.*s", kClearLine, static_cast<int>(text.size()), text.data());
    std::fflush(stderr);
    progressShown = !text.empty();
}

}  // namespace kelmo::host
