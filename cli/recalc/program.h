// Other programs, run to their end.
#pragma once
#include <csignal>
#include <string>
#include <vector>

namespace cli {

/// Whether the search path has a program of that name that may be run.
bool isInstalled(const std::string& program);

/// While one lives, signals that ask this program to end wait, so that what it made can be put away first.
class SignalsHeld {
public:
    SignalsHeld();
    ~SignalsHeld();
    SignalsHeld(const SignalsHeld&) = delete;
    SignalsHeld& operator=(const SignalsHeld&) = delete;

    [[nodiscard]] const sigset_t& before() const { return _before; }
    /// Whether one of them waits.
    [[nodiscard]] bool isAsked() const;

private:
    sigset_t _before;
};

/// Runs a program of the search path, whose output nobody reads, for so many seconds at most. Nothing that it started
/// outlives it. Empty when it ended well; else what it did, to follow its name.
std::string runProgram(const std::vector<std::string>& arguments, int seconds, const SignalsHeld& signals);

}  // namespace cli
