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
    {"insert a row at the end", "xlsx", "all cells, links and rules are looked at for what moves, once a call"},
    {"remove the last row", "xls", "places of rows that went are looked through, of which a sheet has 65,536 at most"},
    {"remove the last row", "xlsx", "all cells, links and rules are looked at for what moves, once a call"},
    {"group row", "xls", "the deepest level of all rows is found anew, because files tell it wrongly"},
    {"set column, from the right", "xlsx", "the columns behind move up; a sheet has 16,384 at most"},
    {"find merged block", "xls", "blocks are looked at in order, of which a sheet of this format has few"},
    {"unmerge at a cell", nullptr, "all blocks that hold the cell go, and they are looked at in order"},
    {"unmerge the first by number", nullptr, "the list behind the block moves up"},
    {"remove row break", "xlsx", "the list behind the break moves up"},
    {"remove the first link", nullptr, "the list behind the link moves up"},
    {"remove name", "xlsx", "the list behind the name moves up"},
    {"ignored error", "xlsx", "a range is compared with all that are there: none comes twice"},
    {"remove placed picture at a cell", nullptr, "pictures are looked at in order"},
    {"remove the last placed picture", nullptr, "pictures are looked at in order"},
    {"add sheet", "xls", "a name is compared with those of all sheets"},
    {"insert sheet in front", nullptr, "a name is compared with those of all sheets; what counts sheets moves up"},
    {"rename sheet", nullptr, "a name is compared with those of all sheets"},
    {"move sheet to the front", nullptr, "what counts sheets is told of it"},
    {"remove the last sheet", nullptr, "what counts sheets is told of it"},
    {"remove the first sheet", nullptr, "what counts sheets is told of it"},
    {"run of a rich text", "xls", "a run makes the shared text anew with all that it had"},
    {"sources open at once", nullptr, "the list of sources is walked, in the order that a host may count on"},
};

}  // namespace growth
