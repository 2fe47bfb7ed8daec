// How old the result of a formula is.
#pragma once

namespace cli::explain {

enum class Freshness {
    fresh,
    stale,       // it depends on cells that were written since
    cannotTell,  // it depends on cells that its text does not name
};

}  // namespace cli::explain
