// Numbers in text, by the rules of the C library under the "C" locale, whatever LC_NUMERIC the process has: loading
// and saving of workbooks change it for a while, on any thread.
#pragma once

namespace quillet {

/// strtod under the "C" locale. `end` as for strtod; errno is set to ERANGE as by strtod and left alone otherwise.
double strtodC(const char* text, char** end);

}  // namespace quillet
