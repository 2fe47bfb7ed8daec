// The family of drawing records: what holds for each class of it.
#include <gtest/gtest.h>

#include "drawing/art/messages.h"
#include "drawing/pictures/art_types.h"
#include "engine/failure/vlerror.h"
#include "tests/biff/book/fixture.h"

namespace vellum::test {
namespace {

template <class List>
struct AsTestTypes;
template <class... Records>
struct AsTestTypes<drawing::ArtTypes<Records...>> {
    using type = testing::Types<Records...>;
};

template <class Record>
class ArtRecord : public testing::Test {};
TYPED_TEST_SUITE(ArtRecord, AsTestTypes<drawing::AllArtTypes>::type);

/// Header and body in which no two bytes in a row are alike.
Bytes record(const ArtHeader& header, std::size_t bodySize) {
    drawing::ArtBuffer out;
    ArtHeader written = header;
    written.recLen = static_cast<std::uint32_t>(bodySize);
    written.write(out);
    for (std::size_t i = 0; i < bodySize; ++i) out.put(static_cast<std::uint8_t>(i * 7 + 1));
    return out.take();
}

template <class Record>
std::size_t readFrom(Record& to, const Bytes& bytes) {
    drawing::ArtInput in(bytes);
    std::size_t remaining = bytes.size();
    return to.read(in, remaining);
}

Bytes written(const OfficeArtRecordBase& record) {
    drawing::ArtBuffer out;
    record.write(out);
    return out.take();
}

/// A body that each class can hold: that of its own length, none for containers, enough for pictures.
template <class Record>
std::size_t plainBody() {
    if (Record::kind.recLen != 0 || (Record::mask & checkLen) != 0) return Record::kind.recLen;
    if (Record::kind.recType == OfficeArtFDGGBlock::kind.recType) return 0;
    if (dynamic_cast<drawing::Blip*>(std::make_unique<Record>().get()) != nullptr) return 80;
    if (Record::kind.recType == OfficeArtFBSE::kind.recType) return 36;
    return Record::kind.recVer == ArtHeader::containerVer ? 0 : 12;
}

TYPED_TEST(ArtRecord, ReadsItselfAndItsCopyWritesTheSameBytes) {
    Bytes bytes = record(TypeParam::kind, plainBody<TypeParam>());
    if (TypeParam::kind.recType == OfficeArtFDGGBlock::kind.recType) {
        bytes = record(TypeParam::kind, 16 + 2 * 8);  // numbers, of which the second tells of two clusters and one more
        storeLe(&bytes[ArtHeader::wireSize + 4], std::uint32_t{3});
    }
    TypeParam one;
    EXPECT_EQ(one.size(), 0u);
    ASSERT_EQ(readFrom(one, bytes), bytes.size());
    EXPECT_EQ(one.size(), bytes.size());
    EXPECT_EQ(written(*one.clone()), bytes);
}

TYPED_TEST(ArtRecord, LeavesHeadersThatItsMaskTellsApart) {
    const std::size_t size = plainBody<TypeParam>();
    const struct {
        unsigned bit;
        ArtHeader header;
        std::size_t size;
    } others[] = {
        {checkVer,
         {static_cast<std::uint8_t>(TypeParam::kind.recVer ^ 1), TypeParam::kind.recInstance, TypeParam::kind.recType,
          0},
         size},
        {checkType,
         {TypeParam::kind.recVer, TypeParam::kind.recInstance,
          static_cast<std::uint16_t>(TypeParam::kind.recType ^ 0x400), 0},
         size},
        {checkInstance,
         {TypeParam::kind.recVer, static_cast<std::uint16_t>(TypeParam::kind.recInstance ^ 2), TypeParam::kind.recType,
          0},
         size},
        {checkLen, TypeParam::kind, size + 1},
    };
    for (const auto& other : others) {
        if ((TypeParam::mask & other.bit) == 0) continue;
        TypeParam one;
        EXPECT_EQ(readFrom(one, record(other.header, other.size)), 0u) << "bit " << other.bit;
        EXPECT_TRUE(one.absent);
    }
    TypeParam one;
    EXPECT_EQ(readFrom(one, Bytes(7)), 0u);  // shorter than a header
}

// The ends of a container, a count and a list: each with the text that says so.
TEST(ArtRecords, CountsAndLengthsThatBytesCannotHold) {
    const struct {
        const char* what;
        Bytes bytes;
        const char* text;
    } cases[] = {
        {"clusters", hex("0000 06F0 18000000 00040000 FFFFFFFF 00000000 00000000 01000000 00000000"), "FDGG"},
        {"clusters cut", hex("0000 06F0 08000000 00040000 02000000"), "FDGG"},
        {"pairs", hex("3000 18F1 08000000 0100 0200 0300 0400"), "FRIT"},
        {"drawing", hex("0F00 02F0 09000000 1000 08F0"), "DG"},
        {"group", hex("0F00 03F0 09000000 0F00"), "SPGR"},
        {"list", hex("1F00 01F0 40000000 6200 07F0 02000000 0606"), "LIST"},
        {"picture", hex("006E 1EF0 FFFFFFFF 00"), "BLIP"},
    };
    const std::pair<const char*, const char*> texts[] = {
        {"FDGG", "error in record OfficeArtFDGGBlock"},        {"FRIT", "error in record OfficeArtFRITContainer"},
        {"DG", "OfficeArtDgContainer: file is corrupt"},       {"SPGR", "error in record OfficeArtSpgrContainer"},
        {"LIST", "OfficeArtBStoreContainer: file is corrupt"}, {"BLIP", "error in record OfficeArtBlip"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.what);
        const auto text =
            std::ranges::find_if(texts, [&](const auto& pair) { return std::string(pair.first) == c.text; });
        try {
            drawing::ArtInput in(c.bytes);
            std::size_t remaining = c.bytes.size();
            drawing::ArtTypes<OfficeArtFDGGBlock, OfficeArtFRITContainer, OfficeArtDgContainer, OfficeArtSpgrContainer,
                              drawing::OfficeArtBStoreContainer, OfficeArtBlipPNG>::readNext(in, remaining);
            ADD_FAILURE() << "nothing was thrown";
        } catch (const vlerror& e) {
            EXPECT_STREQ(e.what(), text->second);
        }
    }
}

TEST(ArtRecords, AWrongAnchorIsLeftForTheRest) {
    // FSP, an anchor of 17 bytes, ClientData.
    const Bytes shape =
        hex("0F00 04F0 31000000 B20C 0AF0 08000000 01040000 000A0000 "
            "0000 10F0 11000000 0000000000000000000000000000000000 0000 11F0 00000000");
    OfficeArtSpContainer read;
    ASSERT_EQ(readFrom(read, shape), shape.size());
    EXPECT_EQ(read.fsp.header.recInstance, 203);
    EXPECT_EQ(read.fsp.spid, 1025u);
    EXPECT_TRUE(read.anchor.absent);
    EXPECT_EQ(read.rest.size(), 33u);
    EXPECT_EQ(written(read), shape);
}

TEST(ArtRecords, ComplexDataAreOneRun) {
    // Two properties, of which the second says 4 bytes less than there are.
    const Bytes table = hex("2300 0BF0 16000000 0441 01000000 4581 06000000 01000200030004000500");
    OfficeArtFOPT read;
    ASSERT_EQ(readFrom(read, table), table.size());
    ASSERT_NE(read.table.find(drawing::property::pib), nullptr);
    EXPECT_EQ(read.table.find(drawing::property::pib)->value, 1u);
    EXPECT_EQ(read.table.complex.size(), 10u);
    EXPECT_EQ(written(read), table);
}

TEST(ArtRecords, GroupsBelowTheLastDepthAreBytes) {
    Bytes bytes;
    constexpr int levels = 200;
    for (int level = 0; level < levels; ++level) {
        drawing::ArtBuffer out;
        ArtHeader header = OfficeArtSpgrContainer::kind;
        header.recLen = static_cast<std::uint32_t>((levels - 1 - level) * 8);
        header.write(out);
        bytes.insert(bytes.end(), out.bytes().begin(), out.bytes().end());
    }
    OfficeArtSpgrContainer group;
    ASSERT_EQ(readFrom(group, bytes), bytes.size());
    int depth = 1;
    for (const auto* inner = &group; !inner->children.empty(); ++depth) {
        inner = static_cast<const OfficeArtSpgrContainer*>(inner->children.front().get());
    }
    EXPECT_EQ(depth, drawing::maxGroupDepth);
    EXPECT_EQ(written(group), bytes);
}

}  // namespace
}  // namespace vellum::test
