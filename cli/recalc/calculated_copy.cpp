#include "cli/recalc/calculated_copy.h"

#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <vector>

namespace cli {
namespace {

namespace fs = std::filesystem;

constexpr const char* program = "soffice";

/// All formulas are calculated when a file is loaded, whoever wrote it.
constexpr const char* settings =
    R"(<?xml version="1.0" encoding="UTF-8"?>
<oor:items xmlns:oor="http://openoffice.org/2001/registry">
<item oor:path="/org.openoffice.Office.Calc/Formula/Load">
<prop oor:name="OOXMLRecalcMode" oor:op="fuse"><value>0</value></prop></item>
</oor:items>
)";

/// A folder of its own, gone with all that is in it at the end.
class WorkFolder {
public:
    WorkFolder() {
        std::string name = (fs::temp_directory_path() / "quillet-recalc-XXXXXX").string();
        if (mkdtemp(name.data()) != nullptr) _path = name;
    }
    ~WorkFolder() {
        std::error_code ignored;
        if (!_path.empty()) fs::remove_all(_path, ignored);
    }
    WorkFolder(const WorkFolder&) = delete;
    WorkFolder& operator=(const WorkFolder&) = delete;
    [[nodiscard]] const fs::path& path() const { return _path; }

private:
    fs::path _path;
};

constexpr int notFound = 127;  // as a shell answers

/// The exit status of a program whose output nobody reads.
int execute(const std::vector<std::string>& arguments) {
    const pid_t child = fork();
    if (child < 0) return notFound;
    if (child == 0) {
        const int nowhere = ::open("/dev/null", O_RDWR);
        for (int fd = 0; fd <= 2; ++fd) dup2(nowhere, fd);
        std::vector<char*> words;
        for (const std::string& argument : arguments) words.push_back(const_cast<char*>(argument.c_str()));
        words.push_back(nullptr);
        execvp(words[0], words.data());
        _exit(notFound);
    }
    int status = 0;
    while (waitpid(child, &status, 0) < 0 && errno == EINTR) continue;
    return WIFEXITED(status) ? WEXITSTATUS(status) : 1;
}

}  // namespace

BookPtr calculatedCopy(const std::string& path, std::string& error) {
    const WorkFolder folder;
    std::error_code failed;
    const fs::path user = folder.path() / "profile" / "user", out = folder.path() / "out";
    const fs::path copy = folder.path() / (isPackage(path) ? "book.xlsx" : "book.xls");
    if (!folder.path().empty()) fs::create_directories(user, failed);
    if (folder.path().empty() || failed || !fs::copy_file(path, copy, failed)) {
        error = "cannot make a copy to calculate";
        return nullptr;
    }
    std::ofstream(user / "registrymodifications.xcu") << settings;
    const std::string profile = "-env:UserInstallation=file://" + (folder.path() / "profile").string();
    const int status =
        execute({program, "--headless", profile, "--convert-to", "xlsx", "--outdir", out.string(), copy.string()});
    if (status == notFound) {
        error = "LibreOffice is not installed: there is no program 'soffice'";
        return nullptr;
    }
    if (status != 0 || !fs::exists(out / "book.xlsx", failed)) {
        error = "LibreOffice could not calculate the workbook";
        return nullptr;
    }
    return loadBook((out / "book.xlsx").string(), error);
}

}  // namespace cli
