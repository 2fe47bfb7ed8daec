#include "cli/recalc/calculated_copy.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>

#include "cli/recalc/program.h"

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
        std::error_code failed;
        const fs::path parent = fs::absolute(fs::temp_directory_path(failed), failed);
        std::string name = (parent / "quillet-recalc-XXXXXX").string();
        if (!failed && mkdtemp(name.data()) != nullptr) _path = name;
    }
    ~WorkFolder() {
        std::error_code ignored;
        if (!_path.empty()) fs::remove_all(_path, ignored);
    }
    WorkFolder(const WorkFolder&) = delete;
    WorkFolder& operator=(const WorkFolder&) = delete;
    /// Empty when none could be made.
    [[nodiscard]] const fs::path& path() const { return _path; }

private:
    fs::path _path;
};

std::string fileUrl(const fs::path& path) {
    constexpr char hex[] = "0123456789ABCDEF";
    constexpr std::string_view plain = "/-._~0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz";
    std::string url = "file://";
    for (const char c : path.string()) {
        if (plain.find(c) != plain.npos) {
            url += c;
        } else {
            const auto byte = static_cast<unsigned char>(c);
            url.append(1, '%').append(1, hex[byte >> 4]).append(1, hex[byte & 15]);
        }
    }
    return url;
}

/// The copy and the settings; false when there is no room for them.
bool prepare(const fs::path& folder, const std::string& from, const fs::path& copy) {
    std::error_code failed;
    const fs::path user = folder / "profile" / "user";
    if (folder.empty() || !fs::create_directories(user, failed) || !fs::copy_file(from, copy, failed)) return false;
    return static_cast<bool>((std::ofstream(user / "registrymodifications.xcu") << settings).flush());
}

}  // namespace

std::string calculatorMissing() {
    return isInstalled(program) ? "" : "LibreOffice is not installed: there is no program 'soffice'";
}

BookPtr calculatedCopy(const std::string& path, int seconds, std::string& error) {
    error = calculatorMissing();
    if (!error.empty()) return nullptr;
    const SignalsHeld signals;  // until the folder is gone
    const WorkFolder folder;
    const fs::path copy = folder.path() / (isPackage(path) ? "book.xlsx" : "book.xls");
    if (!prepare(folder.path(), path, copy)) {
        error = "cannot make a copy to calculate; is there room in the folder of temporary files (TMPDIR)?";
        return nullptr;
    }
    const fs::path out = folder.path() / "out", made = out / "book.xlsx";
    const std::string profile = "-env:UserInstallation=" + fileUrl(folder.path() / "profile");
    const std::string failure =
        runProgram({program, "--headless", profile, "--convert-to", "xlsx", "--outdir", out.string(), copy.string()},
                   seconds, signals);
    std::error_code failed;
    if (!failure.empty() || !fs::exists(made, failed)) {
        error = "LibreOffice could not calculate the workbook: it " + (failure.empty() ? "made no file" : failure);
        return nullptr;
    }
    BookPtr book = loadBook(made.string(), error);
    if (!book) error = "what LibreOffice calculated cannot be read: " + error;
    return book;
}

}  // namespace cli
