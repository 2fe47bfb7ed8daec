// Several contexts of one host, each on a thread of its own.
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <thread>

#include "refhost/operations/module.h"
#include "refhost/operations/statement.h"
#include "tests/support/script_runner.h"

namespace refhost {
namespace {

constexpr int threads = 4, rounds = 12;

/// Writes an array to a file of the thread's own, and reads it back together with a file that all share.
void work(Host& host, const std::string& driverName, int number, std::string& failure) {
    Context& context = host.context(number);
    const Driver& csv = *host.module().driver("csv");
    const Driver& driver = *host.module().driver(driverName);
    const std::string own = "own" + std::to_string(number) + "." + driverName;
    for (int round = 0; round < rounds; ++round) {
        auto rows = std::make_unique<Set>(host.types, 1, 50, false);
        const auto written = Variable::ofArray(
            "written", std::make_unique<Array>(host.types, std::vector{rows.get()}, hostTypeReal, false));
        for (int i = 1; i <= 50; ++i) written->array->slot(&i)->real = number * 1000 + round + i;
        const auto again = Variable::ofArray(
            "again", std::make_unique<Array>(host.types, std::vector{rows.get()}, hostTypeReal, true));
        const auto names = Variable::ofSet("names", std::make_unique<Set>(host.types, hostTypeText, true));
        void* held = openSource(context, csv, "shared.csv", false);
        const TransferItem out[] = {{written.get(), "[A1:B1]"}}, in[] = {{again.get(), "[A:B]"}},
                           shared[] = {{names.get(), "[A:A]"}};
        const bool ok = held && transfer(context, driver, "grow;" + own, Direction::write, out).ok() &&
                        transfer(context, driver, own, Direction::read, in).ok() &&
                        transfer(context, csv, "shared.csv", Direction::read, shared).ok() &&
                        csv.close(context.handle(), held) == 0;
        const int last[] = {50};
        if (!ok || names->set->size() != 200 || again->array->get(last).real != number * 1000 + round + 50) {
            failure = "context " + std::to_string(number) + ", round " + std::to_string(round);
            for (const std::string& message : context.messages) failure += "\n" + message;
            for (const DriverReport& report : context.driverReports) failure += "\n" + report.text;
            return;
        }
    }
}

class Threads : public testing::TestWithParam<const char*> {};

TEST_P(Threads, ContextsOpenReadWriteAndCloseAtOnce) {
    std::string shared;
    for (int i = 0; i < 200; ++i) shared += "name" + std::to_string(i) + "," + std::to_string(i) + "\n";
    support::ScriptRunner runner(support::Files{{"shared.csv", shared}});
    Host& host = runner.host();
    Context& probe = host.context(99);
    void* made = openSource(probe, *host.module().driver(GetParam()), "probe", true);
    if (!made && probe.driverReports.at(0).text == "cannot create book") FAIL() << "this engine is not linked";
    host.module().driver(GetParam())->close(probe.handle(), made);
    std::vector<std::string> failures(threads);
    std::vector<std::thread> running;
    for (int i = 0; i < threads; ++i) {
        running.emplace_back([&, i] { work(host, GetParam(), i + 1, failures[static_cast<std::size_t>(i)]); });
    }
    for (std::thread& thread : running) thread.join();
    for (const std::string& failure : failures) EXPECT_EQ(failure, "");
    EXPECT_TRUE(host.counts.balanced());
}

TEST_P(Threads, AHostMayForkBetweenCalls) {
    std::string shared;
    for (int i = 0; i < 200; ++i) shared += "name" + std::to_string(i) + "," + std::to_string(i) + "\n";
    support::ScriptRunner runner(support::Files{{"shared.csv", shared}});
    Host& host = runner.host();
    const Driver& driver = *host.module().driver(GetParam());
    std::string failure;
    work(host, GetParam(), 9, failure);
    ASSERT_EQ(failure, "");
    void* const held = openSource(host.context(9), driver, std::string("own9.") + GetParam(), true);
    ASSERT_NE(held, nullptr);  // open in both processes
    const pid_t child = fork();
    ASSERT_NE(child, -1);
    if (child == 0) {
        alarm(60);
        work(host, GetParam(), 2, failure);
        _exit(failure.empty() ? 0 : 1);
    }
    work(host, GetParam(), 1, failure);
    EXPECT_EQ(failure, "");
    int status = -1;
    waitpid(child, &status, 0);
    EXPECT_EQ(status, 0);
    EXPECT_EQ(driver.close(host.context(9).handle(), held), 0);
}

INSTANTIATE_TEST_SUITE_P(Of, Threads, testing::Values("csv", "xls", "xlsx"),
                         [](const auto& driver) { return driver.param; });

}  // namespace
}  // namespace refhost
