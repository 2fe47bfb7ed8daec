#include "biff/container/dir_entry.h"

#include <cwchar>
#include <cwctype>

#include "biff/container/messages.h"
#include "engine/failure/vlerror.h"

namespace vellum {

DirEntry::DirEntry(const wchar_t* name, std::uint8_t entryType, std::uint32_t child) : type(entryType), childID(child) {
    if (name == nullptr) throw vlerror(biff::msg::dirEntryName);
    const std::size_t characters = std::wcslen(name);
    if (characters >= nameUnits.size()) throw vlerror(biff::msg::dirEntryNameTooBig);
    for (std::size_t i = 0; i < characters; ++i) nameUnits[i] = static_cast<std::uint16_t>(name[i]);
    length = static_cast<std::uint16_t>(2 * characters + 2);
}

std::wstring DirEntry::name() const {
    std::wstring text;
    for (const std::uint16_t unit : nameUnits) {
        if (unit == 0) break;
        text.push_back(static_cast<wchar_t>(unit));
    }
    return text;
}

bool DirEntry::isNamed(std::wstring_view other) const {
    const auto lower = [](wchar_t c) { return std::towlower(static_cast<std::wint_t>(c)); };
    if (other.size() > nameUnits.size()) return false;
    for (std::size_t i = 0; i < other.size(); ++i) {
        if (lower(static_cast<wchar_t>(nameUnits[i])) != lower(other[i])) return false;
    }
    return other.size() == nameUnits.size() || nameUnits[other.size()] == 0;
}

}  // namespace vellum
