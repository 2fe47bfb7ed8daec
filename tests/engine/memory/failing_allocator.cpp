#include "tests/engine/memory/failing_allocator.h"

#include <dlfcn.h>

#include <atomic>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <new>

namespace failing {
namespace {

// Tests fork a process for each case; large entries of an archive are compressed by threads of their own.
std::atomic<long> count = 0, target = 0;

bool isOfZipLibrary(void* caller) {
    Dl_info info;
    return dladdr(caller, &info) != 0 && info.dli_fname != nullptr && std::strstr(info.dli_fname, "minizip") != nullptr;
}

// The library that writes zip entries uses some memory without asking whether it got any: there the next one fails.
bool fails(void* caller) {
    const long number = ++count;
    if (number != target) return false;
    if (!isOfZipLibrary(caller)) return true;
    ++target;
    return false;
}

}  // namespace

void failAt(long number) {
    count = 0;
    target = number;
}

long allocations() {
    return count;
}

}  // namespace failing

#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)

// A sanitizer has an allocator of its own; what C++ allocates is counted all the same.
void* operator new(std::size_t size) {
    void* const memory = failing::fails(__builtin_return_address(0)) ? nullptr : std::malloc(size == 0 ? 1 : size);
    if (memory == nullptr) throw std::bad_alloc();
    return memory;
}
void* operator new(std::size_t size, const std::nothrow_t&) noexcept {
    return failing::fails(__builtin_return_address(0)) ? nullptr : std::malloc(size == 0 ? 1 : size);
}
void operator delete(void* memory, const std::nothrow_t&) noexcept {
    std::free(memory);
}
void operator delete(void* memory) noexcept {
    std::free(memory);
}
void operator delete(void* memory, std::size_t) noexcept {
    std::free(memory);
}

#else

extern "C" {

void* __libc_malloc(std::size_t size);
void* __libc_calloc(std::size_t count, std::size_t size);
void* __libc_realloc(void* memory, std::size_t size);

// zlib and the C library ask here too.
void* malloc(std::size_t size) {
    if (!failing::fails(__builtin_return_address(0))) return __libc_malloc(size);
    errno = ENOMEM;
    return nullptr;
}
void* calloc(std::size_t count, std::size_t size) {
    if (!failing::fails(__builtin_return_address(0))) return __libc_calloc(count, size);
    errno = ENOMEM;
    return nullptr;
}
void* realloc(void* memory, std::size_t size) {
    if (!failing::fails(__builtin_return_address(0))) return __libc_realloc(memory, size);
    errno = ENOMEM;
    return nullptr;
}
}

#endif
