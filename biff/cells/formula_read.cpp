#include "biff/cells/formula_read.h"

#include <algorithm>

#include "biff/container/messages.h"
#include "biff/container/record_codec.h"
#include "biff/container/xls.h"
#include "biff/records/continue_writer.h"
#include "engine/text/string_pool.h"

namespace vellum {
namespace {

constexpr std::size_t fixedSize = 20;  // of a Formula body, before its expression
constexpr std::size_t prefixSize = 2;

void readFixedPart(FormulaCell& block, Cursor in, StringPool& pool) {
    if (in.left() <= fixedSize + 1) throwBadSize(FormulaCell::name);
    block.row = in.get<std::uint16_t>();
    block.col = in.get<std::uint16_t>();
    block.ixfe = in.get<std::uint16_t>();
    block.value = CachedValue(in.take(8).first<8>());
    block.grbit = in.get<std::uint16_t>();
    block.chn = in.get<std::uint32_t>();
    block.expressionSize = static_cast<std::uint32_t>(in.left());
    std::byte* const bytes = pool.allocateBytes(in.left());
    std::ranges::copy(in.rest(), bytes);
    block.expression = bytes;
}

ShrFmla readShared(Cursor in) {
    if (in.left() < 10) throwBadSize("ShrFmla");
    ShrFmla shared;
    shared.rowFirst = in.get<std::uint16_t>();
    shared.rowLast = in.get<std::uint16_t>();
    shared.colFirst = in.get<std::uint8_t>();
    shared.colLast = in.get<std::uint8_t>();
    shared.reserved = in.get<std::uint8_t>();
    shared.cUse = in.get<std::uint8_t>();
    shared.expression.assign(in.rest().begin(), in.rest().end());
    return shared;
}

void writeShared(const ShrFmla& shared, Xls& out) {
    out.writeRecordHeader(record_id::ShrFmla, static_cast<std::uint16_t>(8 + shared.expression.size()));
    out.out().putAll(shared.rowFirst, shared.rowLast, shared.colFirst, shared.colLast, shared.reserved, shared.cUse);
    out.writeBytes(shared.expression);
}

class BlockReader {
public:
    BlockReader(FormulaCell& block, Xls& in, StringPool& pool, bool biff5)
        : _block(block), _in(in), _pool(pool), _biff5(biff5) {}

    void read(RecordHeader header) {
        if (header.size == prefixSize) {
            auto& prefix = _block.ensureTail().prefix.emplace();
            std::ranges::copy(_in.take(prefixSize), prefix.begin());
            header = _in.readHeader();
            if (header.id != record_id::Formula) throw vlerror(biff::msg::formulaBlockError);
        }
        readFixedPart(_block, _in.body(header.size), _pool);
        if (_block.value.hasTextMark() && _in.peekRecordId() == record_id::String) readText();
        readFollowing();
        if (_in.peekRecordId() == record_id::String) {
            readText();
            if (const auto next = _in.peekHeader(); next && next->size == 0)
                throw vlerror(biff::msg::formulaBlockCorrupt);
        }
    }

private:
    void readText() {
        const RecordHeader header = _in.readHeader();
        std::uint16_t budget = header.size;
        if (budget < 2) throwBadSize("String");
        _block.text =
            XLUnicodeString::read(_in, _pool, _biff5 ? TextForm::noFlags : TextForm::withFlags, false, budget);
        _in.skip(budget);
        _block.hasText = true;
        keepContinues();
    }

    void readFollowing() {
        switch (_in.peekRecordId()) {
            case record_id::Array:
            case record_id::Table: {
                const RecordHeader header = _in.readHeader();
                const auto bytes = _in.take(header.size);
                FormulaTail& tail = _block.ensureTail();
                tail.followingId = header.id;
                tail.following.assign(bytes.begin(), bytes.end());
                break;
            }
            case record_id::ShrFmla: {
                const RecordHeader header = _in.readHeader();
                _block.ensureTail().shared = readShared(_in.body(header.size));
                break;
            }
            default:
                break;
        }
    }

    // What the text did not need of the CONTINUE records behind it.
    void keepContinues() {
        while (_in.peekRecordId() == record_id::Continue) {
            const RecordHeader header = _in.readHeader();
            Sink wire;
            wire.putAll(header.id, header.size);
            wire.write(_in.take(header.size));
            auto& kept = _block.ensureTail().continues;
            kept.insert(kept.end(), wire.bytes().begin(), wire.bytes().end());
        }
    }

    FormulaCell& _block;
    Xls& _in;
    StringPool& _pool;
    bool _biff5;
};

}  // namespace

void readFormula(FormulaCell& block, const RecordHeader& header, Xls& in, StringPool& pool, bool biff5) {
    BlockReader(block, in, pool, biff5).read(header);
}

void writeFormula(const FormulaCell& block, Xls& out) {
    const FormulaTail* const tail = block.tail.get();
    if (tail != nullptr && tail->prefix) out.writeRecord(record_id::Uncalced, *tail->prefix);
    out.writeRecordHeader(record_id::Formula, static_cast<std::uint16_t>(fixedSize + block.expressionSize));
    Sink& sink = out.out();
    sink.putAll(block.row, block.col, block.ixfe);
    sink.write(block.value.wire());
    sink.putAll(block.grbit, block.chn);
    sink.write(block.expressionBytes());
    if (tail != nullptr && tail->followingId != 0) out.writeRecord(tail->followingId, tail->following);
    if (tail != nullptr && tail->shared) writeShared(*tail->shared, out);
    if (block.hasText) {
        ContinueWriter record(out, record_id::String);
        block.text.write(record);
        record.finish();
    }
    if (tail != nullptr) out.writeBytes(tail->continues);
}

}  // namespace vellum
