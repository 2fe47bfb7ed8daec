// The record that begins the globals and each sheet.
#pragma once
#include <cstdint>

#include "biff/container/record_ids.h"

namespace vellum {

/// `vers` of a `Bof` as this engine writes it, and of files of the generation before.
inline constexpr std::uint16_t bofVersBiff8 = 0x0600;
inline constexpr std::uint16_t bofVersBiff5 = 0x0500;
/// Below this, texts have no flags byte and many records their older layout.
inline constexpr std::uint16_t firstVersWithFlags = 0x0501;

struct Bof {
    static constexpr std::uint16_t id = record_id::Bof;
    static constexpr const char* name = "Bof";
    static constexpr const char* dumpName = "BOF";

    enum Kind : std::uint16_t { globals = 5, module = 6, worksheet = 16, chart = 32, macroSheet = 64 };

    std::uint16_t vers = bofVersBiff8;
    std::uint16_t dt = globals;
    std::uint16_t rupBuild = 8346, rupYear = 1997;  // of the writing program
    std::uint32_t fields1 = 49353;                  // its history; not in files before BIFF8, nor fields2
    std::uint32_t fields2 = 774;                    // the lowest version that can read the file

    template <class Self, class Visit>
    static constexpr void fields(Self& r, Visit&& visit) {
        visit("vers", r.vers);
        visit("dt", r.dt);
        visit("rupBuild", r.rupBuild);
        visit("rupYear", r.rupYear);
        visit("fields1", r.fields1);
        visit("fields2", r.fields2);
    }
};

}  // namespace vellum
