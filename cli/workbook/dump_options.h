#pragma once

namespace cli {

/// What `quillet dump` prints besides the list of sheets.
struct DumpOptions {
    bool cells = true;
    bool features = false;  // a line of its settings behind each worksheet's cells

    /// Whatever there is; the cells stay as they are.
    void addAll() { features = true; }
};

}  // namespace cli
