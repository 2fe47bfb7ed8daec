// What a sheet has beside its cells, in words.
#pragma once
#include <string>
#include <vector>

#include "engine/api/isheet.h"

namespace cli {

/// Features of a sheet that a report tells. Texts are cells, areas, rows or columns as people write them; empty for
/// what is not there.
struct FeatureFacts {
    struct Filter {
        std::string area;
        int columns = 0;  // that are judged
        bool sorted = false;
    };
    struct Table {
        std::string name, area;
    };
    std::string panes, printArea, repeatedRows, repeatedColumns;
    bool isProtected = false, hasFilter = false;
    int pageBreaks = 0, merges = 0, links = 0, hiddenRows = 0, hiddenColumns = 0;
    int validationRules = 0, rowLevels = 0, columnLevels = 0;
    Filter filter;
    std::vector<Table> tables;
};
FeatureFacts featureFacts(vellum::ISheetT<char>& sheet);

/// "panes at C2; protected; print area A1:C9; 1 merge", of what there is.
std::string featureNotes(vellum::ISheetT<char>& sheet);

}  // namespace cli
