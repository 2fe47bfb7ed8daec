// Memory for the texts of a book.
#pragma once
#include <cstddef>
#include <memory>
#include <string_view>
#include <vector>

namespace vellum {

/// The arena of a book's texts and small byte runs: nothing is freed alone, all goes with `clear` or
/// with the pool. A workbook of a million strings so makes no million allocations. Blocks are big, but
/// the system gives a page of one only when it is first written to.
class StringPool {
public:
    static constexpr std::size_t blockChars = 10'000'000;

    StringPool() = default;
    StringPool(const StringPool&) = delete;
    StringPool& operator=(const StringPool&) = delete;
    ~StringPool() { clear(); }

    /// Room for `n` wide characters, not initialised; null for 0. Throws for more than `blockChars`.
    wchar_t* allocate(std::size_t n);
    /// Room for `n` bytes, aligned as wide characters are; null for 0. Throws for more than a block has.
    std::byte* allocateBytes(std::size_t n);
    /// A copy of the text with a terminating null.
    const wchar_t* copy(std::wstring_view text);

    /// Takes the object over and destroys it at `clear`, last come first gone.
    template <class T>
    T* keep(std::unique_ptr<T> object) {
        _kept.emplace_back(nullptr, [](void* p) { std::default_delete<T>()(static_cast<T*>(p)); });
        _kept.back().reset(object.get());
        return object.release();
    }

    void clear() noexcept;

private:
    std::vector<std::unique_ptr<wchar_t[]>> _blocks;
    std::size_t _used = blockChars;  // of the last block; full while there is none
    std::vector<std::unique_ptr<void, void (*)(void*)>> _kept;
};

}  // namespace vellum
