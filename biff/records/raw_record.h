// A record in wire form, with what continues it.
#pragma once
#include <cstddef>
#include <cstdint>
#include <span>

#include "biff/container/record_ids.h"
#include "biff/container/xls.h"

namespace vellum {

/// Whether a record of identifier `next`, right behind one of `parent` and what already continues that, is a part of
/// it: any of the four CONTINUE records behind anything, and the followers of a few parents.
bool continuesRecord(std::uint16_t parent, std::uint16_t next);

/// Takes the body behind a header that was just taken and what continues it, and answers all of it in wire form with
/// the header, in place. Moved away from its record a continuation would attach to a stranger, so they travel together.
std::span<const std::byte> takeRaw(Xls& xls, RecordHeader header);

}  // namespace vellum
