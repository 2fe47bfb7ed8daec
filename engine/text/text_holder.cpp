#include "engine/text/text_holder.h"

#include "engine/text/conversions.h"

namespace vellum {

void TextHolder::setNarrow(const char* text) {
    if (text != nullptr) setNarrow(std::string_view(text));
}

void TextHolder::setWide(const wchar_t* text) {
    if (text != nullptr) setWide(std::wstring_view(text));
}

void TextHolder::setNarrow(std::string_view text) {
    _narrow.assign(text);
    _narrowStale = false;
    _wideStale = true;
    _lost = false;
}

void TextHolder::setWide(std::wstring_view text) {
    _wide.assign(text);
    _wideStale = false;
    _narrowStale = true;
    _lost = false;
}

void TextHolder::clear() {
    _narrow.clear();
    _wide.clear();
    _narrowStale = _wideStale = _lost = false;
}

const char* TextHolder::narrow(bool utf8) {
    if (_narrowStale) {
        _lost = !vellum::narrow(_wide, _narrow, utf8);
        _narrowStale = false;
    }
    return _narrow.c_str();
}

const wchar_t* TextHolder::wide(bool utf8) {
    if (_wideStale) {
        _lost = !widen(_narrow, _wide, utf8);
        _wideStale = false;
    }
    return _wide.c_str();
}

}  // namespace vellum
