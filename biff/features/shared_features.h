// What a sheet permits although it is protected, errors that are not shown, and their kin: records that later
// applications added to the format under common heads.
#pragma once
#include <array>
#include <cstdint>
#include <unordered_map>
#include <vector>

#include "biff/cells/sheet_records.h"
#include "biff/container/record_ids.h"
#include "biff/records/kept_records.h"

namespace vellum {

class Xls;

enum class FeatureType : std::uint16_t { protection = 2, ignoredErrors = 3, smartTags = 4, list = 5 };

/// Opens a group of features of one type. Its data of protection, a word of permissions, stand behind it.
struct FeatHdr {
    static constexpr std::uint16_t id = record_id::FeatHdr;
    static constexpr const char* name = "FeatHdr";
    static constexpr std::uint32_t hasData = 0xFFFFFFFF;

    std::uint16_t rt = record_id::FeatHdr, grbitFrt = 0;
    std::array<std::uint8_t, 8> frtReserved{};
    std::uint16_t isf = 0;  // a FeatureType
    std::uint8_t reserved = 1;
    std::uint32_t cbHdrData = 0;  // 0 or `hasData`

    template <class Self, class Visit>
    static constexpr void fields(Self& r, Visit&& visit) {
        visit("rt", r.rt);
        visit("grbitFrt", r.grbitFrt);
        visit("frtReserved", r.frtReserved);
        visit("isf", r.isf);
        visit("reserved", r.reserved);
        visit("cbHdrData", r.cbHdrData);
    }
};

/// A feature of a group: its ranges and then its data stand behind it.
struct Feat {
    static constexpr std::uint16_t id = record_id::Feat;
    static constexpr const char* name = "Feat";

    std::uint16_t rt = record_id::Feat, grbitFrt = 0;
    std::array<std::uint8_t, 8> frtReserved{};
    std::uint16_t isf = 0;
    std::uint8_t reserved1 = 0;
    std::uint32_t reserved2 = 0;
    std::uint16_t cref = 1;
    std::uint32_t cbFeatData = 4;
    std::uint16_t reserved3 = 0;

    template <class Self, class Visit>
    static constexpr void fields(Self& r, Visit&& visit) {
        visit("rt", r.rt);
        visit("grbitFrt", r.grbitFrt);
        visit("frtReserved", r.frtReserved);
        visit("isf", r.isf);
        visit("reserved1", r.reserved1);
        visit("reserved2", r.reserved2);
        visit("cref", r.cref);
        visit("cbFeatData", r.cbFeatData);
        visit("reserved3", r.reserved3);
    }
};

namespace biff {

/// The groups of a sheet but for its tables. Records stay in their bytes; operations change them in place.
class SharedFeatures {
public:
    /// Takes the record if it is a FeatHdr or Feat. Throws "Feat size is incorrect" and its like.
    bool read(RecordHeader header, Xls& in);
    void write(Xls& out) const;

    /// The permissions of a protected sheet.
    void setPermissions(std::uint32_t permissions);
    /// `flags` as at the interface: 1 errors of a calculation, 2 years of two digits, 4 numbers stored as text,
    /// 8 a formula unlike its neighbours, 16 a formula that omits cells, 32 an unlocked formula, 64 a formula that
    /// refers to empty cells, 128 values that a validation forbids. Throws when the range has just these.
    void ignoreErrors(const CellRange& range, int flags);
    /// Drops the groups of a type.
    void remove(FeatureType type);

private:
    void indexErrors();

    std::vector<KeptRecords> _records;

    bool _indexed = false;
    std::unordered_multimap<std::uint64_t, std::size_t> _errorsAt;  // by range: the records that hold it
    std::size_t _errorsEnd = 0;                                     // behind the last record of ignored errors
    bool _hasErrorHeader = false;
};

}  // namespace biff
}  // namespace vellum
