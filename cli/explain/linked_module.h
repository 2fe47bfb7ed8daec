// The module that this program is linked with, for those who observe it.
#pragma once
#include "host/interface/observer.h"
#include "refhost/operations/host.h"

namespace cli::explain {

/// Gives a host the module's code that is in this program.
void adoptModule(refhost::Host& host);

/// The observer, for as long as a script runs.
class Observed {
public:
    explicit Observed(quillet::Observer& by) { quillet::observer = &by; }
    ~Observed() { quillet::observer = nullptr; }
    Observed(const Observed&) = delete;
    Observed& operator=(const Observed&) = delete;
};

}  // namespace cli::explain
