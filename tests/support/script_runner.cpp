#include "tests/support/script_runner.h"

#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <optional>
#include <sstream>
#include <stdexcept>

#include "refhost/run/script_run.h"

namespace support {
namespace {

/// Writes a script down with its files before and after it and the lines that it printed, each in a folder of its own,
/// for other hosts to run it as well: where QUILLET_RECORD_SCRIPTS names a folder.
class Recorder {
public:
    Recorder(const std::string& folder, const std::string& script) : _folder(folder) {
        const char* records = std::getenv("QUILLET_RECORD_SCRIPTS");
        if (records == nullptr) return;
        static int count = 0;
        char name[40];
        std::snprintf(name, sizeof name, "%d-%05d", static_cast<int>(getpid()), ++count);
        _record = std::filesystem::path(records) / name;
        std::filesystem::create_directories(_record);
        std::filesystem::copy(folder, _record / "before");
        std::ofstream(_record / "script", std::ios::binary) << script;
        std::ofstream(_record / "folder") << folder;
    }
    void done(const std::string& lines) const {
        if (_record.empty()) return;
        std::ofstream(_record / "lines", std::ios::binary) << lines;
        std::filesystem::copy(_folder, _record / "after");
    }

private:
    const std::string _folder;
    std::filesystem::path _record;
};

}  // namespace

TempFolder::TempFolder() {
    std::string name = (std::filesystem::temp_directory_path() / "quillet-test-XXXXXX").string();
    if (!mkdtemp(name.data())) throw std::runtime_error("cannot make a folder for the test");
    _folder = name;
}

TempFolder::~TempFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(_folder, ignored);
}

std::string TempFolder::path(const std::string& name) const {
    return (name.empty() ? _folder : _folder / name).string();
}

void TempFolder::write(const std::string& name, const std::string& content) const {
    std::ofstream(_folder / name, std::ios::binary) << content;
}

std::string TempFolder::read(const std::string& name) const {
    std::ifstream file(_folder / name, std::ios::binary);
    if (!file) return "(no file)";
    return {std::istreambuf_iterator<char>(file), {}};
}

ScriptRunner::ScriptRunner(const Files& files, const std::string& catalogue)
    : _host(_folder.path()), _plain(catalogue.empty()) {
    for (const auto& [name, content] : files) _folder.write(name, content);
    _host.load(QUILLET_MODULE, catalogue);
}

ScriptResult ScriptRunner::run(const std::string& script) {
    refhost::RunOptions options;
    options.json = true;
    std::ostringstream out, err;
    ScriptResult result;
    std::optional<Recorder> recorder;
    if (_plain) recorder.emplace(_folder.path(), script);
    result.status = refhost::runScript(_host, script, options, out, err);
    if (recorder) recorder->done(out.str());
    _plain = false;  // the next script finds what this one left in the host
    result.errors = err.str();
    std::istringstream lines(out.str());
    for (std::string line; std::getline(lines, line);) result.lines.push_back(Json::parse(line));
    for (const auto& entry : std::filesystem::directory_iterator(_folder.path()))
        if (entry.is_regular_file()) {
            const std::string name = entry.path().filename().string();
            result.files[name] = _folder.read(name);
        }
    return result;
}

ScriptResult runScript(const std::string& script, const Files& files) {
    return ScriptRunner(files).run(script);
}

}  // namespace support
