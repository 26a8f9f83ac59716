#pragma once

#include <cstdlib>

/// A shared pointer with its count in an int of its own on the heap: copies share the count, and the object
/// goes with the last of them. One that holds nothing has a count too. The count is not atomic: one thread
/// only.
///
///     SmartPtr<FFontData> face(new FFontData(path, 24));
///     face->drawString(...);
template <class T>
class SmartPtr {
public:
    /// Takes over `p`, which may be null.
    explicit SmartPtr(T* p) : ptr(p), refCount(new int(0)) { incRefCnt(); }
    SmartPtr(SmartPtr const& other) : ptr(other.ptr), refCount(other.refCount) { incRefCnt(); }
    ~SmartPtr() { decRefCnt(); }

    SmartPtr& operator=(SmartPtr const& other) {
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

    /// Lets go of one share. The last one destroys the object and the count and leaves this pointer empty,
    /// without a count. A count below zero means that the sharing is broken: the process ends with status 1.
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
    // Out of line, or GCC 12 takes the next holder's release for a use after this one's delete.
    [[gnu::noinline]] void destroy() {
        delete ptr;
        delete refCount;
        ptr = nullptr;
        refCount = nullptr;
    }

    T* ptr;
    int* refCount;
};
