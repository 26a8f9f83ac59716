#pragma once

#include <memory>

#if defined(__GLIBC__) && !defined(ZANTO_SANITIZED)
#include <sys/mman.h>

#include <cstddef>
#include <new>
#endif

namespace tavi {

/// A container's memory straight from the system, and straight back to it: when the heap of glibc gets the
/// first block of several megabytes back, it starts to keep as much free memory for good.
///
/// Other C libraries, and sanitizers, which watch over the heap only, get the usual allocator.
#if defined(__GLIBC__) && !defined(ZANTO_SANITIZED)
template <class Value>
struct PageAllocator : std::allocator<Value> {
    template <class Other>
    struct rebind {
        using other = PageAllocator<Other>;
    };

    Value* allocate(std::size_t count) {
        void* const pages =
            mmap(nullptr, count * sizeof(Value), PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
        if (pages == MAP_FAILED) {
            throw std::bad_alloc();
        }
        return static_cast<Value*>(pages);
    }
    void deallocate(Value* values, std::size_t count) { munmap(values, count * sizeof(Value)); }
};
#else
template <class Value>
using PageAllocator = std::allocator<Value>;
#endif

}  // namespace tavi
