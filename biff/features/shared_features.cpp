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

std::uint64_t keyOf(const CellRange& range) {
    return std::uint64_t{range.rowFirst} << 48 | std::uint64_t{range.rowLast} << 32 |
           std::uint64_t{range.colFirst} << 16 | range.colLast;
}

template <class Visit>
void forEachRange(const KeptRecords& record, Visit&& visit) {
    Cursor in(record.firstBody());
    Feat feat;
    readFields(in, feat);
    for (std::uint16_t i = 0; i < feat.cref; ++i) visit(readRange(in));
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
    _indexed = false;
    KeptRecords& record = _records.emplace_back();
    record.take(in, header);
    check(header.id, std::as_const(record).firstBody());
    return true;
}

void SharedFeatures::write(Xls& out) const {
    for (const KeptRecords& record : _records) record.write(out);
}

void SharedFeatures::setPermissions(std::uint32_t permissions) {
    _indexed = false;
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

// Where the errors of a range stand is found by a table, since a sheet may have them by the ten thousand. It holds
// numbers of records up to the last of its kind, which what is added behind that leaves as they are.
void SharedFeatures::indexErrors() {
    if (_indexed) return;
    _errorsAt.clear();
    _errorsEnd = 0;
    _hasErrorHeader = false;
    for (std::size_t i = 0; i < _records.size(); ++i) {
        const bool isHeader = isOf(_records[i], FeatHdr::id, FeatureType::ignoredErrors);
        const bool isErrors = isOf(_records[i], Feat::id, FeatureType::ignoredErrors);
        _hasErrorHeader = _hasErrorHeader || isHeader;
        if (isHeader || isErrors) _errorsEnd = i + 1;
        if (isErrors) forEachRange(_records[i], [&](const CellRange& range) { _errorsAt.emplace(keyOf(range), i); });
    }
    _indexed = true;
}

void SharedFeatures::ignoreErrors(const CellRange& range, int flags) {
    const std::uint32_t word = inFile(flags);
    indexErrors();
    std::size_t own = _records.size();
    const auto [first, last] = _errorsAt.equal_range(keyOf(range));
    for (auto known = first; known != last; ++known) {
        const std::byte* const at = errorsOf(_records[known->second], range, false);
        if (at != nullptr && loadLe<std::uint32_t>(at) == word) throw vlerror(msg::ignoredErrorExists);
        if (errorsOf(_records[known->second], range, true) != nullptr) own = std::min(own, known->second);
    }
    if (own != _records.size()) {
        std::byte* const at = errorsOf(_records[own], range, true);
        storeLe(at, loadLe<std::uint32_t>(at) | word);
        return;
    }
    if (!_hasErrorHeader) {
        const auto isErrors = [](const KeptRecords& r) { return isOf(r, Feat::id, FeatureType::ignoredErrors); };
        _indexed = false;
        _records.insert(std::ranges::find_if(_records, isErrors), headerOf(FeatureType::ignoredErrors, {}));
        indexErrors();
    }
    _indexed = false;
    _records.insert(_records.begin() + static_cast<std::ptrdiff_t>(_errorsEnd), ignoredErrors(range, word));
    _errorsAt.emplace(keyOf(range), _errorsEnd);
    ++_errorsEnd;
    _indexed = true;
}

void SharedFeatures::remove(FeatureType type) {
    _indexed = false;
    std::erase_if(_records,
                  [type](const KeptRecords& r) { return isOf(r, FeatHdr::id, type) || isOf(r, Feat::id, type); });
}

}  // namespace vellum::biff
