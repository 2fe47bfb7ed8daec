// Content of elements: text, CDATA, comments, instructions, end tags.

#include "bindery/binderyparse/messages.h"
#include "bindery/binderyparse/reader.h"
#include "bindery/values/chars.h"

namespace bindery {

namespace {
constexpr std::string_view cdataStart = "<![CDATA[";
}

int c_xml_reader::malformed() {
    report(0, not_well_formed, msg::notWellFormed);
    return scanFailed();
}

int c_xml_reader::endOfInput(bool inTag) {
    if (_brokenEnd && _frames.empty())
        report(0, unknown_encoding, msg::unrecognisedEncoding);
    else
        report(0, unexpected_end, inTag ? msg::unexpectedEnd : msg::prematureEnd);
    return scanFailed();
}

int c_xml_reader::nextContent() {
    for (;;) {
        if (_failed != 0) return scanFailed();
        if (_cur == _end) {
            if (!_frames.empty()) {
                _cur = _frames.back().cur;
                _end = _frames.back().end;
                _frames.pop_back();
                leaveEntity();
                continue;
            }
            if (_open.empty()) return _token = token_end;
            return endOfInput(false);
        }
        if (*_cur != '<') {
            if (!scanText()) continue;
            if (_open.empty() && skipSpace(_text.data(), _text.data() + _text.size()) != _text.data() + _text.size())
                return malformed();
            _isText = true;
            return _token = token_unknown;
        }
        if (_end - _cur < 2) return endOfInput(false);
        switch (_cur[1]) {
            case '/':
                return scanEndTag();
            case '?':
                if (!passInstruction()) return scanFailed();
                continue;
            case '!':
                break;
            default:
                return scanStartTag();
        }
        if (startsWith("<!--")) {
            if (!passComment()) return scanFailed();
        } else if (startsWith("<![")) {
            if (!startsWith(cdataStart)) {
                if (!report(1, not_well_formed, msg::notWellFormedSection)) return scanFailed();
                _cur += 3;
                continue;
            }
            if (!scanCdata()) return scanFailed();
            if (_text.empty()) continue;
            _isText = true;
            return _token = token_unknown;
        } else if (startsWith("<!DOCTYPE")) {
            report(0, bad_dtd, msg::doctypeNotAtStart);
            return scanFailed();
        } else {
            return malformed();
        }
    }
}

int c_xml_reader::nextChild() {
    for (;;) {
        const int token = nextContent();
        if (token != token_unknown) return token;
        const char* end = _text.data() + _text.size();
        if (skipSpace(_text.data(), end) != end) return token;
    }
}

int c_xml_reader::scanEndTag() {
    const char* name = _cur + 2;
    const char* nameEnd = skipName(name, _end);
    const char* close = skipSpace(nameEnd, _end);
    if (close == _end) return endOfInput(true);
    if (*close != '>' || _open.empty()) return malformed();
    const std::string_view found(name, static_cast<std::size_t>(nameEnd - name));
    const std::string_view opened = std::string_view(_names).substr(_open.back().nameOffset);
    _endTagMatched = found == opened;
    if (!_endTagMatched &&
        !report(1, not_well_formed,
                msg::startTagBefore + std::string(opened) + msg::endTagBefore + std::string(found) + msg::tagsBehind))
        return scanFailed();
    _cur = close + 1;
    closeScope();
    return _token = token_end_tag;
}

void c_xml_reader::closeScope() {
    const OpenElement closed = _open.back();
    _open.pop_back();
    _names.resize(closed.nameOffset);
    if (_bindings.size() == closed.bindings) return;
    _bindings.resize(closed.bindings);
    _defaultNs = boundTo("");
}

void c_xml_reader::closeElement() {
    _endTagMatched = true;
    closeScope();
    _token = token_end_tag;
}

/// A comment at the cursor. A "--" in it that does not end it is worth a warning.
bool c_xml_reader::passComment() {
    _contentRead = true;
    const std::string_view rest(_cur, static_cast<std::size_t>(_end - _cur));
    bool warned = false;
    for (std::size_t at = rest.find("--", 4); at != std::string_view::npos; at = rest.find("--", at + 1)) {
        if (at + 2 < rest.size() && rest[at + 2] == '>') {
            _cur += at + 3;
            return true;
        }
        if (!warned && !report(2, bad_comment, msg::endOfComment)) return false;
        warned = true;
    }
    _cur = _end;
    return endOfInput(false), false;
}

bool c_xml_reader::passInstruction() {
    if (startsWith("<?xml") && _end - _cur > 5 && is(_cur[5], char_space))
        return report(0, bad_declaration, msg::declarationNotAtStart);
    _contentRead = true;
    const std::string_view rest(_cur, static_cast<std::size_t>(_end - _cur));
    const std::size_t close = rest.find("?>", 2);
    if (close == std::string_view::npos) {
        _cur = _end;
        return endOfInput(false), false;
    }
    _cur += close + 2;
    return true;
}

bool c_xml_reader::scanCdata() {
    const std::string_view rest(_cur, static_cast<std::size_t>(_end - _cur));
    const std::size_t close = rest.find("]]>", cdataStart.size());
    if (close == std::string_view::npos) {
        _cur = _end;
        return endOfInput(false), false;
    }
    _text = rest.substr(cdataStart.size(), close - cdataStart.size());
    _cur += close + 3;
    const bool utf8 = _encoding == Encoding::utf8;
    const char* at = _text.data();
    const char* end = at + _text.size();
    _textScratch.clear();
    bool changed = false;
    for (const char* p = at; p != end;) {
        const int length = endOfLine(p, end, utf8);
        if (length == 0 || *p == '\n') {
            ++p;
            continue;
        }
        _textScratch.append(at, p) += '\n';
        at = p += length;
        changed = true;
    }
    if (changed) _text = _textScratch.append(at, end);
    return true;
}

int c_xml_reader::readText(std::string_view& text) {
    text = {};
    const int token = nextContent();
    if (token != token_unknown) return token;
    text = _text;
    if (_frames.empty() && startsWith("</")) return scanEndTag();  // the usual case: one piece
    return readMoreText(text);
}

int c_xml_reader::readMoreText(std::string_view& text) {
    if (text.data() != _bodyScratch.data()) _bodyScratch.assign(text);
    int token;
    while ((token = nextContent()) == token_unknown) _bodyScratch.append(_text);
    text = _bodyScratch;
    return token;
}

int c_xml_reader::skipElement() {
    if (_emptyElement && _token == token_start_tag) {
        closeElement();
        return 0;
    }
    const std::size_t outside = _open.size() - 1;
    while (_open.size() > outside) {
        switch (nextContent()) {
            case token_start_tag:
                if (_emptyElement) closeElement();
                break;
            case token_failed:
            case token_end:
                return failure();
            default:
                break;
        }
    }
    return 0;
}

}  // namespace bindery
