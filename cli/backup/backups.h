// Files as they were before a run.
#pragma once
#include <ostream>
#include <string>
#include <vector>

namespace cli {

/// Copies of the files that a run changes, each beside its file under the file's name and ".before". While a run goes
/// on, and after one that was cut short, the copy is the file as it was, whole.
class Backups {
public:
    /// Before the first change of a file: copies it, once. False, with a reason in `why`, when there can be no copy;
    /// then nothing may be changed. A file that is not there needs none.
    bool keep(const std::string& path, bool workbook, std::string& why);

    /// After the run: when it succeeded and every workbook loads again, the copies go, or stay when `keepCopies` is
    /// set; otherwise the files are put back, which `errors` tells. False when the run cannot count as good.
    bool finish(bool succeeded, bool keepCopies, std::ostream& errors);

private:
    struct Target {
        std::string path;
        bool workbook;
        bool hasCopy;
        [[nodiscard]] std::string copy() const { return path + ".before"; }
    };
    bool allLoad(std::ostream& errors) const;
    void putBack(std::ostream& errors);

    std::vector<Target> _targets;
};

}  // namespace cli
