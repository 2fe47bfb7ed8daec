// What stands before the root element: the XML declaration and the document type with its entities.

#include <algorithm>

#include "bindery/binderyparse/limits.h"
#include "bindery/binderyparse/messages.h"
#include "bindery/binderyparse/reader.h"
#include "bindery/binderyparse/references.h"
#include "bindery/values/chars.h"

namespace bindery {

namespace {

bool equalIgnoringCase(std::string_view a, std::string_view b) {
    const auto lower = [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c; };
    return std::equal(a.begin(), a.end(), b.begin(), b.end(), [&](char x, char y) { return lower(x) == lower(y); });
}

}  // namespace

/// Reads a prolog. Not a part of the reader's class, because none of it is needed once the root has begun.
class Prolog {
public:
    explicit Prolog(c_xml_reader& reader) : _r(reader) {}

    /// Up to the root's start tag; false when the parse has ended.
    bool read();

private:
    bool declaration();
    bool encoding(std::string_view name, Encoding& to);
    bool pseudoAttribute(std::string_view name, std::string_view& value);
    bool doctype();
    bool subset(const char*& at, const char* end, bool nested);
    bool comment(const char*& at, const char* end);
    bool instruction(const char*& at, const char* end);
    bool entity(const char*& at, const char* end);
    bool parameterEntity(const char*& at, const char* end);
    bool skipLiteral(const char*& at, const char* end);
    bool got(const char* at, const char* end, const char* text = msg::dtdGot);
    bool ended() { return _r.endOfInput(true), false; }

    c_xml_reader& _r;
    std::map<std::string, std::string, std::less<>> _parameters;
    std::vector<std::string_view> _active;  // parameter entities being expanded
};

bool Prolog::read() {
    for (;;) {
        _r._cur = skipSpace(_r._cur, _r._end);
        if (_r._cur == _r._end) return ended();
        bool goOn = true;
        if (_r.startsWith("<?xml") && _r._end - _r._cur > 5 && is(_r._cur[5], char_space) && !_r._contentRead)
            goOn = declaration();
        else if (_r.startsWith("<?"))
            goOn = _r.passInstruction();
        else if (_r.startsWith("<!--"))
            goOn = _r.passComment();
        else if (_r.startsWith("<!DOCTYPE"))
            goOn = doctype();
        else if (*_r._cur != '<' || _r.startsWith("<!"))
            goOn = (_r.malformed(), false);
        else
            return true;
        if (!goOn || _r._failed != 0) return false;
    }
}

/// ` name = "value"`, in this place or not at all.
bool Prolog::pseudoAttribute(std::string_view name, std::string_view& value) {
    const char* end = _r._end;
    const char* at = skipSpace(_r._cur, end);
    if (!std::string_view(at, static_cast<std::size_t>(end - at)).starts_with(name)) return false;
    at = skipSpace(at + name.size(), end);
    if (at == end || *at != '=') return false;
    at = skipSpace(at + 1, end);
    if (at == end || (*at != '"' && *at != '\'')) return false;
    const char* close = std::find(at + 1, end, *at);
    if (close == end) return false;
    value = std::string_view(at + 1, static_cast<std::size_t>(close - at - 1));
    _r._cur = close + 1;
    return true;
}

bool Prolog::declaration() {
    _r._contentRead = true;
    _r._cur += 5;
    std::string_view version, name, standalone;
    if (!pseudoAttribute("version", version)) {
        if (!_r.report(1, bad_declaration, msg::noVersion)) return false;
    } else if (version != "1.0" && version != "1.1") {
        if (!_r.report(1, bad_version, msg::versionBefore + std::string(version) + msg::versionBehind)) return false;
    }
    Encoding to = _r._encoding;
    if (pseudoAttribute("encoding", name) && !encoding(name, to)) return false;
    pseudoAttribute("standalone", standalone);
    _r._cur = skipSpace(_r._cur, _r._end);
    if (_r._cur == _r._end) return ended();
    if (!_r.startsWith("?>")) return _r.report(0, bad_declaration, msg::notWellFormed);
    _r._cur += 2;
    if (to != _r._encoding) _r.changeEncoding(to);
    return true;
}

/// Compares the name of an encoding with the bytes seen.
bool Prolog::encoding(std::string_view name, Encoding& to) {
    enum Needs { utf8, utf16 };
    struct Known {
        std::string_view name;
        Needs needs;
        Encoding to;  // of a single byte; unknown: as it is
    };
    static constexpr Known known[] = {
        {"ISO-10646-UCS-2", utf16, Encoding::ucs2be}, {"ISO-8859-1", utf8, Encoding::singleByte},
        {"Windows-1252", utf8, Encoding::singleByte}, {"cp-1252", utf8, Encoding::singleByte},
        {"US-ASCII", utf8, Encoding::singleByte},     {"UTF-8", utf8, Encoding::unknown},
        {"UTF-16", utf16, Encoding::unknown},
    };
    for (const Known& one : known) {
        if (!equalIgnoringCase(one.name, name)) continue;
        const Encoding seen = _r._encoding;
        if ((one.needs == utf8) != (seen == Encoding::utf8))
            return _r.report(0, encoding_mismatch, msg::encodingMismatch);
        to = one.to == Encoding::unknown ? seen : one.to;
        if (to == Encoding::ucs2be && seen == Encoding::utf16le) to = Encoding::ucs2le;
        return true;
    }
    return _r.report(0, unknown_encoding, msg::unknownEncoding);
}

bool Prolog::got(const char* at, const char* end, const char* text) {
    if (at == end) return ended();
    return _r.report(0, bad_dtd, text + std::string(1, *at) + ")");
}

bool Prolog::skipLiteral(const char*& at, const char* end) {
    const char* quote = skipSpace(at, end);
    if (quote == end || (*quote != '"' && *quote != '\'')) return false;
    const char* close = std::find(quote + 1, end, *quote);
    at = close == end ? end : close + 1;
    return true;
}

bool Prolog::doctype() {
    if (_r._doctypeRead) return _r.report(0, bad_dtd, msg::doctypeAgain);
    _r._doctypeRead = _r._contentRead = true;
    const char* end = _r._end;
    const char* at = skipName(skipSpace(_r._cur + 9, end), end);
    at = skipSpace(at, end);
    const std::string_view rest(at, static_cast<std::size_t>(end - at));
    if (rest.starts_with("SYSTEM") || rest.starts_with("PUBLIC")) {  // never fetched
        at += 6;
        while (skipLiteral(at, end)) {
        }
        at = skipSpace(at, end);
    }
    if (at != end && *at == '[') {
        ++at;
        if (!subset(at, end, false)) return false;
        at = skipSpace(at, end);
    }
    _r._cur = at;
    if (at == end || *at != '>') return got(at, end, msg::dtdExpectedEnd);
    ++_r._cur;
    return true;
}

/// Declarations up to the closing bracket, or to the end of a parameter entity's value.
bool Prolog::subset(const char*& at, const char* end, bool nested) {
    constexpr std::string_view keyword = "ENTITY";
    for (;;) {
        at = skipSpace(at, end);
        if (!nested) _r._cur = at;
        if (at == end) return nested || ended();
        const std::string_view rest(at, static_cast<std::size_t>(end - at));
        bool goOn = true;
        if (rest[0] == ']' && !nested) {
            ++at;
            return true;
        } else if (rest[0] == '%') {
            goOn = parameterEntity(at, end);
        } else if (rest.starts_with("<!--")) {
            goOn = comment(at, end);
        } else if (rest.starts_with("<?")) {
            goOn = instruction(at, end);
        } else if (rest.starts_with("<!")) {
            at += 2;
            std::size_t matched = 0;
            while (matched < keyword.size() && at != end && *at == keyword[matched]) ++matched, ++at;
            if (matched < keyword.size()) return got(at, end);
            goOn = entity(at, end);
        } else {
            return got(at, end);
        }
        if (!goOn) return false;
    }
}

bool Prolog::comment(const char*& at, const char* end) {
    const std::string_view rest(at, static_cast<std::size_t>(end - at));
    const std::size_t dashes = rest.find("--", 4);
    const std::size_t close = dashes == std::string_view::npos ? dashes : rest.find("-->", dashes);
    if (close == std::string_view::npos) return ended();
    if (dashes != close && !_r.report(2, bad_comment, msg::endOfComment)) return false;
    at += close + 3;
    return true;
}

bool Prolog::instruction(const char*& at, const char* end) {
    const std::string_view rest(at, static_cast<std::size_t>(end - at));
    const std::size_t close = rest.find("?>", 2);
    if (close == std::string_view::npos) return ended();
    at += close + 2;
    return true;
}

/// `% name "value">`, `name "value">`, or a reference to something outside, behind "<!ENTITY".
bool Prolog::entity(const char*& at, const char* end) {
    if (at == end || !is(*at, char_space)) return got(at, end);
    at = skipSpace(at, end);
    const bool parameter = at != end && *at == '%';
    if (parameter) at = skipSpace(at + 1, end);
    const char* nameAt = at;
    at = skipName(at, end);
    if (at == nameAt) return got(at, end);
    const std::string_view name(nameAt, static_cast<std::size_t>(at - nameAt));
    at = skipSpace(at, end);
    if (at == end) return ended();
    if (*at == '"' || *at == '\'') {
        const char* close = std::find(at + 1, end, *at);
        if (close == end) return ended();
        std::string value;
        for (const char* p = at + 1; p != close;)  // references to characters hold at once, others when it is used
            if (*p != '&' || !numericReference(value, p, close)) value += *p++;
        if (parameter) {
            _parameters.emplace(name, std::move(value));
        } else if (_r._entityIndex.emplace(name, _r._entities.size()).second) {  // the first definition holds
            _r._entities.push_back({std::string(name), std::move(value)});
        }
        at = close + 1;
    } else {
        const char* wordAt = at;
        at = skipName(at, end);
        const std::string_view word(wordAt, static_cast<std::size_t>(at - wordAt));
        if (word == "SYSTEM" || word == "PUBLIC") {
            if (!_r.report(2, external_entity, msg::externalEntity)) return false;
        } else if (!_r.report(1, unexpected_entity, msg::entityValue + std::string(word))) {
            return false;
        }
        while (at != end && *at != '>')
            if (!skipLiteral(at, end)) ++at;
    }
    at = skipSpace(at, end);
    if (at == end || *at != '>') return got(at, end);
    ++at;
    return true;
}

bool Prolog::parameterEntity(const char*& at, const char* end) {
    const char* nameAt = ++at;
    at = skipName(at, end);
    const std::string_view name(nameAt, static_cast<std::size_t>(at - nameAt));
    if (at == end || *at != ';' || name.empty()) return got(at, end);
    ++at;
    const auto found = _parameters.find(name);
    if (found == _parameters.end())
        return _r.report(1, entity_not_found, msg::entityBefore + std::string(name) + msg::entityNotFoundBehind);
    if (std::find(_active.begin(), _active.end(), name) != _active.end())
        return _r.report(1, recursive_entity, msg::recursiveEntity + std::string(name));
    _r._expanded += found->second.size() + 1;
    if (_active.size() >= maxEntityDepth || _r._expanded > maxEntityBytes)
        return _r.report(0, recursive_entity, msg::recursiveEntity + std::string(name));
    _active.push_back(found->first);
    const char* from = found->second.data();
    const bool goOn = subset(from, from + found->second.size(), true);
    _active.pop_back();
    return goOn;
}

int c_xml_reader::nextRoot() {
    if (!_started) start();
    if (_failed != 0 || !Prolog(*this).read()) return scanFailed();
    return scanStartTag();
}

}  // namespace bindery
