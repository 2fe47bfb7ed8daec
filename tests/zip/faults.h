// Faults that a test asks for: memory or threads that the system does not give.
#pragma once

namespace zip::testing {

enum class Fault { none, allocation, reallocation, thread };

/// From now to the end of its life the step of this kind that comes after `before` others fails, and all behind it if
/// `lasting`. Only steps of this program's own code count.
class FaultAhead {
public:
    FaultAhead(Fault kind, int before, bool lasting = false);
    ~FaultAhead();
    FaultAhead(const FaultAhead&) = delete;
    FaultAhead& operator=(const FaultAhead&) = delete;

    /// Whether a step has failed.
    bool struck() const;
};

}  // namespace zip::testing
