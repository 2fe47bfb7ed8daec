// Heap memory by malloc and free, as the module uses it on the host's side: no exception, null when there is none.
#pragma once
#include <cstddef>
#include <cstdlib>
#include <memory>
#include <type_traits>

namespace quillet {

struct FreeDeleter {
    void operator()(void* pointer) const { std::free(pointer); }
};

template <class T>
using CArray = std::unique_ptr<T[], FreeDeleter>;

/// `count` zeroed elements (at least one, so that null always means that there is no memory).
template <class T>
CArray<T> allocateArray(std::size_t count) {
    static_assert(std::is_trivially_destructible_v<T>);
    return CArray<T>(static_cast<T*>(std::calloc(count > 0 ? count : 1, sizeof(T))));
}

}  // namespace quillet
