// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/random.h"

namespace kelmo {
namespace {

thread_local uint64_t state = 1;

}  // namespace

void Srand(uint32_t seed) {
    state = seed;
}

int32_t Rand() {
    state += 0x9e3779b97f4a7c15;
    uint64_t mixed = state;
    mixed = (mixed ^ (mixed >> 30)) * 0xbf58476d1ce4e5b9;
    mixed = (mixed ^ (mixed >> 27)) * 0x94d049bb133111eb;
    mixed ^= mixed >> 31;
    return static_cast<int32_t>(mixed >> 33);
}

}  // namespace kelmo
