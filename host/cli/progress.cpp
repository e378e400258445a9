// SPDX-License-Identifier: GPL-3.0-or-later
#include "host/cli/progress.h"

#include <algorithm>
#include <cmath>

#include <fmt/format.h>

namespace kelmo::host {

std::string ShortTime(double seconds) {
    const int64_t whole = std::llround(std::max(0.0, seconds));
    if (whole < 60) return fmt::format("{} s", whole);
    if (whole < 3600) return fmt::format("{}:{:02}", whole / 60, whole % 60);
    return fmt::format("{}:{:02}:{:02}", whole / 3600, whole / 60 % 60, whole % 60);
}

Progress::Progress(Console& out, std::string what, int64_t count)
    : console(out),
      unit(std::move(what)),
      total(count),
      terminal(Console::OnTerminal()),
      begin(Clock::now()),
      lastShown(begin) {}

Progress::~Progress() {
    if (terminal) console.ShowProgress({});
}

double Progress::Seconds() const {
    return std::chrono::duration<double>(Clock::now() - begin).count();
}

void Progress::Update(int64_t count) {
    done = count;
    if (console.Verbosity() < 0) return;
    const Clock::time_point now = Clock::now();
    const auto pause = terminal ? std::chrono::milliseconds(100) : std::chrono::milliseconds(2000);
    if (now - lastShown < pause) return;
    lastShown = now;
    const double perSecond = static_cast<double>(done) / std::max(Seconds(), 1e-6);
    const double left = static_cast<double>(total - done) / std::max(perSecond, 1e-6);
    const int64_t percent = total > 0 ? done * 100 / total : 0;
    const std::string numbers = fmt::format("{}/{} {} {:3}%  {:.1f} a second  {} left", done, total,
                                            unit, percent, perSecond, ShortTime(left));
    if (!terminal) {
        console.Note(numbers);
        return;
    }
    constexpr int kBarWidth = 24;
    const size_t filled = static_cast<size_t>(percent * kBarWidth / 100);
    console.ShowProgress(fmt::format("[{:<{}}] {}", std::string(filled, '#'), kBarWidth, numbers));
}

}  // namespace kelmo::host
