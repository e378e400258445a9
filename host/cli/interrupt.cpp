// SPDX-License-Identifier: GPL-3.0-or-later
#include "host/cli/interrupt.h"

#include <csignal>

namespace kelmo::host {

namespace {

volatile std::sig_atomic_t interrupted = 0;

void OnSignal(int signal) {
    interrupted = 1;
    std::signal(signal, SIG_DFL);
}

}  // namespace

void CatchInterrupts() {
    std::signal(SIGINT, OnSignal);
    std::signal(SIGTERM, OnSignal);
}

bool Interrupted() {
    return interrupted != 0;
}

}  // namespace kelmo::host
