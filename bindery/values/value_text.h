// Numbers as text.
#pragma once
#include <string>
#include <string_view>

namespace bindery {

/// Numbers as XML Schema writes them: a sign, "INF", "-INF", "NaN"; independent of the locale.
bool parseReal(std::string_view text, double& to);

/// `digits` significant digits, as "%.*g" in the "C" locale; "INF", "-INF", "NaN".
void appendReal(std::string& out, double value, int digits);

}  // namespace bindery
