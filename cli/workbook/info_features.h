#pragma once

#include <string>

#include "engine/api/isheet.h"

namespace cli {

/// What a sheet has beside its cells, in words for people: "panes at B3; 4 merges; print area A1:C9"; "" for nothing.
std::string featureNotes(vellum::ISheetT<char>& sheet);

}  // namespace cli
