#include "formula/compiling/argument_counts.h"

#include "engine/failure/vlerror.h"
#include "formula/messages.h"
#include "formula/text_words.h"

namespace vellum::formula {

using namespace std::string_view_literals;

void ArgumentCounts::scan(std::wstring_view text) {
    _text = text;
    _counts.assign(text.size(), neverClosed);
    _open.clear();
    TextWords words(text);
    std::size_t at = 0;
    for (auto word = words.next(); !word.empty(); at = words.position(), word = words.next()) {
        if (!_open.empty() && word != L")"sv) {
            std::int32_t& count = _open.back().count;
            if (word == L","sv || word == L";"sv) {
                ++count;
            } else if (count == 0) {
                count = 1;
            }
        }
        if (word == L"("sv) _open.push_back({at, 0});
        if (word == L")"sv && !_open.empty()) {
            _counts[_open.back().place] = _open.back().count;
            _open.pop_back();
        }
    }
}

std::uint32_t ArgumentCounts::behind(std::size_t at) const {
    if (at >= _text.size()) throw vlerror(msg::noParenthesis);
    if (_text[at] != L'(') throw vlerror(msg::noOpenParenthesis);
    if (_counts[at] == neverClosed) throw vlerror(msg::noParenthesis);
    return static_cast<std::uint32_t>(_counts[at]);
}

}  // namespace vellum::formula
