#include "host/values/records.h"

#include "host/labels/report.h"
#include "host/values/column_types.h"

namespace quillet {
namespace {

/// One record on its way from or to a row.
struct RecordRow {
    HostContext* context;
    RangeSpec& range;
    const HostType* columnTypes;
    int row;
    int* cursor;
    HostType type;
    void* record;

    int column() const { return range.column(*cursor); }
    HostValue field(HostType word) const {
        HostValue value = {.bits = 0};
        hostApi().hostFieldRef(context, elementType(type), record, fieldIndex(word), &value);
        return value;
    }
};

/// Sets one field that takes one column. Non-zero when the field refuses its value.
int readField(const RecordRow& r, HostType word) {
    const HostType type = r.columnTypes[*r.cursor];
    if (elementType(type) == hostTypeAny) {
        return readCellToUnion(r.context, r.range, r.field(word).object, r.row, r.column());
    }
    HostValue value = {.bits = 0};
    if (readCellAs(r.context, r.range, type, &value, r.row, r.column())) return 0;
    if (isBaseType(type)) {
        return hostApi().hostFieldSet(r.context, elementType(r.type), r.record, fieldIndex(word), value);
    }
    const char* const text = value.text ? value.text : "";
    return hostApi().hostValueFromText(r.context, elementType(type), r.field(word).object, text, 0);
}

CellWrite putField(const RecordRow& r, HostType word) {
    const HostType type = r.columnTypes[*r.cursor];
    if (!r.record) return putValue(r.context, r.range, type, r.row, r.column(), nullptr);
    const HostValue value = r.field(word);
    return putValue(r.context, r.range, type, r.row, r.column(), &value);
}

}  // namespace

int readRecord(HostContext* context, RangeSpec& range, const HostType* columnTypes, int row, int* cursor, void* record,
               HostType type, const HostType* fieldTable) {
    const RecordRow r{context, range, columnTypes, row, cursor, type, record};
    for (const HostType word : fieldsOf(type, fieldTable)) {
        if (!isBaseType(word) && isRecordType(context, word)) {
            void* const nested = r.field(word).object;
            if (readRecord(context, range, columnTypes, row, cursor, nested, word, fieldTable)) return 1;
            continue;
        }
        if (readField(r, word)) return failAt(context, range, msg::wrongResult, row, r.column());
        ++*cursor;
    }
    return 0;
}

CellWrite putRecord(HostContext* context, RangeSpec& range, const HostType* columnTypes, int row, int* cursor,
                    void* record, HostType type, const HostType* fieldTable) {
    const RecordRow r{context, range, columnTypes, row, cursor, type, record};
    for (const HostType word : fieldsOf(type, fieldTable)) {
        CellWrite result = CellWrite::done;
        if (!isBaseType(word) && isRecordType(context, word)) {
            void* const nested = record ? r.field(word).object : nullptr;
            result = putRecord(context, range, columnTypes, row, cursor, nested, word, fieldTable);
        } else {
            result = putField(r, word);
            if (result == CellWrite::done) ++*cursor;
        }
        if (result != CellWrite::done) return result;
    }
    return CellWrite::done;
}

int writeRecord(HostContext* context, RangeSpec& range, const HostType* columnTypes, int row, int* cursor, void* record,
                HostType type, const HostType* fieldTable) {
    return putRecord(context, range, columnTypes, row, cursor, record, type, fieldTable) == CellWrite::done ? 0 : 1;
}

}  // namespace quillet
