// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <chrono>
#include <cstdint>
#include <string>

#include "host/cli/console.h"

namespace kelmo::host {

/// Shows how far a work of known length is: one line that is rewritten on a terminal, a plain line
/// every two seconds otherwise.
class Progress {
public:
    Progress(Console& console, std::string unit, int64_t total);
    ~Progress();
    Progress(const Progress&) = delete;
    Progress& operator=(const Progress&) = delete;

    void Update(int64_t done);
    int64_t Done() const { return done; }
    double Seconds() const;

private:
    using Clock = std::chrono::steady_clock;

    Console& console;
    std::string unit;
    int64_t total;
    int64_t done = 0;
    bool terminal;
    Clock::time_point begin;
    Clock::time_point lastShown;
};

/// "12 s", "3:05", "1:02:03".
std::string ShortTime(double seconds);

}  // namespace kelmo::host
