// Runs a script on the reference host with the module, in a folder of its own.
#pragma once
#include <filesystem>
#include <map>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "refhost/operations/host.h"

namespace support {

using Json = nlohmann::ordered_json;

/// A fresh folder, removed with everything in it at the end.
class TempFolder {
public:
    TempFolder();
    ~TempFolder();
    TempFolder(const TempFolder&) = delete;
    TempFolder& operator=(const TempFolder&) = delete;

    std::string path(const std::string& name = {}) const;
    void write(const std::string& name, const std::string& content) const;
    /// The content of a file; "(no file)" when there is none.
    std::string read(const std::string& name) const;

private:
    std::filesystem::path _folder;
};

struct ScriptResult {
    int status = 0;                            // exit status of the run
    std::vector<Json> lines;                   // what --json printed
    std::string errors;                        // what went to standard error
    std::map<std::string, std::string> files;  // of the folder, after the run
};

using Files = std::map<std::string, std::string>;

/// A folder and a host whose relative names start there. The host's `faults` and `counts` are at hand before and after
/// a run; several scripts may run one after the other on it.
///
///     ScriptRunner runner(Files{{"data.csv", "a,1\nb,2\n"}});
///     runner.host().faults.setAdd = 2;
///     const auto result = runner.run(R"(declare S : dynamic set of text
///                                       read "csv:data.csv" { S from "[A:A]" })");
///     EXPECT_EQ(result.lines[0]["status"], 1);
class ScriptRunner {
public:
    explicit ScriptRunner(const Files& files = {}, const std::string& catalogue = {});
    refhost::Host& host() {
        _plain = false;
        return _host;
    }
    TempFolder& folder() { return _folder; }
    ScriptResult run(const std::string& script);

private:
    TempFolder _folder;
    refhost::Host _host;
    bool _plain;  // nothing but a script was asked of the host
};

/// One script on a host of its own.
ScriptResult runScript(const std::string& script, const Files& files = {});

}  // namespace support
