// Values as JSON.
#pragma once
#include <string>
#include <string_view>

#include "refhost/values/types.h"
#include "refhost/values/variable.h"

namespace refhost {

/// A text in quotes; null for a null pointer. Bytes that are not UTF-8 become U+FFFD, one for each.
void appendJsonText(std::string& out, const char* text);
void appendJsonText(std::string& out, std::string_view text);

/// Scalars as JSON, with "nan", "inf", "-inf" and dates as texts; sets and lists as arrays in order, arrays as
/// [[[i,j],v],...] over their existing entries, records as objects; null for an empty union or date and for what is
/// uninitialised.
void appendJson(std::string& out, const TypeRegistry& types, const Variable& variable);

/// One value; a union is type 0, and its slot has the object, as that of every type above the base types.
void appendJson(std::string& out, const TypeRegistry& types, HostType type, HostValue value);

}  // namespace refhost
