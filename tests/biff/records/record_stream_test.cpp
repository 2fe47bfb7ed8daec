#include "biff/records/continue_writer.h"
#include "biff/records/kept_records.h"
#include "fixture.h"

namespace vellum::test {
namespace {

TEST(RecordStream, HeadersPeekMarkAndEnd) {
    Stream in(joined({record(61, pattern(18)), record(10, {})}));
    EXPECT_EQ(in->peekRecordId(), 61);
    const auto first = in->nextRecord();
    EXPECT_EQ(first->id, 61);
    in->mark(7);
    const auto body = in->take(first->size);
    EXPECT_EQ(Bytes(body.begin(), body.end()), pattern(18));
    EXPECT_EQ(in->rewind(), 7U);
    in->skip(first->size);
    EXPECT_EQ(in->nextRecord()->id, 10);
    EXPECT_EQ(textOf([&] { in->nextRecord(); }), "read error: record id can't be 0");
}

TEST(RecordStream, TheEndOfTheChain) {
    const auto left = [](std::size_t n) {  // a stream with `n` bytes behind its first record
        const Bytes head = record(60, Bytes(65536 - 4 - n));
        return std::make_unique<Stream>(joined({head, Bytes(n, std::byte{1})}));
    };
    for (const std::size_t n : {0U, 1U}) {
        auto in = left(n);
        (*in)->skip((*in)->nextRecord()->size);
        EXPECT_EQ((*in)->atEnd(), n == 0);
        EXPECT_EQ((*in)->peekRecordId(), 0);
        EXPECT_FALSE((*in)->nextRecord());
        EXPECT_TRUE((*in)->atEnd());
    }
    auto in = left(3);
    (*in)->skip((*in)->nextRecord()->size);
    EXPECT_EQ(textOf([&] { (*in)->nextRecord(); }), "read error: unexpected end of the workbook stream");
    EXPECT_EQ((*in)->readInt16(), 0x0101);
    EXPECT_EQ(textOf([&] { (*in)->readInt16(); }), "read error: unexpected end of the workbook stream");
    EXPECT_EQ((*in)->readInt8(), 1);
}

TEST(RecordStream, ValuesCutByAContinue) {
    Stream in(joined({hex("34"), record(60, hex("12")), record(60, hex("78 56 34")), record(60, hex("12 AA"))}));
    std::uint16_t budget = 1;
    EXPECT_EQ(in->readInt16(budget), 0x1234);
    EXPECT_EQ(in->readInt32(budget), 0x12345678U);
    EXPECT_EQ(budget, 1);
    EXPECT_FALSE(in->acceptContinue(budget));
}

TEST(RecordStream, TextsWhereAContinueIsMissing) {
    using Read = std::function<void(Xls&, std::uint16_t&)>;
    const struct {
        const char* text;
        Read read;
    } cases[] = {
        {"readInt16: CONTINUE record not found", [](Xls& x, std::uint16_t& b) { x.readInt16(b); }},
        {"readInt32: CONTINUE record not found", [](Xls& x, std::uint16_t& b) { x.readInt32(b); }},
        {"readWithContinueRecords: CONTINUE record not found",
         [](Xls& x, std::uint16_t& b) {
             char to[2];
             x.readWithContinueRecords(to, 2, b);
         }},
        {"Xls::readString(): s == 0", [](Xls& x, std::uint16_t& b) { x.readString(nullptr, 1, b); }},
        {"Xls::readStringWithoutNull(): s == 0",
         [](Xls& x, std::uint16_t& b) { x.readStringWithoutNull(nullptr, 1, b); }},
    };
    for (const auto& c : cases) {
        Stream in(joined({hex("01"), record(61, pattern(8))}));
        std::uint16_t budget = 1;
        EXPECT_EQ(textOf([&] { c.read(*in, budget); }), c.text);
    }
}

TEST(RecordStream, AcceptContinueOnlyWhereOneIsDue) {
    Stream in(joined({record(60, hex("AA BB")), record(61, {})}));
    std::uint16_t budget = 3;
    EXPECT_FALSE(in->acceptContinue(budget));
    budget = 0;
    EXPECT_TRUE(in->acceptContinue(budget));
    EXPECT_EQ(budget, 2);
    in->skip(2);
    budget = 0;
    EXPECT_FALSE(in->acceptContinue(budget));
    EXPECT_EQ(in->peekRecordId(), 61);
}

TEST(RecordStream, StringsAcrossRecords) {
    Stream in(joined({hex("61 62"), record(60, hex("63 00 64 65"))}));
    std::uint16_t budget = 2;
    std::string s;
    in->readString(&s, 100, budget);
    EXPECT_EQ(s, "abc");
    in->readStringWithoutNull(&s, 2, budget);
    EXPECT_EQ(s, "de");
}

TEST(RecordStream, PatchesReachWhatIsInTheFileAlready) {
    const Bytes main = written([](Xls& xls) {
        const std::uint32_t early = xls.currentWritePosition();
        xls.writeRecord(133, pattern(8));
        for (int i = 0; i < 300; ++i) xls.writeRecord(60, pattern(8224));
        const std::uint32_t late = xls.currentWritePosition();
        EXPECT_EQ(late, 12U + 300 * 8228);
        xls.writeRecord(133, pattern(8));
        xls.patchInt32(early + 4, late);
        xls.patchInt16(late + 4, 0xBEEF);
        xls.writeRecord(10, {});
    });
    EXPECT_EQ(loadLe<std::uint32_t>(main.data() + 4), 12U + 300 * 8228);
    EXPECT_EQ(loadLe<std::uint16_t>(main.data() + 12 + 300 * 8228 + 4), 0xBEEF);
    EXPECT_EQ(loadLe<std::uint16_t>(main.data() + 12 + 300 * 8228 + 12), 10);
}

TEST(RecordStream, WideStringWriters) {
    const Bytes main = written([](Xls& xls) {
        xls.writeStringZ(L"a\x416");
        xls.writeWideStringZ(L"a\x416");
        xls.writeWideString(L"b");
    });
    EXPECT_EQ(Bytes(main.begin(), main.begin() + 11), hex("61 16 00 61 00 16 04 00 00 62 00"));
}

TEST(ContinueWriter, CutsAnywhereAndReadsBack) {
    for (const std::size_t size : {0U, 1U, 8223U, 8224U, 8225U, 16448U, 30000U}) {
        SCOPED_TRACE(size);
        const Bytes body = pattern(size);
        Stream in(written([&](Xls& xls) {
            ContinueWriter out(xls, 235);
            for (const std::byte b : body)
                out.put(b == std::byte{} ? std::uint8_t{0} : std::to_integer<std::uint8_t>(b));
            out.finish();
            writeSplit(xls, 236, body);
        }));
        for (const int id : {235, 236}) {
            const RecordHeader header = in->readHeader();
            EXPECT_EQ(header.id, id);
            EXPECT_EQ(header.size, std::min<std::size_t>(size, 8224));
            Bytes back(size);
            std::uint16_t budget = header.size;
            in->readWithContinueRecords(back.data(), size, budget);
            EXPECT_TRUE(back == body);
            EXPECT_EQ(budget, 0);
        }
    }
}

TEST(ContinueWriter, TextIsNeverCutWithinACharacter) {
    // An odd room is left unused; each part of the text begins with its flags byte.
    Stream in(written([](Xls& xls) {
        ContinueWriter out(xls, 516);
        out.write(pattern(8223));
        out.text(std::wstring(5000, L'\x4E2D'), true);
        out.finish();
    }));
    EXPECT_EQ(in->nextRecord()->size, 8223);
    in->skip(8223);
    EXPECT_EQ(in->nextRecord()->size, 8223);
    EXPECT_EQ(in->readInt8(), 1);
    in->skip(8222);
    EXPECT_EQ(in->nextRecord()->size, 1 + (5000 - 4111) * 2);
    EXPECT_EQ(in->readInt8(), 1);
}

TEST(ContinueWriter, TextThatFillsARecordExactlyHasNoContinuation) {
    const struct {
        std::size_t before, characters;
        bool wide;
        std::vector<std::size_t> sizes;
    } cases[] = {
        {24, 4100, true, {8224}},  {24, 4101, true, {8224, 3}}, {23, 4100, true, {8223}},
        {24, 8200, false, {8224}}, {23, 8201, false, {8224}},   {24, 4100 + 4111, true, {8224, 8223}},
    };
    for (const auto& c : cases) {
        Stream in(written([&](Xls& xls) {
            ContinueWriter out(xls, 516);
            out.write(pattern(c.before));
            out.text(std::wstring(c.characters, L'x'), c.wide);
            out.finish();
            xls.writeRecord(10, {});
        }));
        std::vector<std::size_t> sizes;
        for (auto header = in->nextRecord(); header && header->id != 10; header = in->nextRecord()) {
            sizes.push_back(header->size);
            in->skip(header->size);
        }
        EXPECT_EQ(sizes, c.sizes) << c.before << " and " << c.characters << (c.wide ? " wide" : " narrow");
    }
}

TEST(KeptRecords, OwnWhatContinuesThem) {
    const struct {
        std::uint16_t parent;
        std::vector<std::uint16_t> mine;
        std::uint16_t other;
    } cases[] = {
        {236, {60, 2066, 2165, 2175}, 93},
        {2190, {2191, 2192, 2192, 60}, 2189},
        {157, {158, 158, 2174, 2175}, 155},
        {440, {2048}, 440},
        {77, {60}, 161},
        {158, {}, 2174},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.parent);
        Bytes wire = record(c.parent, pattern(10));
        for (const std::uint16_t id : c.mine) wire = joined({wire, record(id, pattern(5))});
        Stream in(joined({wire, record(c.other, pattern(3))}));
        KeptRecords raw;
        raw.take(*in, *in->nextRecord());
        EXPECT_EQ(Bytes(raw.wire().begin(), raw.wire().end()), wire);
        EXPECT_EQ(Bytes(raw.firstBody().begin(), raw.firstBody().end()), pattern(10));
        EXPECT_EQ(in->peekRecordId(), c.other);
        Bytes main = written([&](Xls& xls) { raw.write(xls); });
        main.resize(wire.size());
        EXPECT_EQ(main, wire);
    }
    EXPECT_TRUE(KeptRecords().firstBody().empty());
    KeptRecords made;
    made.add(211, pattern(3));
    EXPECT_EQ(Bytes(made.wire().begin(), made.wire().end()), record(211, pattern(3)));
}

}  // namespace
}  // namespace vellum::test
