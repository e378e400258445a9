// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <cstdlib>
#include <new>

// The operators below match one another; GCC judges each alone once it has put one of them in line.
#pragma GCC diagnostic ignored "-Wmismatched-new-delete"

/// Counts the calls of operator new of the whole program, by thread. This header replaces the
/// operators, so it is included by exactly one source file of a program.
namespace kelmo::test {

inline thread_local int64_t allocationCount = 0;

inline int64_t AllocationCount() {
    return allocationCount;
}

inline void* CountedAllocation(std::size_t size, std::size_t alignment) {
    ++allocationCount;
    const std::size_t rounded = (size + alignment - 1) / alignment * alignment;
    void* const memory = std::aligned_alloc(alignment, rounded > 0 ? rounded : alignment);
    if (!memory) throw std::bad_alloc();
    return memory;
}

}  // namespace kelmo::test

void* operator new(std::size_t size) {
    return kelmo::test::CountedAllocation(size, alignof(std::max_align_t));
}
void* operator new[](std::size_t size) {
    return kelmo::test::CountedAllocation(size, alignof(std::max_align_t));
}
void* operator new(std::size_t size, std::align_val_t alignment) {
    return kelmo::test::CountedAllocation(size, static_cast<std::size_t>(alignment));
}
void* operator new[](std::size_t size, std::align_val_t alignment) {
    return kelmo::test::CountedAllocation(size, static_cast<std::size_t>(alignment));
}
// Libraries that we load may call these: what they get is freed by the operators below.
void* operator new(std::size_t size, const std::nothrow_t&) noexcept {
    ++kelmo::test::allocationCount;
    return std::malloc(size > 0 ? size : 1);
}
void* operator new[](std::size_t size, const std::nothrow_t&) noexcept {
    ++kelmo::test::allocationCount;
    return std::malloc(size > 0 ? size : 1);
}
void operator delete(void* memory) noexcept {
    std::free(memory);
}
void operator delete[](void* memory) noexcept {
    std::free(memory);
}
void operator delete(void* memory, std::size_t) noexcept {
    std::free(memory);
}
void operator delete[](void* memory, std::size_t) noexcept {
    std::free(memory);
}
void operator delete(void* memory, std::align_val_t) noexcept {
    std::free(memory);
}
void operator delete[](void* memory, std::align_val_t) noexcept {
    std::free(memory);
}
void operator delete(void* memory, std::size_t, std::align_val_t) noexcept {
    std::free(memory);
}
void operator delete[](void* memory, std::size_t, std::align_val_t) noexcept {
    std::free(memory);
}
