// Values for people to read.
#pragma once
#include <string>

#include "refhost/values/types.h"
#include "refhost/values/variable.h"

namespace refhost {

/// One line for scalars and short sets, an aligned table for arrays, records and lists of records; a two-dimensional
/// array of plain values with few columns as a grid. Ends in a newline.
std::string printForPeople(const TypeRegistry& types, const Variable& variable);

}  // namespace refhost
