#include "tests/zip/faults.h"

#include <pthread.h>

#include <atomic>
#include <cerrno>
#include <cstdlib>
#include <new>

namespace {

using zip::testing::Fault;

std::atomic<Fault> armed = Fault::none;
std::atomic<int> ahead = 0;
std::atomic<bool> lasts = false;
std::atomic<bool> hasStruck = false;

bool fails(Fault kind) {
    if (armed != kind) return false;
    const int left = ahead--;
    if (left > 0 || (left < 0 && !lasts)) return false;
    hasStruck = true;
    return true;
}

}  // namespace

namespace zip::testing {

FaultAhead::FaultAhead(Fault kind, int before, bool lasting) {
    ahead = before;
    lasts = lasting;
    hasStruck = false;
    armed = kind;
}

FaultAhead::~FaultAhead() {
    armed = Fault::none;
}

bool FaultAhead::struck() const {
    return hasStruck;
}

}  // namespace zip::testing

void* operator new(std::size_t size) {
    void* const memory = fails(Fault::allocation) ? nullptr : std::malloc(size);
    if (memory == nullptr) throw std::bad_alloc();
    return memory;
}

void operator delete(void* memory) noexcept {
    std::free(memory);
}

void operator delete(void* memory, std::size_t) noexcept {
    std::free(memory);
}

// The linker gives calls of these functions the names below.
extern "C" {

// minizip does not free the header of an entry that could not be written.
[[gnu::visibility("default")]] const char* __lsan_default_suppressions();
const char* __lsan_default_suppressions() {
    return "leak:zipOpenNewFileInZip4_64";
}

void* __real_realloc(void* memory, std::size_t size);
void* __wrap_realloc(void* memory, std::size_t size);
int __real_pthread_create(pthread_t* thread, const pthread_attr_t* attributes, void* (*body)(void*), void* argument);
int __wrap_pthread_create(pthread_t* thread, const pthread_attr_t* attributes, void* (*body)(void*), void* argument);

void* __wrap_realloc(void* memory, std::size_t size) {
    return fails(Fault::reallocation) ? nullptr : __real_realloc(memory, size);
}

int __wrap_pthread_create(pthread_t* thread, const pthread_attr_t* attributes, void* (*body)(void*), void* argument) {
    return fails(Fault::thread) ? EAGAIN : __real_pthread_create(thread, attributes, body, argument);
}
}
