#pragma once

#include <cstdlib>

/// A shared pointer with its count in an int on the heap. The last copy deletes the object. An empty pointer
/// has a count too. The count is not atomic: one thread only.
///
///     SmartPtr<FFontData> face(new FFontData(path, 24));
///     face->drawString(...);
template <class T>
class SmartPtr {
public:
    /// Takes over `p`, which may be null.
    explicit SmartPtr(T* p) : ptr(p), refCount(new int(0)) { incRefCnt(); }
    SmartPtr(const SmartPtr& other) : ptr(other.ptr), refCount(other.refCount) { incRefCnt(); }
    ~SmartPtr() { decRefCnt(); }

    SmartPtr& operator=(const SmartPtr& other) {
        if (this != &other) {
            decRefCnt();
            ptr = other.ptr;
            refCount = other.refCount;
            incRefCnt();
        }
        return *this;
    }

    /// Unchecked: null when nothing is held.
    T* operator->() const { return ptr; }

    void incRefCnt() {
        if (refCount != nullptr) {
            ++*refCount;
        }
    }

    /// Gives up one share. The last one deletes the object and the count and leaves this pointer empty,
    /// without a count. A count below zero is a bug: the process ends with status 1.
    void decRefCnt() {
        if (refCount == nullptr) {
            return;
        }
        --*refCount;
        if (*refCount == 0) {
            destroy();
        } else if (*refCount < 0) {
            std::exit(1);
        }
    }

private:
    // Not inline: GCC 12 would warn of a use after delete.
    [[gnu::noinline]] void destroy() {
        delete ptr;
        delete refCount;
        ptr = nullptr;
        refCount = nullptr;
    }

    T* ptr;
    int* refCount;
};
