// A worksheet part from hostile bytes: bound, written, bound and written again.
#include "fuzz/ooxml/ooxml_round_trip.h"
#include "ooxml/generated/sml-sheet/sml-sheet.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    roundTrip<sheet::c_worksheet>(bytes, size);
    return 0;
}
