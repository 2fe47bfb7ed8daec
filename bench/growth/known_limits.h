// Tasks whose cost for each step grows, with the reason why it stays so. One that no longer grows is told, and comes
// off this list.
#pragma once

namespace growth {

struct KnownLimit {
    const char* task;
    const char* engine;  // "xls" or "xlsx"; null: both
    const char* reason;
};

constexpr KnownLimit knownLimits[] = {
    {"insert a row at the top", nullptr, "every cell below moves, which is what the operation does"},
    {"remove a row at the top", nullptr, "every cell below moves, which is what the operation does"},
    {"sources open at once", nullptr, "the list of sources is walked, in the order that a host may count on"},
};

}  // namespace growth
