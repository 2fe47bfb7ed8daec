// bench_growth [--small] [--only TEXT] [--json FILE] [xls|xlsx]: what a step costs when operations are repeated 10,000,
// 100,000 and 1,000,000 times, or a hundredth, a tenth and all of what the format allows; processor time. The exit
// status is 1 when a step failed or the cost of one grew more than threefold, which only a wrong order of cost reaches.
#include <algorithm>
#include <cstdio>
#include <cstring>
#include <ctime>
#include <fstream>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "bench/growth/known_limits.h"
#include "bench/growth/task.h"

namespace {

using growth::Task;
using growth::World;

constexpr double allowedGrowth = 3;
constexpr double noticed = 1e-3;      // seconds for all steps, below which nobody waits, however the cost grew
constexpr double mendedGrowth = 1.7;  // a known limit that grows less has gone
constexpr int attempts = 4;           // other programs on the machine disturb caches

struct Options {
    bool small = false;
    std::string only, json, engine;
};

struct Cost {
    int steps;
    double nanoseconds;  // of one step
};

struct Outcome {
    std::vector<Cost> costs;
    bool failed = false;
    bool cut = false;  // the next size would have taken too long

    double growth() const { return costs.empty() ? 0 : costs.back().nanoseconds / costs.front().nanoseconds; }
    bool grows() const {
        return growth() > allowedGrowth && costs.back().nanoseconds * costs.back().steps > noticed * 1e9;
    }
};

double processorSeconds() {
    timespec now;
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &now);
    return static_cast<double>(now.tv_sec) + static_cast<double>(now.tv_nsec) * 1e-9;
}

/// Seconds for all steps in a new world; negative when one failed.
double timed(const Task& task, bool binary, int steps) {
    World world(binary, steps);
    if (task.prepare) task.prepare(world);
    const double begin = processorSeconds();
    bool ok = true;
    if (task.all) {
        ok = task.all(world);
    } else {
        for (int i = 0; i < steps && ok; ++i) ok = task.step(world, i);
    }
    return ok ? std::max(processorSeconds() - begin, 1e-9) : -1;
}

/// The quickest of some runs: of more where they are short.
double quickest(const Task& task, bool binary, int steps) {
    double best = timed(task, binary, steps), sum = best;
    for (int run = 1; run < 4 && best > 0 && sum < (steps > 10'000 ? 0.05 : 0.01); ++run) {
        const double took = timed(task, binary, steps);
        best = std::min(best, took);
        sum += took;
    }
    return best;
}

Outcome measure(const Task& task, bool binary, const Options& options, bool limited) {
    const int most = task.most[binary ? 0 : 1];
    const int last = options.small ? std::min(most, limited ? 1'000 : 4'000) : most;
    const double budget = options.small ? 0.5 : 5;
    Outcome outcome;
    for (const int part : {100, 10, 1}) {
        if (options.small && part == 100) continue;
        const int steps = std::max(last / part, 1);
        const double seconds = quickest(task, binary, steps);
        if (seconds < 0) {
            outcome.failed = true;
            break;
        }
        outcome.costs.push_back({steps, seconds / steps * 1e9});
        // Two sizes at least: one alone would show no growth.
        if (seconds > budget && outcome.costs.size() > 1 && part > 1) {
            outcome.cut = true;
            break;
        }
    }
    return outcome;
}

const growth::KnownLimit* knownLimit(const Task& task, const char* engine) {
    for (const growth::KnownLimit& limit : growth::knownLimits) {
        if (std::strcmp(limit.task, task.name) == 0 && (!limit.engine || std::strcmp(limit.engine, engine) == 0)) {
            return &limit;
        }
    }
    return nullptr;
}

/// Measures until the growth is what it should be, a few times at most; each size counts with its quickest run.
Outcome measureFairly(const Task& task, bool binary, const Options& options, bool limited) {
    Outcome best = measure(task, binary, options, limited);
    for (int i = 1; i < attempts && !limited && !best.failed && best.grows(); ++i) {
        const Outcome again = measure(task, binary, options, limited);
        if (again.growth() < best.growth()) best = again;
    }
    return best;
}

const char* verdict(const Outcome& outcome, const growth::KnownLimit* limit, bool fullSize) {
    if (outcome.failed) return "FAILED";
    if (limit) return fullSize && outcome.growth() < mendedGrowth ? "MENDED" : "known";
    return outcome.grows() ? "GROWS" : "";
}

/// False when the task is not as it should be.
bool tell(const Task& task, const char* engine, const Outcome& outcome, bool fullSize, nlohmann::ordered_json& rows) {
    const growth::KnownLimit* const limit = knownLimit(task, engine);
    const std::string word = verdict(outcome, limit, fullSize);
    std::printf("%-5s%-42s", engine, task.name);
    for (const Cost& cost : outcome.costs) std::printf("%10d:%9.0f ns", cost.steps, cost.nanoseconds);
    std::printf("  %5.2f %s%s\n", outcome.growth(), outcome.cut ? "(not longer) " : "", word.c_str());
    if (word == "known") std::printf("     %s\n", limit->reason);
    std::fflush(stdout);
    nlohmann::ordered_json costs = nlohmann::ordered_json::array();
    for (const Cost& cost : outcome.costs) costs.push_back({{"steps", cost.steps}, {"ns", cost.nanoseconds}});
    rows.push_back(
        {{"engine", engine}, {"task", task.name}, {"costs", costs}, {"growth", outcome.growth()}, {"verdict", word}});
    if (word == "MENDED") std::printf("     it grows no more: take it off the list of known limits\n");
    return word.empty() || word == "known";
}

bool wanted(const Task& task, const char* engine, const Options& options) {
    return (options.engine.empty() || options.engine == engine) &&
           std::string(task.name).find(options.only) != std::string::npos;
}

bool parse(int argc, char** argv, Options& options) {
    for (int i = 1; i < argc; ++i) {
        const std::string word = argv[i];
        if (word == "--small") {
            options.small = true;
        } else if (word == "--only" && i + 1 < argc) {
            options.only = argv[++i];
        } else if (word == "--json" && i + 1 < argc) {
            options.json = argv[++i];
        } else if (word == "xls" || word == "xlsx") {
            options.engine = word;
        } else {
            return false;
        }
    }
    return true;
}

}  // namespace

int main(int argc, char** argv) {
    Options options;
    if (!parse(argc, argv, options)) {
        std::fprintf(stderr, "usage: bench_growth [--small] [--only TEXT] [--json FILE] [xls|xlsx]\n");
        return 2;
    }
    nlohmann::ordered_json rows = nlohmann::ordered_json::array();
    bool fine = true;
    for (const auto tasks :
         {growth::cellTasks(), growth::textTasks(), growth::rowTasks(), growth::featureTasks(), growth::pictureTasks(),
          growth::bookTasks(), growth::formatTasks(), growth::csvTasks(), growth::statementTasks()}) {
        for (const Task& task : tasks) {
            for (const bool binary : {true, false}) {
                const char* const engine = binary ? "xls" : "xlsx";
                if (task.most[binary ? 0 : 1] == 0 || !wanted(task, engine, options)) continue;
                const bool limited = knownLimit(task, engine) != nullptr;
                fine = tell(task, engine, measureFairly(task, binary, options, limited), !options.small, rows) && fine;
            }
        }
    }
    if (!options.json.empty()) std::ofstream(options.json) << rows.dump(1) << '\n';
    return fine ? 0 : 1;
}
