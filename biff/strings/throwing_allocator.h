// An allocator for containers made before allocators had traits.
#pragma once
#include <cstddef>
#include <limits>
#include <memory>

namespace vellum::biff {

/// Throws `std::bad_alloc` when memory is short, where the containers' own allocator ends the process.
template <class T>
class ThrowingAllocator {
public:
    using value_type = T;
    using size_type = std::size_t;
    using difference_type = std::ptrdiff_t;
    using pointer = T*;
    using const_pointer = const T*;
    using reference = T&;
    using const_reference = const T&;
    template <class U>
    struct rebind {
        using other = ThrowingAllocator<U>;
    };

    ThrowingAllocator() = default;
    template <class U>
    ThrowingAllocator(const ThrowingAllocator<U>&) {}

    pointer allocate(size_type count, const void* = nullptr) { return std::allocator<T>().allocate(count); }
    void deallocate(pointer at, size_type count) { std::allocator<T>().deallocate(at, count); }
    [[nodiscard]] size_type max_size() const { return std::numeric_limits<size_type>::max() / sizeof(T); }

    friend bool operator==(const ThrowingAllocator&, const ThrowingAllocator&) { return true; }
};

}  // namespace vellum::biff
