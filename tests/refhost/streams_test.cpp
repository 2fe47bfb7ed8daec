#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <iterator>

#include "refhost/operations/host.h"

namespace refhost {
namespace {

struct Streams : testing::Test {
    Streams() {
        char name[] = "/tmp/quillet-streams-XXXXXX";
        folder = mkdtemp(name);
        host = std::make_unique<Host>(folder);
    }
    ~Streams() override { std::filesystem::remove_all(folder); }
    std::string content(const char* name) {
        std::ifstream file(folder + "/" + name, std::ios::binary);
        return {std::istreambuf_iterator<char>(file), {}};
    }
    HostContext* context() { return host->context(1).handle(); }

    std::string folder;
    std::unique_ptr<Host> host;
    const HostApi& api = hostApiTable();
};

TEST_F(Streams, AByteOrderMarkIsTheFilesCoding) {
    const std::string mark = "\xEF\xBB\xBF";
    const struct {
        std::string content;
        int mode;
        std::string read, rewritten;
    } cases[] = {
        {mark + "a,b", 0, "a,b", mark + "x"},
        {mark, 0, "", mark + "x"},
        {mark + "a,b", hostStreamBinary, mark + "a,b", "x"},
        {mark.substr(0, 2) + "a", 0, mark.substr(0, 2) + "a", "x"},
        {"", 0, "", "x"},
    };
    for (const auto& c : cases) {
        std::ofstream(folder + "/m.csv", std::ios::binary) << c.content;
        ASSERT_EQ(api.hostOpenStream(context(), c.mode, "m.csv"), 0);
        char buffer[16];
        const long got = api.hostStreamRead(context(), buffer, sizeof buffer);
        EXPECT_EQ(std::string(buffer, std::size_t(got)), c.read);
        api.hostCloseStream(context(), hostInputStream);
        ASSERT_EQ(api.hostOpenStream(context(), c.mode | hostStreamWriting, "m.csv"), 0);
        api.hostStreamPrint(context(), "x");
        api.hostCloseStream(context(), hostOutputStream);
        EXPECT_EQ(content("m.csv"), c.rewritten);
    }
}

TEST_F(Streams, PrintsWhatPrintfWould) {
    ASSERT_EQ(api.hostOpenStream(context(), hostStreamWriting, "out.txt"), 0);
    api.hostStreamPrint(context(), "\"%s\"%c", "a,b", ';');
    api.hostStreamPrint(context(), "%d%%|%5d|%s|%.2f|%s\n", -3, 42, "x", 2.5, "end");
    EXPECT_EQ(api.hostCloseStream(context(), hostOutputStream), 0);
    EXPECT_EQ(content("out.txt"), "\"a,b\";-3%|   42|x|2.50|end\n");
}

TEST_F(Streams, LargeTextsCrossTheBuffer) {
    const std::string large(700000, 'x');
    ASSERT_EQ(api.hostOpenStream(context(), hostStreamWriting, "out.txt"), 0);
    for (int i = 0; i < 5; ++i) api.hostStreamPrint(context(), "%s%c", large.c_str(), '\n');
    ASSERT_EQ(api.hostCloseStream(context(), hostOutputStream), 0);
    ASSERT_EQ(api.hostOpenStream(context(), hostStreamReading, "out.txt"), 0);
    std::string back(4000000, '\0');
    long got, total = 0;
    for (const long count : {1L, 5000L, 3000000L, 100L, 1000000L})
        if ((got = api.hostStreamRead(context(), back.data() + total, count)) > 0) total += got;
    while ((got = api.hostStreamRead(context(), back.data() + total, 70000)) > 0) total += got;
    EXPECT_EQ(api.hostCloseStream(context(), hostInputStream), 0);
    EXPECT_EQ(total, 3500005);
    EXPECT_EQ(back.substr(0, static_cast<std::size_t>(total)), content("out.txt"));
}

TEST_F(Streams, ReportsOnlyWhatItIsAskedToReport) {
    Context& own = host->context(1);
    EXPECT_LT(api.hostOpenStream(context(), hostStreamReading | hostStreamQuietly, "none"), 0);
    EXPECT_TRUE(own.ownReports.empty());
    EXPECT_LT(api.hostOpenStream(context(), hostStreamReading, "none"), 0);
    EXPECT_LT(api.hostOpenStream(context(), hostStreamWriting, "no/folder"), 0);
    EXPECT_LT(api.hostOpenStream(context(), hostStreamReading, "."), 0);
    own.deny("secret.csv");
    EXPECT_LT(api.hostOpenStream(context(), hostStreamWriting, "./x/../secret.csv"), 0);
    ASSERT_EQ(own.ownReports.size(), 4u);
    EXPECT_EQ(own.ownReports[0], "cannot open 'none' for reading: No such file or directory");
    EXPECT_EQ(own.ownReports[3], "cannot open './x/../secret.csv' for writing: access denied");
    EXPECT_EQ(content("secret.csv"), "");
}

TEST_F(Streams, OneOfEachAtATime) {
    ASSERT_EQ(api.hostOpenStream(context(), hostStreamWriting, "a"), 0);
    EXPECT_LT(api.hostOpenStream(context(), hostStreamWriting, "b"), 0);
    EXPECT_EQ(api.hostOpenStream(context(), hostStreamReading, "a"), 0);
    EXPECT_EQ(api.hostOpenStream(host->context(2).handle(), hostStreamReading, "a"), 0)
        << "contexts have streams of their own";
    EXPECT_EQ(api.hostCloseStream(context(), hostInputStream), 0);
    EXPECT_NE(api.hostCloseStream(context(), hostInputStream), 0) << "not open";
}

TEST_F(Streams, AFullDiskShowsAtTheClose) {
    ASSERT_EQ(api.hostOpenStream(context(), hostStreamWriting, "/dev/full"), 0);
    api.hostStreamPrint(context(), "%s", "text");
    EXPECT_NE(api.hostCloseStream(context(), hostOutputStream), 0);
}

TEST_F(Streams, PathsAreResolvedAgainstTheHostsFolder) {
    char path[1024];
    EXPECT_EQ(api.hostResolvePath(context(), "./sub/../data.xlsx", path, sizeof path, hostResolveAlways), 0);
    EXPECT_EQ(path, folder + "/data.xlsx");
    EXPECT_EQ(api.hostResolvePath(context(), "/abs/b.xlsx", path, sizeof path, hostResolveAlways), 0);
    EXPECT_STREQ(path, "/abs/b.xlsx");
    EXPECT_NE(api.hostResolvePath(context(), "", path, sizeof path, hostResolveAlways), 0);
    EXPECT_NE(api.hostResolvePath(context(), std::string(2000, 'x').c_str(), path, sizeof path, hostResolveAlways), 0);
    host->context(1).deny("data.xlsx");
    host->context(1).deny("sub/");
    for (const char* refused : {"data.xlsx", "./data.xlsx", "sub", "sub/a.xlsx", "x/../sub/b/c.xlsx"})
        EXPECT_NE(api.hostResolvePath(context(), refused, path, sizeof path, hostResolveAlways), 0) << refused;
    for (const char* allowed : {"data.xlsx2", "subs", "sub/../a.xlsx"})
        EXPECT_EQ(api.hostResolvePath(context(), allowed, path, sizeof path, hostResolveAlways), 0) << allowed;
}

}  // namespace
}  // namespace refhost
