// References to characters and entities, and the values and texts that hold them.

#include <algorithm>

#include "bindery/binderyparse/limits.h"
#include "bindery/binderyparse/messages.h"
#include "bindery/binderyparse/reader.h"
#include "bindery/binderyparse/references.h"
#include "bindery/values/chars.h"
#include "bindery/values/value_spec.h"

namespace bindery {

namespace {

constexpr char32_t maxReference = 0x100000;
constexpr std::size_t noEntity = static_cast<std::size_t>(-1);

struct Predefined {
    std::string_view name;
    char value;
};
constexpr Predefined predefined[] = {{"lt", '<'}, {"gt", '>'}, {"amp", '&'}, {"apos", '\''}, {"quot", '"'}};

int digitOf(char c, int base) {
    int digit = 99;
    if (c >= '0' && c <= '9') digit = c - '0';
    if (c >= 'a' && c <= 'f') digit = c - 'a' + 10;
    if (c >= 'A' && c <= 'F') digit = c - 'A' + 10;
    return digit < base ? digit : -1;
}

}  // namespace

bool numericReference(std::string& out, const char*& at, const char* end) {
    if (end - at < 2 || at[1] != '#') return false;
    const char* p = at + 2;
    const int base = p != end && *p == 'x' ? 16 : 10;
    if (base == 16) ++p;
    const char* first = p;
    char32_t c = 0;
    for (; p != end && digitOf(*p, base) >= 0; ++p)
        c = std::min<char32_t>(c * static_cast<unsigned>(base) + static_cast<unsigned>(digitOf(*p, base)),
                               maxReference + 1);
    if (p == first || c > maxReference) return false;
    if (c == 133 || c == 8232) c = '\n';
    appendCodePoint(out, c == 0 ? 0xFFFD : c);
    at = p != end && *p == ';' ? p + 1 : p;  // a reference without its ";" counts
    return true;
}

std::size_t c_xml_reader::findEntity(std::string_view name) const {
    const auto found = _entityIndex.find(name);
    return found != _entityIndex.end() ? found->second : noEntity;
}

/// Counts an entity as being expanded; false when a bound is met, which has been reported.
bool c_xml_reader::enterEntity(std::size_t index) {
    const Entity& entity = _entities[index];
    if (std::find(_active.begin(), _active.end(), index) != _active.end()) {
        report(1, recursive_entity, msg::recursiveEntity + entity.name);
        return false;
    }
    _expanded += entity.value.size() + 1;
    if (_active.size() >= maxEntityDepth || _expanded > maxEntityBytes) {
        report(0, recursive_entity, msg::recursiveEntity + entity.name);
        return false;
    }
    _active.push_back(index);
    return true;
}

void c_xml_reader::leaveEntity() {
    _active.pop_back();
}

/// A reference at "&": appends what it stands for and passes it. What is no reference stands as it is.
/// A general entity is not appended: its index is the result, behind its reference.
std::size_t c_xml_reader::expandReference(std::string& out, const char*& at, const char* end) {
    if (numericReference(out, at, end)) return noEntity;
    const char* nameEnd = skipName(at + 1, end);
    if (nameEnd != end && *nameEnd == ';') {
        const std::string_view name(at + 1, static_cast<std::size_t>(nameEnd - at - 1));
        for (const Predefined& known : predefined) {
            if (known.name != name) continue;
            out += known.value;
            at = nameEnd + 1;
            return noEntity;
        }
        if (const std::size_t entity = findEntity(name); entity != noEntity) {
            at = nameEnd + 1;
            return entity;
        }
    }
    out += *at++;
    return noEntity;
}

void c_xml_reader::expandValue(std::string& out, std::string_view raw) {
    const bool utf8 = _encoding == Encoding::utf8;
    const char* at = raw.data();
    const char* end = at + raw.size();
    while (at != end) {
        const char* run = at;
        while (at != end && !is(*at, char_value_stop)) ++at;
        out.append(run, at);
        if (at == end) return;
        if (*at == '&') {
            const std::size_t entity = expandReference(out, at, end);
            if (entity == noEntity) continue;
            if (enterEntity(entity)) {
                expandValue(out, _entities[entity].value);
                leaveEntity();
            }
            if (_failed != 0) return;
        } else if (const int length = endOfLine(at, end, utf8)) {
            out += ' ';
            at += length;
        } else {
            out += *at == '\t' ? ' ' : *at;
            ++at;
        }
    }
}

std::string_view c_xml_reader::value(const RawAttribute& attribute) {
    if (attribute.plain) return attribute.raw;
    _valueScratch.clear();
    expandValue(_valueScratch, attribute.raw);
    return _valueScratch;
}

/// A run of character data at the cursor, up to markup or to an entity, which is entered. False when it is empty.
bool c_xml_reader::scanText() {
    const char* at = _cur;
    while (at != _end && !is(*at, char_text_stop)) ++at;
    if (at == _end || *at == '<') {
        _text = std::string_view(_cur, static_cast<std::size_t>(at - _cur));
        _cur = at;
        return !_text.empty();
    }
    const bool utf8 = _encoding == Encoding::utf8;
    _textScratch.assign(_cur, at);
    while (at != _end && *at != '<') {
        if (*at == '&') {
            const std::size_t entity = expandReference(_textScratch, at, _end);
            if (entity == noEntity) continue;
            _cur = at;
            if (enterEntity(entity)) {
                _frames.push_back({_cur, _end});
                _cur = at = _entities[entity].value.data();
                _end = _cur + _entities[entity].value.size();
                break;
            }
            if (_failed != 0) return false;
        } else if (const int length = endOfLine(at, _end, utf8)) {
            _textScratch += '\n';
            at += length;
        } else {
            const char* run = at++;
            while (at != _end && !is(*at, char_text_stop)) ++at;
            _textScratch.append(run, at);
        }
    }
    _cur = at;
    _text = _textScratch;
    return !_text.empty();
}

}  // namespace bindery
