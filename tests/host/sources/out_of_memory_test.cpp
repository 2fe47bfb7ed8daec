// What a source does when memory is short.
#include <gtest/gtest.h>
#include <sys/resource.h>

#include <string>
#include <vector>

#include "host/interface/host.h"
#include "host/sources/csv_source.h"
#include "host/sources/csv_table.h"
#include "host/sources/source_list.h"

namespace quillet {
namespace {

std::vector<std::string> reports;

void error(HostContext*, const char* format, ...) {
    reports.push_back(format);
}
void driverError(HostContext*, const char* text, int code) {
    reports.push_back(std::to_string(code) + " " + text);
}
const char* language() {
    return "en";
}

class OutOfMemory : public testing::Test {
protected:
    void SetUp() override {
        static HostApi api = {};
        api.hostLanguage = language;
        api.hostError = error;
        api.hostDriverError = driverError;
        reports.clear();
        openSourceList();
        openHost(&api);
    }
    void TearDown() override {
        closeHost();
        closeSourceList();
    }
};

TEST_F(OutOfMemory, ACellBeyondAllRowsIsRefusedAndReported) {
    CsvTable table(nullptr, nullptr, 0);
    constexpr int row = 0x7ffffffe;
    EXPECT_EQ(table.storeNumber(row, 0, 1), -1);
    EXPECT_EQ(table.storeText(row, 0, "a longer text"), -1);
    EXPECT_EQ(table.storeBlank(row, 0), -1);
    EXPECT_EQ(table.storeBoolean(row, 0, 1), -1);
    EXPECT_EQ(table.rowCapacity, 0);
    EXPECT_EQ(reports, (std::vector<std::string>(4, "SHEET: Out of memory error.\n")));
}

#if !defined(__SANITIZE_ADDRESS__) && !defined(__SANITIZE_THREAD__)
TEST_F(OutOfMemory, ASourceThatDoesNotFitIsNoSource) {
    rlimit before;
    ASSERT_EQ(getrlimit(RLIMIT_AS, &before), 0);
    rlimit tight = before;
    tight.rlim_cur = std::size_t{1} << 30;
    ASSERT_EQ(setrlimit(RLIMIT_AS, &tight), 0);
    std::uint32_t flags = 0;
    void* const source = openCsv(nullptr, &flags, "bufsize=2000000;any.csv");
    setrlimit(RLIMIT_AS, &before);
    EXPECT_EQ(source, nullptr);
    EXPECT_EQ(flags, std::uint32_t{hostOpenSet});
    EXPECT_EQ(reports, std::vector<std::string>{"3 out of memory"});
}
#endif

}  // namespace
}  // namespace quillet
