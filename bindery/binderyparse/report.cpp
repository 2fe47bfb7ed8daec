// The error state of a reader, and the record of the failure that ends an unmarshal.

#include <algorithm>

#include "bindery/binderyparse/reader.h"

namespace bindery {

namespace {

constexpr const char* ownSource = "bindery/binderyparse";

}  // namespace

c_xml_reader::c_xml_reader(c_read& source) : _source(source) {
    nameUri(xmlUri, namespace_xml);
    nameUri(xsiUri, namespace_xsi);
}

c_xml_reader::~c_xml_reader() = default;

int c_xml_reader::userError(int code, std::string_view, const char*, int) {
    return code;
}

int c_xml_reader::capture(int code, std::string_view item, const char* file, int line) {
    _error = {code, std::string(item), file, line, currentLine()};
    return code;
}

int c_xml_reader::fail(int code, std::string_view item) {
    const bool isOwn = code != 0 && code == _failed;
    const char* const file = isOwn ? ownSource : _sourceFile;
    const int line = isOwn ? _failedLine : _sourceLine;
    const int answer = userError(code, item, file, line);
    if (answer != 0 && _error.code == 0) capture(answer, item, file, line);
    return answer;
}

bool c_xml_reader::report(int severity, int code, std::string_view text, int ownLine) {
    if (_state.fatal != 0) return false;
    if (severity == 0) ++_state.fatal;
    if (severity <= 1) ++_state.errors;
    if (severity >= 2) ++_state.warnings;
    if (severity == 3) ++_state.further;
    _state.lastSeverity = severity;
    _state.lastCode = code;
    _state.lastLine = currentLine();
    _state.lastText = text;
    bool goOn = severity >= 2;
    if (_state.report) goOn = _state.report(severity, code, text, _state.lastLine);
    if (severity == 0) goOn = false;
    if (!goOn) endParse(code, ownLine);
    return goOn;
}

void c_xml_reader::endParse(int code, int line) {
    if (_failed != 0) return;
    _failed = code;
    _failedLine = line;
    _failedAt = _frames.empty() ? _cur : _frames.front().cur;
    _cur = _end;
}

int c_xml_reader::currentLine() const {
    if (_begin == nullptr) return 1;
    const char* at = _failedAt != nullptr ? _failedAt : _frames.empty() ? _cur : _frames.front().cur;
    if (_lineAt < _begin || _lineAt > at) {
        _lineAt = _begin;
        _line = 1;
    }
    _line += static_cast<int>(std::count(_lineAt, at, '\n'));
    _lineAt = at;
    return _line;
}

std::string attributeItem(std::string_view name) {
    std::string item(1, '@');
    return item.append(name);
}

bool forgivable(int code) {
    switch (code) {
        case too_many_fraction_digits:
        case too_long:
        case too_short:
        case element_missing:
        case no_pattern_matched:
        case attribute_missing:
        case too_many_elements:
        case too_many_digits:
        case unknown_in_all:
        case unknown_element:
        case unexpected_empty:
        case above_maximum:
        case below_minimum:
        case unexpected_attribute:
            return true;
        default:
            return false;
    }
}

}  // namespace bindery
