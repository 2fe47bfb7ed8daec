#include <filesystem>
#include <system_error>

#include "cli/explain/facts/texts.h"
#include "cli/explain/rules/rules.h"
#include "refhost/operations/file_overlay.h"

namespace cli::explain {
namespace {

bool isThere(const std::filesystem::path& path) {
    std::error_code ignored;
    return std::filesystem::exists(path, ignored);
}

void look(const Target& target, Finding& finding) {
    const std::filesystem::path path(target.path), folder = path.parent_path();
    const std::string name = path.filename().string();
    if (!refhost::canWrite(target.path)) finding.note("no right to write " + inQuotes(name));
    for (const std::string& lock : {std::string(".~lock.").append(name).append("#"), std::string("~$").append(name)}) {
        if (isThere(folder / lock)) finding.note(inQuotes(lock).append(" stands beside it"));
    }
}

}  // namespace

const Rule lockedFile = {
    .name = "locked-file",
    .text = "the file cannot be written, or somebody has it open",
    .advice = "Close the file in the other program first: who saves last wins.",
    .onTarget = look,
};

}  // namespace cli::explain
