#include "biff/features/shared_features.h"

#include <algorithm>

#include "biff/container/record_codec.h"
#include "biff/features/feature_messages.h"

namespace vellum::biff {
namespace {

// The type stands at one place in both records.
constexpr std::size_t typeAt = 12;

struct ErrorBit {
    std::uint32_t atInterface, inFile;
};

constexpr ErrorBit errorBits[] = {
    {1, 0x01}, {2, 0x20}, {4, 0x04}, {8, 0x10}, {16, 0x08}, {32, 0x40}, {64, 0x02}, {128, 0x80},
};

std::uint32_t inFile(int flags) {
    std::uint32_t word = 0;
    for (const ErrorBit& bit : errorBits) {
        if ((static_cast<std::uint32_t>(flags) & bit.atInterface) != 0) word |= bit.inFile;
    }
    return word;
}

std::uint16_t idOf(const KeptRecords& record) {
    return loadLe<std::uint16_t>(record.wire().data());
}

bool isOf(const KeptRecords& record, std::uint16_t id, FeatureType type) {
    return idOf(record) == id && loadLe<std::uint16_t>(&record.firstBody()[typeAt]) == static_cast<std::uint16_t>(type);
}

CellRange readRange(Cursor& in) {
    CellRange range;
    range.rowFirst = in.get<std::uint16_t>();
    range.rowLast = in.get<std::uint16_t>();
    range.colFirst = in.get<std::uint16_t>();
    range.colLast = in.get<std::uint16_t>();
    return range;
}

void check(std::uint16_t id, std::span<const std::byte> body) {
    if (id == FeatHdr::id) {
        if (body.size() < wireSize<FeatHdr>()) throwBadSize(FeatHdr::name);
        return;
    }
    if (body.size() < wireSize<Feat>()) throwBadSize(Feat::name);
    Cursor in(body);
    Feat feat;
    readFields(in, feat);
    if (in.left() < feat.cref * sizeof(CellRange)) throwBadSize(Feat::name);
}

KeptRecords headerOf(FeatureType type, std::span<const std::byte> data) {
    FeatHdr header;
    header.isf = static_cast<std::uint16_t>(type);
    header.cbHdrData = data.empty() ? 0 : FeatHdr::hasData;
    Sink body;
    writeFields(body, header);
    body.write(data);
    KeptRecords record;
    record.add(FeatHdr::id, body.bytes());
    return record;
}

// The place of the flags in a Feat of ignored errors that holds this range; null for any other.
std::byte* errorsOf(KeptRecords& record, const CellRange& range, bool alone) {
    if (!isOf(record, Feat::id, FeatureType::ignoredErrors)) return nullptr;
    const auto body = record.firstBody();
    Cursor in(body);
    Feat feat;
    readFields(in, feat);
    bool holds = false;
    for (std::uint16_t i = 0; i < feat.cref; ++i) holds = readRange(in) == range || holds;
    if (!holds || (alone && feat.cref != 1) || in.left() < sizeof(std::uint32_t)) return nullptr;
    return &body[body.size() - in.left()];
}

KeptRecords ignoredErrors(const CellRange& range, std::uint32_t word) {
    Feat feat;
    feat.isf = static_cast<std::uint16_t>(FeatureType::ignoredErrors);
    Sink body;
    writeFields(body, feat);
    body.putAll(range.rowFirst, range.rowLast, range.colFirst, range.colLast, word);
    KeptRecords record;
    record.add(Feat::id, body.bytes());
    return record;
}

}  // namespace

bool SharedFeatures::read(RecordHeader header, Xls& in) {
    if (header.id != FeatHdr::id && header.id != Feat::id) return false;
    KeptRecords& record = _records.emplace_back();
    record.take(in, header);
    check(header.id, std::as_const(record).firstBody());
    return true;
}

void SharedFeatures::write(Xls& out) const {
    for (const KeptRecords& record : _records) record.write(out);
}

void SharedFeatures::setPermissions(std::uint32_t permissions) {
    KeptRecords made = headerOf(FeatureType::protection, std::as_bytes(std::span(&permissions, 1)));
    const auto known = std::ranges::find_if(
        _records, [](const KeptRecords& record) { return isOf(record, FeatHdr::id, FeatureType::protection); });
    if (known == _records.end()) {
        _records.insert(_records.begin(), std::move(made));
        return;
    }
    // Some files lack the word.
    const auto body = known->firstBody();
    if (body.size() < wireSize<FeatHdr>() + sizeof permissions) {
        *known = std::move(made);
    } else {
        storeLe(&body[wireSize<FeatHdr>()], permissions);
        storeLe(&body[wireSize<FeatHdr>() - sizeof FeatHdr::hasData], FeatHdr::hasData);
    }
}

void SharedFeatures::ignoreErrors(const CellRange& range, int flags) {
    const std::uint32_t word = inFile(flags);
    for (KeptRecords& record : _records) {
        const std::byte* const at = errorsOf(record, range, false);
        if (at != nullptr && loadLe<std::uint32_t>(at) == word) throw vlerror(msg::ignoredErrorExists);
    }
    for (KeptRecords& record : _records) {
        if (std::byte* const at = errorsOf(record, range, true)) {
            storeLe(at, loadLe<std::uint32_t>(at) | word);
            return;
        }
    }
    const auto is = [](std::uint16_t id) {
        return [id](const KeptRecords& record) { return isOf(record, id, FeatureType::ignoredErrors); };
    };
    if (std::ranges::none_of(_records, is(FeatHdr::id))) {
        _records.insert(std::ranges::find_if(_records, is(Feat::id)), headerOf(FeatureType::ignoredErrors, {}));
    }
    const auto last = std::find_if(_records.rbegin(), _records.rend(), [&](const KeptRecords& record) {
        return is(FeatHdr::id)(record) || is(Feat::id)(record);
    });
    _records.insert(last.base(), ignoredErrors(range, word));
}

void SharedFeatures::remove(FeatureType type) {
    std::erase_if(_records,
                  [type](const KeptRecords& r) { return isOf(r, FeatHdr::id, type) || isOf(r, Feat::id, type); });
}

}  // namespace vellum::biff
