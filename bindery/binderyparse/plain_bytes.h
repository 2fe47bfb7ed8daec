// The fast path of a class that is read by hand: straight over the bytes of the document.
#pragma once
#include <cstddef>
#include <string_view>

#include "bindery/binderyparse/reader.h"

namespace bindery {

/// The bytes behind the place where a reader stands, for who knows the form of what comes next. Whoever passes a whole
/// well-formed piece says so; what has another form is left to the reader. Asks nothing of the schema and reports
/// nothing.
class c_plain_bytes {
public:
    explicit c_plain_bytes(c_xml_reader& reader) : _reader(reader) {}

    /// From here to the end of the current text; empty when plain bytes cannot be had, which is inside an entity.
    std::string_view rest() const {
        const bool plain = _reader._frames.empty() && _reader._failed == 0;
        return plain ? std::string_view(_reader._cur, static_cast<std::size_t>(_reader._end - _reader._cur))
                     : std::string_view();
    }
    void passed(const char* to) { _reader._cur = to; }
    /// Opens the scope of an element without declarations, whose start tag was passed.
    void entered(std::string_view name) {
        _reader._open.push_back({_reader._names.size(), _reader._bindings.size()});
        _reader._names.append(name);
    }
    /// Closes the scope of the current element, whose end tag was passed.
    void left() { _reader.closeScope(); }

private:
    c_xml_reader& _reader;
};

}  // namespace bindery
