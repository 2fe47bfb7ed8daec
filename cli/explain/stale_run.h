// quillet run --stale.
#pragma once
#include <functional>

#include "refhost/run/script_run.h"

namespace cli::explain {

/// Runs `run` with the module that this program is linked with, and lets it tell of stale results.
refhost::RunStatus runWatched(refhost::Host& host, refhost::RunOptions& options,
                              const std::function<refhost::RunStatus()>& run);

}  // namespace cli::explain
