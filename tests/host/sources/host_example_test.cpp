// The worked example of docs/host-interface.md: it is the code of examples/host.c, which is run here.
#include <gtest/gtest.h>

#include <fstream>
#include <iterator>
#include <sstream>
#include <string>

#include "refhost/operations/host.h"
#include "refhost/values/array.h"
#include "tests/support/script_runner.h"

extern "C" {
const HostInterfaceBlock* loadModule(const char* path, const HostApi* hostApi, int hostVersion);
int readSales(const HostInterfaceBlock* block, HostContext* context, HostValue* total, HostArray* sales);
void shutDownModule(const HostInterfaceBlock* block);
}

namespace {

TEST(HostExample, ReadsItsItems) {
    using namespace refhost;
    support::TempFolder folder;
    folder.write("sales.csv", "item,price,since,,total\nbolt,1.5,2024-03-01,,3.75\nnut,2.25,2024-04-02\n");
    Host host(folder.path());
    while (host.types.addRecord("Price", {{"price", hostTypeReal}, {"since", typeDate}}) < 11) continue;
    Set items(host.types, hostTypeText, true);
    Array sales(host.types, {&items}, 11, true);
    HostValue total{};

    EXPECT_EQ(loadModule("none.dso", &hostApiTable(), hostVersion), nullptr);
    const HostInterfaceBlock* const block = loadModule(QUILLET_MODULE, &hostApiTable(), hostVersion);
    ASSERT_NE(block, nullptr);
    EXPECT_EQ(readSales(block, host.context(1).handle(), &total, reinterpret_cast<HostArray*>(&sales)), 0);
    shutDownModule(block);

    EXPECT_EQ(total.real, 3.75);
    ASSERT_EQ(sales.count(), 2);
    const int nut[] = {2};
    const auto& record = *static_cast<RecordObject*>(sales.get(nut).object);
    EXPECT_STREQ(items.element(2).text, "nut");
    EXPECT_EQ(record.fields[0].real, 2.25);
    char since[64];
    hostApiTable().hostValueToText(host.context(1).handle(), typeDate, record.fields[1], since, sizeof since);
    EXPECT_STREQ(since, "2024-04-02");
    EXPECT_TRUE(host.counts.balanced());
}

TEST(HostExample, IsWhatTheDocumentQuotes) {
    std::ifstream example(QUILLET_SOURCE_DIR "/examples/host.c"),
        document(QUILLET_SOURCE_DIR "/docs/host-interface.md");
    const std::string code{std::istreambuf_iterator<char>(example), {}};
    int blocks = 0;
    std::string block;
    for (std::string line; std::getline(document, line) || !block.empty(); line.clear()) {
        if (line.starts_with("    ")) {
            block += line + '\n';
        } else if (!block.empty()) {
            EXPECT_NE(code.find(block), std::string::npos) << "not in examples/host.c:\n" << block;
            ++blocks;
            block.clear();
        }
    }
    EXPECT_EQ(blocks, 2);
}

}  // namespace
