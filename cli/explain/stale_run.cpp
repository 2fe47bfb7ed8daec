#include "cli/explain/stale_run.h"

#include "cli/explain/linked_module.h"
#include "cli/explain/observing/stale_watch.h"

namespace cli::explain {

refhost::RunStatus runWatched(refhost::Host& host, refhost::RunOptions& options,
                              const std::function<refhost::RunStatus()>& run) {
    StaleWatch watch;
    adoptModule(host);
    options.stale = [&watch] { return watch.take(); };
    const Observed observed(watch);
    return run();
}

}  // namespace cli::explain
