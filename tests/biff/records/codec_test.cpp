#include <sstream>

#include "biff/cells/rk.h"
#include "biff/container/record_codec.h"
#include "fixture.h"

namespace vellum::test {
namespace {

struct Sample {
    static constexpr std::uint16_t id = 513;
    static constexpr const char* name = "Blank";
    std::uint16_t rw = 0, col = 0, ixfe = 15;
    std::array<std::uint8_t, 2> pair{1, 2};
    template <class Self, class Visit>
    static constexpr void fields(Self& r, Visit&& visit) {
        visit("rw", r.rw);
        visit("col", r.col);
        visit("ixfe", r.ixfe);
        visit("pair", r.pair);
    }
};

TEST(RecordCodec, OneListReadsWritesAndDumps) {
    const Bytes wire = hex("01 02 08 00 02 01 05 00 0F 00 07 08");
    Stream in(joined({wire, record(10, {})}));
    const Sample sample = readFixedRecord<Sample>(*in);
    EXPECT_EQ(sample.rw, 258);
    Sink out;
    writeFixed(out, sample);
    EXPECT_EQ(Bytes(out.bytes().begin(), out.bytes().end()), wire);
    std::wostringstream dump;
    dumpFixed(sample, dump);
    EXPECT_EQ(dump.str(), L"[Blank rw=258 col=5 ixfe=15 pair=7 8]\n");
    EXPECT_EQ(textOf([&] { readFixedRecord<Sample>(*in); }), "Blank: unexpected record");
}

TEST(RecordCodec, SizesOfFixedAndEarlyEndingBodies) {
    const Bytes body = pattern(12);
    for (std::size_t size = 0; size <= body.size(); ++size) {
        Cursor fixed(body), prefix(body);
        EXPECT_EQ(textOf([&] { readFixed<Sample>(fixed, size); }), size == 8 ? "" : "Blank size is incorrect") << size;
        const bool boundary = size == 0 || size == 2 || size == 4 || size == 6 || size == 8;
        EXPECT_EQ(textOf([&] { readPrefix<Sample>(prefix, size); }), boundary ? "" : "Blank size is incorrect") << size;
    }
}

TEST(Rk, AllFourForms) {
    const struct {
        std::uint32_t rk;
        double value;
    } cases[] = {
        {0x3FF00000, 1.0},
        {0x3FF00001, 0.01},
        {12345U << 2 | 2, 12345.0},
        {12345U << 2 | 3, 123.45},
        {0xFFFFFFFE, -1.0},
        {0x80000002, -536870912.0},
        {0, 0.0},
    };
    for (const auto& c : cases) EXPECT_EQ(decodeRk(c.rk), c.value) << std::hex << c.rk;
}

}  // namespace
}  // namespace vellum::test
