// A rule of warnings: its name and advice, and a function for each kind of thing that it looks at.
#pragma once
#include "cli/explain/facts/events.h"
#include "cli/explain/facts/finding.h"

namespace cli::explain {

/// The functions add to the finding what they see amiss; those that a rule does not have are null.
struct Rule {
    const char* name;
    const char* text;    // what was found, behind a count
    const char* advice;  // one sentence
    void (*onRead)(const ReadCell&, Finding&) = nullptr;
    void (*onRow)(const ReadRow&, Finding&) = nullptr;
    void (*onIndex)(const IndexedRow&, Finding&) = nullptr;
    void (*onHeader)(const SoughtHeader&, Finding&) = nullptr;
    void (*onWrite)(const WrittenCell&, Finding&) = nullptr;
    void (*onWritten)(const WrittenItem&, Finding&) = nullptr;
    void (*onOptions)(const OptionText&, Finding&) = nullptr;
    void (*onTarget)(const Target&, Finding&) = nullptr;
};

}  // namespace cli::explain
