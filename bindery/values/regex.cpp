#include "bindery/values/regex.h"

#include <libxml/xmlregexp.h>

#include <string>

namespace bindery {

c_regex::~c_regex() {
    if (_automaton != nullptr) xmlRegFreeRegexp(_automaton);
}

bool c_regex::isMatch(std::string_view text) const {
    std::call_once(_once, [this] { _automaton = xmlRegexpCompile(reinterpret_cast<const xmlChar*>(_pattern)); });
    if (_automaton == nullptr) return true;
    const std::string terminated(text);
    return xmlRegexpExec(_automaton, reinterpret_cast<const xmlChar*>(terminated.c_str())) == 1;
}

}  // namespace bindery
