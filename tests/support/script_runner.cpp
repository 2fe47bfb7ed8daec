#include "tests/support/script_runner.h"

#include <cstdlib>
#include <fstream>
#include <iterator>
#include <sstream>
#include <stdexcept>

#include "refhost/run/script_run.h"

namespace support {

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

ScriptRunner::ScriptRunner(const Files& files, const std::string& catalogue) : _host(_folder.path()) {
    for (const auto& [name, content] : files) _folder.write(name, content);
    _host.load(QUILLET_MODULE, catalogue);
}

ScriptResult ScriptRunner::run(const std::string& script) {
    refhost::RunOptions options;
    options.json = true;
    std::ostringstream out, err;
    ScriptResult result;
    result.status = refhost::runScript(_host, script, options, out, err);
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
