// The many records of one 16-bit value.
#pragma once
#include <algorithm>
#include <cstddef>
#include <cstdint>

#include "biff/container/record_ids.h"

namespace vellum::globals {

/// A text as a template argument.
template <std::size_t N>
struct RecordName {
    char text[N]{};
    consteval RecordName(const char (&literal)[N]) { std::copy_n(literal, N, text); }
};

template <std::uint16_t Id, RecordName Name, std::uint16_t Default = 0>
struct WordRecord {
    static constexpr std::uint16_t id = Id;
    static constexpr const char* name = Name.text;
    std::uint16_t value = Default;

    template <class Self, class Visit>
    static constexpr void fields(Self& r, Visit&& visit) {
        visit("value", r.value);
    }
};

// Globals.
using CalcPrecision = WordRecord<record_id::CalcPrecision, "CalcPrecision", 1>;
using Protect = WordRecord<record_id::Protect, "Protect">;
using Password = WordRecord<record_id::Password, "Password">;
using WinProtect = WordRecord<record_id::WinProtect, "WinProtect">;
using Date1904 = WordRecord<record_id::Date1904, "Date1904">;
using Backup = WordRecord<record_id::Backup, "Backup">;
using CodePage = WordRecord<record_id::CodePage, "CodePage", 1200>;  // 1200: UTF-16, as all of BIFF8
using HideObj = WordRecord<record_id::HideObj, "HideObj">;
using BuiltInFnGroupCount = WordRecord<record_id::BuiltInFnGroupCount, "BuiltInFnGroupCount", 14>;
using BookBool = WordRecord<record_id::BookBool, "BookBool">;
using UsesELFs = WordRecord<record_id::UsesELFs, "UsesELFs">;
using DSF = WordRecord<record_id::DSF, "DSF">;
using Prot4Rev = WordRecord<record_id::Prot4Rev, "Prot4Rev">;
using Prot4RevPass = WordRecord<record_id::Prot4RevPass, "Prot4RevPass">;
using RefreshAll = WordRecord<record_id::RefreshAll, "RefreshAll">;
using InterfaceHdr = WordRecord<record_id::InterfaceHdr, "InterfaceHdr", 1200>;  // size 0 in older files

}  // namespace vellum::globals
