// Documents that are read window by window.
#include "bindery/binderyparse/reader.h"

namespace bindery {

void c_xml_reader::nextWindow(std::string_view itemEnd) {
    if (!_frames.empty() || _encoding != Encoding::utf8) return;
    // The bytes that have been searched in vain, but for those that may belong to an end tag that is cut.
    std::size_t searched = 0;
    for (;;) {
        const std::string_view window(_cur, static_cast<std::size_t>(_end - _cur));
        const std::size_t last = window.substr(searched).rfind(itemEnd);
        if (last != std::string_view::npos) {
            _itemsEnd = _cur + searched + last + itemEnd.size();
            return;
        }
        searched = window.size() >= itemEnd.size() ? window.size() - (itemEnd.size() - 1) : 0;
        _wholeDocument = _source.isWhole();
        if (_wholeDocument) return;
        const std::string_view next = _source.extend(_cur);
        _begin = _cur = next.data();
        _end = _begin + next.size();
        _lineAt = nullptr;
    }
}

}  // namespace bindery
