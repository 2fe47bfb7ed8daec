// The bytes as a workbook stream: records raw, and by the kind of each the string forms, values and continuations.
#include <algorithm>
#include <cstdlib>

#include "biff/container/memory_stream.h"
#include "biff/container/record_codec.h"
#include "biff/records/continue_writer.h"
#include "biff/records/ext_string.h"
#include "biff/records/raw_record.h"
#include "biff/records/unicode_string.h"

using namespace vellum;

namespace {

std::vector<std::byte> fileAround(std::span<const std::byte> stream) {
    MemoryStream out;
    Xls xls;
    xls.setStream(&out);
    xls.writeBytes(stream);
    xls.close();
    const auto bytes = std::as_bytes(std::span(out.written()));
    return {bytes.begin(), bytes.end()};
}

void readStrings(Xls& xls, RecordHeader header, StringPool& pool) {
    std::uint16_t budget = header.size;
    switch (header.id) {
        case record_id::SST:
            for (std::uint32_t left = xls.readInt32(budget); left > 0; --left) {
                const ExtString a = ExtString::read(xls, pool, budget);
                if (!sameString(a, a) && !a.hasPhonetic()) std::abort();
            }
            break;
        case record_id::Label:
            XLUnicodeString::read(xls, pool, TextForm::withFlags, false, budget);
            xls.skip(budget);
            break;
        case record_id::RString:
            XLUnicodeString::read(xls, pool, TextForm::noFlags, true, budget);
            xls.skip(budget);
            break;
        case record_id::Font: {
            Cursor body = xls.body(header.size);
            while (!body.empty()) ShortXLUnicodeString::read(body, pool, TextForm::withFlags, "Font");
            break;
        }
        case record_id::MsoDrawing: {
            std::string s;
            while (budget > 0 || xls.acceptContinue(budget)) xls.readString(&s, 1000, budget);
            break;
        }
        default:
            takeRaw(xls, header);
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0) return 0;
    const auto file = fileAround(std::as_bytes(std::span(data, size)));
    MemoryStream in(file);
    Xls xls;
    xls.setStream(&in);
    xls.measure();
    std::uint64_t counter = 0;
    xls.read(counter);
    // A pool's block is large, and a new one for each input would be most of the work.
    static StringPool pool;
    static unsigned runs = 0;
    if (++runs % 256 == 0) pool.clear();
    try {
        while (const auto header = xls.nextRecord()) readStrings(xls, *header, pool);
    } catch (const vlerror&) {
    }
    return 0;
}
