#include "engine/text/string_pool.h"

#include <algorithm>

#include "engine/failure/messages.h"
#include "engine/failure/vlerror.h"

namespace vellum {

wchar_t* StringPool::allocate(std::size_t n) {
    if (n == 0) return nullptr;
    if (n > blockChars) throw vlerror(msg::poolExhausted);
    if (n > blockChars - _used) {
        _blocks.push_back(std::make_unique_for_overwrite<wchar_t[]>(blockChars));
        _used = 0;
    }
    wchar_t* const room = _blocks.back().get() + _used;
    _used += n;
    return room;
}

std::byte* StringPool::allocateBytes(std::size_t n) {
    if (n > blockChars * sizeof(wchar_t)) throw vlerror(msg::poolExhausted);
    return reinterpret_cast<std::byte*>(allocate((n + sizeof(wchar_t) - 1) / sizeof(wchar_t)));
}

const wchar_t* StringPool::copy(std::wstring_view text) {
    wchar_t* const room = allocate(text.size() + 1);
    *std::copy(text.begin(), text.end(), room) = L'\0';
    return room;
}

void StringPool::clear() noexcept {
    while (!_kept.empty()) _kept.pop_back();
    _blocks.clear();
    _used = blockChars;
}

}  // namespace vellum
