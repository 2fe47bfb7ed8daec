// The rows of a sheet, from XML and back: those of the usual form in a loop of their own, and whatever else stands
// among them one by one.
#include "ooxml/cells/sheet_data.h"

#include "bindery/binderyparse/plain_bytes.h"
#include "bindery/bridges/bridges.h"
#include "bindery/bridges/unmarshal_helper.h"
#include "bindery/classes/extras.h"
#include "bindery/values/chars.h"
#include "ooxml/bound.h"
#include "ooxml/cells/row_forms.h"
#include "ooxml/generated/sml-sheet/sml-sheet.h"
#include "ooxml/generated/sml/sml.h"

namespace ooxml {

template <class Family>
c_CT_SheetData<Family>::c_CT_SheetData() = default;
template <class Family>
c_CT_SheetData<Family>::c_CT_SheetData(const c_CT_SheetData&) = default;
template <class Family>
c_CT_SheetData<Family>& c_CT_SheetData<Family>::operator=(const c_CT_SheetData&) = default;
template <class Family>
c_CT_SheetData<Family>::~c_CT_SheetData() = default;

template <class Family>
c_CT_SheetData<Family>* c_CT_SheetData<Family>::clone() const {
    return copyOf(*this);
}

/// One pass over the children.
template <class Family>
struct c_CT_SheetData<Family>::Reading {
    Reading(c_CT_SheetData& data, bindery::c_xml_reader& source)
        : sheet(data),
          reader(source),
          plain(plainNames(source)),
          dyDescent(source.uriOf(source.resolve("x14ac")) == x14acUri && source.keepsUnknown() &&
                    source.userError(bindery::unexpected_attribute, "@x14ac:dyDescent", rowSource, __LINE__) == 0) {}

    /// Rows of the usual form, as far as they go: 0, or the code of the one that failed.
    int plainRows();
    /// What comes next, whatever it is.
    int next(bool& ended);

private:
    int keepUnknown();
    void keep(std::unique_ptr<Row> row);

    c_CT_SheetData& sheet;
    bindery::c_xml_reader& reader;
    const bool plain;
    const bool dyDescent;                     // "x14ac:dyDescent" has its usual meaning
    std::vector<typename Row::Cell> scratch;  // room for the cells of a row while their number is not known
    std::int64_t index = 0;                   // of the next row, if it has no number
};

template <class Family>
void c_CT_SheetData<Family>::Reading::keep(std::unique_ptr<Row> row) {
    if (row->isset_r()) index = std::int64_t{row->r()} - 1;
    if (reader.wantsItem(index)) sheet._rows.append(std::move(row));
    ++index;
}

template <class Family>
int c_CT_SheetData<Family>::Reading::plainRows() {
    bindery::c_plain_bytes bytes(reader);
    while (plain) {
        reader.needItem("</row>");
        const std::string_view rest = bytes.rest();
        const char* const end = rest.data() + rest.size();
        const char* at = bindery::skipSpace(rest.data(), end);
        if (!startsWith(at, end, "<row")) return 0;
        auto row = std::make_unique<Row>();
        bool empty = false;
        at = row->readPlainTag(at + 4, end, dyDescent, empty);
        if (at == nullptr) return 0;
        bytes.passed(at);
        int code = 0;
        if (!empty) {
            bytes.entered("row");
            code = row->readCells(reader, scratch, true);
        }
        keep(std::move(row));
        if (code != 0) return code;
    }
    return 0;
}

template <class Family>
int c_CT_SheetData<Family>::Reading::keepUnknown() {
    const auto ordinal = static_cast<std::uint32_t>(sheet._rows.size());
    return keepElement(reader, sheet.makeExtras(), ordinal != 0 ? 1 : 0, ordinal, "sheetData");
}

template <class Family>
int c_CT_SheetData<Family>::Reading::next(bool& ended) {
    int code = 0;
    reader.needItem("</row>");
    switch (reader.nextChild()) {
        case bindery::token_end_tag:
            ended = true;
            return reader.endTagMatched() ? 0 : reader.fail(bindery::bad_end_of_element, "sheetData");
        case bindery::token_start_tag:
            if (reader.elementNamespace() == sheetNamespace && reader.elementLocal() == "row") {
                auto row = std::make_unique<Row>();
                code = row->read(reader, scratch);
                keep(std::move(row));
            } else {
                code = keepUnknown();
            }
            break;
        case bindery::token_unknown:
            code = keepUnknown();
            break;
        default:
            return bindery::scanFailure(reader, "sheetData");
    }
    if (reader.failed()) return bindery::scanFailure(reader, "sheetData");
    reader.sourceAt(rowSource, __LINE__);
    return code;
}

template <class Family>
int c_CT_SheetData<Family>::read(bindery::c_xml_reader& reader) {
    reader.sourceAt(rowSource, __LINE__);
    if (!reader.declarations().empty() && reader.keepsUnknown()) keepDeclarations(reader, this->makeExtras());
    for (const bindery::RawAttribute& attribute : reader.attributes())
        if (const int code = keepAttribute(reader, this->makeExtras(), attribute)) return code;
    if (!reader.emptyElement()) return readRows(reader);
    reader.closeElement();
    return 0;
}

template <class Family>
int c_CT_SheetData<Family>::readRows(bindery::c_xml_reader& reader) {
    Reading rows(*this, reader);
    for (bool ended = false; !ended;) {
        if (const int code = rows.plainRows()) return code;
        if (const int code = rows.next(ended)) return code;
    }
    return 0;
}

template <class Family>
int c_CT_SheetData<Family>::write(bindery::c_xml_writer& writer) const {
    const bindery::Extras* extras = this->extras();
    writer.startElement("sheetData");
    if (extras != nullptr) {
        writer.keptDeclarations(extras->decls);
        for (const bindery::Attr& attr : extras->attrs) writer.keptAttribute(attr);
    }
    bindery::PlacedWriter placed(writer, extras);
    placed.before(1);
    std::uint32_t ordinal = 0;
    for (const Row& row : _rows) {
        if (const int code = row.write(writer)) return code;
        placed.behind(1, ++ordinal);
    }
    placed.rest();
    writer.endElement();
    return 0;
}

template <class Family>
constinit const bindery::ClassInfo c_CT_SheetData<Family>::info = {
    .name = "c_CT_SheetData",
    .sourceFile = rowSource,
    .create = bindery::makeNode<c_CT_SheetData<Family>>,
    .unmarshal = [](bindery::c_xml_reader& reader,
                    bindery::c_node& object) { return static_cast<c_CT_SheetData&>(object).read(reader); },
    .marshal = [](bindery::c_xml_writer& writer, const bindery::c_node& object,
                  const bindery::MemberInfo&) { return static_cast<const c_CT_SheetData&>(object).write(writer); }};

template <class Family>
int c_CT_SheetData<Family>::unmarshal(bindery::c_xml_reader& reader, std::string_view name) {
    return unmarshalElement(reader, name, *this, info);
}

template <class Family>
int c_CT_SheetData<Family>::marshal(bindery::c_xml_writer& writer, std::string_view) const {
    return write(writer);
}

}  // namespace ooxml
