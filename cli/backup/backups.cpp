#include "cli/backup/backups.h"

#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <system_error>

#include "cli/backup/safe_copy.h"
#include "cli/workbook/book_file.h"

namespace cli {
namespace {

bool isThere(const std::string& path) {
    struct stat info;
    return stat(path.c_str(), &info) == 0;
}

bool isFile(const std::string& path) {
    struct stat info;
    return stat(path.c_str(), &info) == 0 && S_ISREG(info.st_mode);
}

}  // namespace

bool Backups::keep(const std::string& path, bool workbook, std::string& why) {
    const auto known = [&](const Target& target) { return target.path == path; };
    if (std::any_of(_targets.begin(), _targets.end(), known)) return true;
    Target target{path, workbook, false};
    if (isThere(target.copy())) {
        why = target.copy() +
              " is there already: a run before was cut short or kept it; move it away, or put it back in place of the "
              "file";
        return false;
    }
    if (isFile(path)) {
        try {
            copyFlushed(path, target.copy());
        } catch (const std::system_error& e) {
            why = std::string("no copy could be made: ") + e.what();
            return false;
        }
        target.hasCopy = true;
    }
    _targets.push_back(std::move(target));
    return true;
}

bool Backups::allLoad(std::ostream& errors) const {
    for (const Target& target : _targets) {
        std::string error;
        if (!target.workbook || !isThere(target.path) || loadBook(target.path, error)) continue;
        errors << target.path << ": what was saved does not load again: " << error << '\n';
        return false;
    }
    return true;
}

void Backups::putBack(std::ostream& errors) {
    for (const Target& target : _targets) {
        if (!target.hasCopy) continue;
        try {
            replaceBy(target.copy(), target.path);
            errors << target.path << ": put back as it was before the run\n";
        } catch (const std::system_error& e) {
            errors << target.path << ": not put back, " << e.what() << "; it is in '" << target.copy() << "'\n";
        }
    }
}

bool Backups::finish(bool succeeded, bool keepCopies, std::ostream& errors) {
    const bool good = succeeded && allLoad(errors);
    if (!good) {
        putBack(errors);
    } else if (!keepCopies) {
        for (const Target& target : _targets) {
            if (target.hasCopy) ::unlink(target.copy().c_str());
        }
    }
    _targets.clear();
    return good;
}

}  // namespace cli
