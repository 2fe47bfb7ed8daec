#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

#include "tests/support/script_runner.h"

/// A host that runs scripts for one driver, in a folder of its own. In a script `$D` stands for the driver's name and
/// `$E` for the extension of its files.
class WorkbookHost {
public:
    explicit WorkbookHost(const char* driver) : _driver(driver) {}

    /// What the statements of a script tell, a line each: "read [counts]", "write", "open", "close", then where there
    /// is trouble the status, messages in quotes, driver reports as code:"text"; a printed variable as its name and
    /// value in JSON.
    std::string run(std::string script);
    support::TempFolder& folder() { return _runner.folder(); }

private:
    std::string _driver;
    support::ScriptRunner _runner;
};

/// A test over each workbook driver.
class WorkbookScript : public testing::TestWithParam<const char*> {
protected:
    void SetUp() override;

    std::string run(std::string script) { return _host.run(std::move(script)); }
    bool isXls() const { return extension() == "xls"; }
    std::string extension() const { return GetParam(); }
    support::TempFolder& folder() { return _host.folder(); }

private:
    WorkbookHost _host{GetParam()};
};

#define INSTANTIATE_FOR_DRIVERS(Suite) \
    INSTANTIATE_TEST_SUITE_P(Of, Suite, testing::Values("xls", "xlsx"), [](const auto& driver) { return driver.param; })
