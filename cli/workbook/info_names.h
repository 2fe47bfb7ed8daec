#pragma once

#include <ostream>

#include "engine/api/ibook.h"

namespace cli {

/// The defined names of a book, and what it refers to outside of itself, for people.
void printNames(vellum::IBookT<char>& book, std::ostream& out);

}  // namespace cli
