// Real numbers as text, by a printf format, in the C locale.
#pragma once

namespace refhost {

/// Prints as snprintf does in the C locale and answers the length as snprintf does. A format that does not hold exactly
/// one conversion of a double (no "*", no length modifier but "l") prints nothing, leaves the buffer alone and gives
/// -1.
/// "%.Ng" is the fast case.
int formatReal(char* buffer, int size, const char* format, double value);

/// The shortest text that reads back as the same number; "nan", "inf", "-inf" for the others. At most 31 characters.
int shortestReal(char (&buffer)[32], double value);

}  // namespace refhost
