// The load table of the globals.
#include <algorithm>

#include "biff/container/record_codec.h"
#include "biff/globals/globals.h"
#include "biff/records/bof.h"
#include "biff/records/book_messages.h"
#include "biff/records/raw_record.h"

namespace vellum {

namespace {

using Reader = void (*)(Globals&, Xls&, RecordHeader, StringPool&);

struct Rule {
    std::uint16_t id;
    Reader read;
};

// A record of fixed size into its member.
template <auto Member>
void fixed(Globals& g, Xls& in, RecordHeader h, StringPool&) {
    using Record = std::remove_reference_t<decltype(g.*Member)>;
    Cursor body = in.body(h.size);
    g.*Member = readFixed<Record>(body, h.size);
}

// The same, but the record may also be empty.
template <auto Member>
void fixedOrEmpty(Globals& g, Xls& in, RecordHeader h, StringPool& pool) {
    if (h.size != 0) fixed<Member>(g, in, h, pool);
}

template <auto Member>
void raw(Globals& g, Xls& in, RecordHeader h, StringPool&) {
    (g.*Member).take(in, h);
}

void slot(Globals& g, Xls& in, RecordHeader h, StringPool&) {
    g.slots[static_cast<std::size_t>(std::ranges::find(Globals::slotIds, h.id) - std::begin(Globals::slotIds))].take(in,
                                                                                                                     h);
}

void requireSize(bool ok, const char* name) {
    if (!ok) throwBadSize(name);
}

void interfaceEnd(Globals&, Xls& in, RecordHeader h, StringPool&) {
    requireSize(h.size == 0 || h.size == 2, "InterfaceEnd");
    in.skip(h.size);
}

void excel9File(Globals& g, Xls&, RecordHeader h, StringPool&) {
    requireSize(h.size == 0, "Excel9File");
    g.hasExcel9File = true;
}

void filePass(Globals&, Xls&, RecordHeader, StringPool&) {
    throw vlerror(biff::msg::encrypted);
}

void bof(Globals& g, Xls& in, RecordHeader h, StringPool&) {
    Cursor body = in.body(h.size);
    const Bof bof = readPrefix<Bof>(body, h.size);
    if (bof.vers != bofVersBiff5 && bof.vers != bofVersBiff8) throw vlerror(biff::msg::unsupportedVers);
    if (!g.hasBof) g.bof = bof;
    g.hasBof = true;
}

// One Window1 stands for each window of the workbook; the first one's is kept.
void window1(Globals& g, Xls& in, RecordHeader h, StringPool&) {
    Cursor body = in.body(h.size);
    const auto window = readFixed<globals::Window1>(body, h.size);
    if (!g.hasWindow1) g.window1 = window;
    g.hasWindow1 = true;
}

void writeAccess(Globals& g, Xls& in, RecordHeader h, StringPool&) {
    auto& user = g.writeAccess.user;
    const auto body = in.body(h.size).rest();
    const auto taken = body.first(std::min(body.size(), user.size()));
    std::ranges::transform(taken, user.begin(), [](std::byte b) { return std::to_integer<std::uint8_t>(b); });
}

void templateMark(Globals& g, Xls& in, RecordHeader h, StringPool&) {
    g.isTemplate = true;
    in.skip(h.size);
}

void writeProtect(Globals& g, Xls& in, RecordHeader h, StringPool&) {
    g.isWriteProtected = true;
    in.skip(h.size);
}

void boundSheet(Globals& g, Xls& in, RecordHeader h, StringPool& pool) {
    g.boundSheets.push_back(BoundSheet8::read(in.body(h.size), g.isBiff5(), pool));
}

void palette(Globals& g, Xls& in, RecordHeader h, StringPool&) {
    g.palette.read(in, h.size);
}

void rrTabId(Globals& g, Xls& in, RecordHeader h, StringPool&) {
    requireSize(h.size % 2 == 0, "RRTabId");
    g.rrTabId.clear();
    while (true) {
        Cursor body = in.body(h.size);
        while (!body.empty()) g.rrTabId.push_back(body.get<std::uint16_t>("RRTabId size is incorrect"));
        if (in.peekRecordId() != record_id::Continue) break;
        h = in.readHeader();
    }
    g.hasRrTabId = true;
}

void supBook(Globals& g, Xls& in, RecordHeader h, StringPool&) {
    if (g.isBiff5()) {
        g.others.take(in, h);  // its references have another form, and are made anew
    } else {
        g.names.links.read(in, h);
    }
}

void lbl(Globals& g, Xls& in, RecordHeader h, StringPool& pool) {
    g.names.load(Lbl::read(in, h, pool, g.isBiff5() ? TextForm::noFlags : TextForm::withFlags));
}

void style(Globals& g, Xls& in, RecordHeader h, StringPool& pool) {
    g.styles.push_back(Style::read(in, h.size, g.isBiff5(), pool));
}

void format(Globals& g, Xls& in, RecordHeader h, StringPool& pool) {
    constexpr const char* name = "Format";
    requireSize(h.size >= 3, name);
    Cursor body = in.body(h.size);
    NumFormat read;
    read.ifmt = body.get<std::uint16_t>();
    read.text =
        XLUnicodeString::read(body, pool, g.isBiff5() ? TextForm::noFlags : TextForm::withFlags, g.isBiff5(), name);
    g.addNumFormat(read);
}

void bookExt(Globals& g, Xls& in, RecordHeader h, StringPool& pool) {
    raw<&Globals::bookExt>(g, in, h, pool);
    Cursor body(std::as_const(g.bookExt).firstBody());
    readPrefix<globals::BookExt>(body, body.left());
}

void drawingGroup(Globals& g, Xls& in, RecordHeader h, StringPool&) {
    g.drawingGroup.take(in, h);
}

constexpr Rule rules[] = {
    {14, fixed<&Globals::calcPrecision>},
    {18, fixed<&Globals::protect>},
    {19, fixed<&Globals::password>},
    {24, lbl},
    {25, fixed<&Globals::winProtect>},
    {34, fixed<&Globals::date1904>},
    {47, filePass},
    {61, window1},
    {64, fixed<&Globals::backup>},
    {66, fixed<&Globals::codePage>},
    {92, writeAccess},
    {96, templateMark},
    {133, boundSheet},
    {134, writeProtect},
    {140, fixed<&Globals::country>},
    {141, fixed<&Globals::hideObj>},
    {146, palette},
    {156, fixed<&Globals::builtInFnGroupCount>},
    {193, fixedOrEmpty<&Globals::mms>},
    {211, slot},
    {218, fixed<&Globals::bookBool>},
    {225, fixedOrEmpty<&Globals::interfaceHdr>},
    {226, interfaceEnd},
    {235, drawingGroup},
    {255, raw<&Globals::extSst>},
    {317, rrTabId},
    {352, fixed<&Globals::usesElfs>},
    {353, fixed<&Globals::dsf>},
    {430, supBook},
    {431, fixed<&Globals::prot4Rev>},
    {439, fixed<&Globals::refreshAll>},
    {442, slot},
    {444, fixed<&Globals::prot4RevPass>},
    {445, slot},
    {448, excel9File},
    {449, fixed<&Globals::recalcId>},
    {659, style},
    {1054, format},
    {2057, bof},
    {2147, bookExt},
    {2150, raw<&Globals::headerPictures>},
    {2172, slot},
    {2173, raw<&Globals::xfExts>},
    {2188, slot},
    {2190, slot},
    {2198, slot},
    {2202, slot},
    {2203, slot},
    {2211, slot},
    {4188, slot},
};
static_assert(std::ranges::is_sorted(rules, std::less_equal{}, &Rule::id));
// Font 49, XF 224 and SST 252 are the book's: it owns what they become.

}  // namespace

void Globals::read(Xls& in, RecordHeader header, StringPool& pool) {
    const auto rule = std::ranges::lower_bound(rules, header.id, {}, &Rule::id);
    if (rule != std::end(rules) && rule->id == header.id) {
        rule->read(*this, in, header, pool);
    } else if (continuesRecord(record_id::Eof, header.id)) {
        in.skip(header.size);  // goes on with nothing that is kept; among the others it would go on with a stranger
    } else {
        others.take(in, header);
    }
}

}  // namespace vellum
