// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/thread_id.h"

#if defined(_WIN32)
#include <windows.h>
#elif defined(__linux__)
#include <sys/syscall.h>
#include <unistd.h>
#else
#include <pthread.h>
#endif

namespace kelmo {
namespace {

uint64_t AskSystem() {
#if defined(_WIN32)
    return GetCurrentThreadId();
#elif defined(__linux__)
    return static_cast<uint64_t>(syscall(SYS_gettid));
#else
    return reinterpret_cast<uint64_t>(pthread_self());
#endif
}

}  // namespace

uint64_t CurrentThreadId() {
    thread_local const uint64_t id = AskSystem();
    return id;
}

}  // namespace kelmo
