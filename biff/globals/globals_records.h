// Records of several fields that stand once in the globals.
#pragma once
#include <array>
#include <cstddef>
#include <cstdint>

#include "biff/container/record_ids.h"

namespace vellum::globals {

/// How many entries menus had beside the own ones; of no meaning today.
struct Mms {
    static constexpr std::uint16_t id = record_id::Mms;
    static constexpr const char* name = "Mms";
    std::uint8_t caitm = 0, cditm = 0;

    template <class Self, class Visit>
    static constexpr void fields(Self& r, Visit&& visit) {
        visit("caitm", r.caitm);
        visit("cditm", r.cditm);
    }
};

/// Who saved the file last: a string, filled up with spaces.
struct WriteAccess {
    static constexpr std::uint16_t id = record_id::WriteAccess;
    static constexpr const char* name = "WriteAccess";
    static constexpr std::size_t size = 112;

    std::array<std::uint8_t, size> user = nobody();

    template <class Self, class Visit>
    static constexpr void fields(Self& r, Visit&& visit) {
        visit("user", r.user);
    }

private:
    static constexpr std::array<std::uint8_t, size> nobody() {
        std::array<std::uint8_t, size> body{};
        body.fill(' ');
        body[0] = 1;  // characters, 16 bits
        body[1] = 0;
        body[2] = 0;  // one byte each
        body[3] = 'Q';
        return body;
    }
};

/// Window of the workbook: place, size, and which sheet is shown.
struct Window1 {
    static constexpr std::uint16_t id = record_id::Window1;
    static constexpr const char* name = "Window1";
    std::int16_t xWn = 0, yWn = 15;            // top left corner, twips; negative on a second screen
    std::int16_t dxWn = 16155, dyWn = 10230;   // size, twips
    std::uint16_t flags = 56;                  // both scroll bars and the sheet tabs are shown
    std::uint16_t itabCur = 0, itabFirst = 0;  // sheets, counted from 0
    std::uint16_t ctabSel = 1;
    std::uint16_t wTabRatio = 600;  // width of the tab bar, 1/1000 of the window

    template <class Self, class Visit>
    static constexpr void fields(Self& r, Visit&& visit) {
        visit("xWn", r.xWn);
        visit("yWn", r.yWn);
        visit("dxWn", r.dxWn);
        visit("dyWn", r.dyWn);
        visit("flags", r.flags);
        visit("itabCur", r.itabCur);
        visit("itabFirst", r.itabFirst);
        visit("ctabSel", r.ctabSel);
        visit("wTabRatio", r.wTabRatio);
    }
};

/// The country of the program and of the system settings, as telephone codes.
struct Country {
    static constexpr std::uint16_t id = record_id::Country;
    static constexpr const char* name = "Country";
    std::uint16_t iCountryDef = 1, iCountryWinIni = 1;

    template <class Self, class Visit>
    static constexpr void fields(Self& r, Visit&& visit) {
        visit("iCountryDef", r.iCountryDef);
        visit("iCountryWinIni", r.iCountryWinIni);
    }
};

/// A program whose calculation is newer than `dwBuild` calculates anew when it loads.
struct RecalcId {
    static constexpr std::uint16_t id = record_id::RecalcId;
    static constexpr const char* name = "RecalcId";
    std::uint16_t rt = record_id::RecalcId, reserved = 0;
    std::uint32_t dwBuild = 114210;

    template <class Self, class Visit>
    static constexpr void fields(Self& r, Visit&& visit) {
        visit("rt", r.rt);
        visit("reserved", r.reserved);
        visit("dwBuild", r.dwBuild);
    }
};

/// Properties of the workbook that came late; 20 to 22 bytes, as `cb` says again.
struct BookExt {
    static constexpr std::uint16_t id = record_id::BookExt;
    static constexpr const char* name = "BookExt";
    std::uint16_t rt = record_id::BookExt, grbitFrt = 0;
    std::uint64_t reserved = 0;
    std::uint32_t cb = 20, flags = 0;
    std::uint8_t grbit1 = 0, grbit2 = 0;

    template <class Self, class Visit>
    static constexpr void fields(Self& r, Visit&& visit) {
        visit("rt", r.rt);
        visit("grbitFrt", r.grbitFrt);
        visit("reserved", r.reserved);
        visit("cb", r.cb);
        visit("flags", r.flags);
        visit("grbit1", r.grbit1);
        visit("grbit2", r.grbit2);
    }
};

}  // namespace vellum::globals
