// What a book carries along as bytes, for reports.
#include "biff/book/book.h"
#include "biff/sheet/sheet.h"
#include "engine/failure/guarded.h"
#include "engine/failure/messages.h"
#include "engine/failure/vlerror.h"
#include "engine/text/conversions.h"

namespace vellum {

template <class CharT>
int BookImplT<CharT>::keptTotal() {
    return guarded(this->_lastError, -1, [&] {
        const auto add = [&](std::wstring_view name, std::size_t size) {
            if (size != 0) _kept.emplace_back(toNarrow(name, true), size);
        };
        _kept.clear();
        _xls.forEachKeptStream([&](std::wstring_view name, std::size_t size) {
            add(name == L"Root Entry" ? L"small streams, together" : L"stream " + std::wstring(name), size);
        });
        add(L"records of the workbook", _globals.keptBytes());
        for (const auto& sheet : _sheets) {
            add(L"records of sheet " + std::wstring(sheet->name()), sheet->keptBytes());
        }
        return static_cast<int>(_kept.size());
    });
}

template <class CharT>
const char* BookImplT<CharT>::keptAt(int index, std::size_t* size) {
    return guarded<const char*>(this->_lastError, nullptr, [&] {
        if (index < 0 || static_cast<std::size_t>(index) >= _kept.size()) throw vlerror(biff::msg::indexOutOfRange);
        const auto& [name, bytes] = _kept[static_cast<std::size_t>(index)];
        if (size) *size = bytes;
        return name.c_str();
    });
}

}  // namespace vellum
