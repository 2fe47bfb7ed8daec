// Start tags: names, attributes, declarations of namespaces.

#include <algorithm>

#include "bindery/binderyparse/limits.h"
#include "bindery/binderyparse/messages.h"
#include "bindery/binderyparse/reader.h"
#include "bindery/values/chars.h"

namespace bindery {

int c_xml_reader::scanStartTag() {
    const char* name = _cur + 1;
    if (name == _end) return endOfInput(true);
    if (!is(*name, char_name_start)) return malformed();
    if (_open.size() >= maxElementDepth) {
        report(0, badly_formed, msg::tooDeep);
        return scanFailed();
    }
    _contentRead = _rootRead = true;
    _cur = skipName(name, _end);
    _elementName = std::string_view(name, static_cast<std::size_t>(_cur - name));
    _open.push_back({_names.size(), _bindings.size()});
    _names.append(_elementName);
    if (!scanAttributes()) return scanFailed();
    resolveNames();
    return _token = token_start_tag;
}

/// All attributes of a start tag, up to and with its end.
bool c_xml_reader::scanAttributes() {
    _attributes.clear();
    _emptyElement = false;
    for (;;) {
        const char* at = skipSpace(_cur, _end);
        const bool separated = at != _cur;
        _cur = at;
        if (at == _end) return endOfInput(true), false;
        if (*at == '>') {
            ++_cur;
            return true;
        }
        if (*at == '/') {
            const char* close = ++_cur;
            if (close == _end) return endOfInput(true), false;
            while (close != _end && *close != '>') ++close;
            if (close != _cur) {
                const std::string_view follows(_cur, std::min<std::size_t>(20, static_cast<std::size_t>(close - _cur)));
                if (!report(1, not_well_formed, msg::afterSlash + std::string(follows))) return false;
                if (close == _end) return endOfInput(true), false;
            }
            _cur = close + 1;
            return _emptyElement = true;
        }
        if (!separated || !is(*at, char_name_start)) return malformed(), false;
        if (!scanAttribute()) return false;
    }
}

bool c_xml_reader::scanAttribute() {
    RawAttribute attribute;
    const char* at = skipName(_cur, _end);
    attribute.name = attribute.local = std::string_view(_cur, static_cast<std::size_t>(at - _cur));
    if (const std::size_t colon = attribute.name.find(':'); colon != std::string_view::npos) {
        attribute.prefix = attribute.name.substr(0, colon);
        attribute.local = attribute.name.substr(colon + 1);
    }
    at = skipSpace(at, _end);
    _cur = at;
    if (at == _end) return endOfInput(true), false;
    if (*at != '=') return report(0, not_well_formed, msg::expectedEquals + std::string(1, *at) + "')");
    at = skipSpace(at + 1, _end);
    _cur = at;
    if (at == _end) return endOfInput(true), false;
    const char quote = *at;
    if (quote != '"' && quote != '\'')
        return report(0, not_well_formed, msg::expectedQuote + std::string(1, quote) + ")");
    const char* first = ++at;
    for (;; ++at) {
        while (at != _end && !is(*at, char_value_stop)) ++at;
        if (at == _end) {
            _cur = at;
            return endOfInput(true), false;
        }
        if (*at == quote) break;
        if (*at != '"' && *at != '\'') attribute.plain = false;
    }
    attribute.raw = std::string_view(first, static_cast<std::size_t>(at - first));
    _cur = at + 1;
    if (attribute.name == "xmlns" || attribute.prefix == "xmlns") return declareNamespace(attribute);
    if (_attributes.size() >= maxAttributes) return malformed(), false;
    _attributes.push_back(attribute);
    return true;
}

bool c_xml_reader::declareNamespace(const RawAttribute& attribute) {
    if (_bindings.size() >= maxBindings) return malformed(), false;
    const std::string_view prefix = attribute.prefix.empty() ? std::string_view() : attribute.local;
    const std::string_view uri = value(attribute);
    if (_failed != 0) return false;
    const int ns = uri.empty() && !prefix.empty() ? int(namespace_unresolved) : intern(uri);
    _bindings.push_back({std::string(prefix), ns});
    if (prefix.empty()) _defaultNs = ns;
    return true;
}

}  // namespace bindery
