#include "cli/recalc/program.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <chrono>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <optional>
#include <string_view>
#include <thread>

namespace cli {
namespace {

constexpr int endSignals[] = {SIGINT, SIGTERM, SIGHUP, SIGQUIT};

/// Attributes and file actions of a program that leads a group of its own and hears and says nothing.
class Start {
public:
    explicit Start(const sigset_t& mask) {
        posix_spawnattr_init(&_attributes);
        posix_spawnattr_setflags(&_attributes, POSIX_SPAWN_SETPGROUP | POSIX_SPAWN_SETSIGMASK);
        posix_spawnattr_setpgroup(&_attributes, 0);
        posix_spawnattr_setsigmask(&_attributes, &mask);
        posix_spawn_file_actions_init(&_files);
        posix_spawn_file_actions_addopen(&_files, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
        posix_spawn_file_actions_addopen(&_files, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
        posix_spawn_file_actions_addopen(&_files, STDERR_FILENO, "/dev/null", O_WRONLY, 0);
    }
    ~Start() {
        posix_spawn_file_actions_destroy(&_files);
        posix_spawnattr_destroy(&_attributes);
    }
    Start(const Start&) = delete;
    Start& operator=(const Start&) = delete;

    /// The process, or nothing with the reason in errno.
    std::optional<pid_t> operator()(const std::vector<std::string>& arguments) const {
        std::vector<char*> words;
        for (const std::string& argument : arguments) words.push_back(const_cast<char*>(argument.c_str()));
        words.push_back(nullptr);
        pid_t child = 0;
        errno = posix_spawnp(&child, words[0], &_files, &_attributes, words.data(), environ);
        return errno == 0 ? std::optional(child) : std::nullopt;
    }

private:
    posix_spawnattr_t _attributes;
    posix_spawn_file_actions_t _files;
};

bool hasEnded(pid_t child) {
    siginfo_t info{};
    return waitid(P_PID, static_cast<id_t>(child), &info, WEXITED | WNOHANG | WNOWAIT) == 0 && info.si_pid == child;
}

/// Ends the whole group, which keeps its number until its leader is waited for; the leader's status.
int collect(pid_t child) {
    kill(-child, SIGKILL);
    int status = 0;
    while (waitpid(child, &status, 0) < 0 && errno == EINTR) continue;
    return status;
}

}  // namespace

bool isInstalled(const std::string& program) {
    const char* const path = std::getenv("PATH");
    std::string_view left = path != nullptr ? path : "/bin:/usr/bin";
    for (bool more = true; more;) {
        const std::size_t end = left.find(':');
        more = end != left.npos;
        const std::filesystem::path file = std::filesystem::path(left.substr(0, end)) / program;
        std::error_code failed;
        if (std::filesystem::is_regular_file(file, failed) && access(file.c_str(), X_OK) == 0) return true;
        if (more) left.remove_prefix(end + 1);
    }
    return false;
}

SignalsHeld::SignalsHeld() {
    sigset_t held;
    sigemptyset(&held);
    for (const int signal : endSignals) sigaddset(&held, signal);
    pthread_sigmask(SIG_BLOCK, &held, &_before);
}

SignalsHeld::~SignalsHeld() {
    pthread_sigmask(SIG_SETMASK, &_before, nullptr);
}

bool SignalsHeld::isAsked() const {
    sigset_t waiting;
    if (sigpending(&waiting) != 0) return false;
    for (const int signal : endSignals) {
        if (sigismember(&waiting, signal) == 1) return true;
    }
    return false;
}

std::string runProgram(const std::vector<std::string>& arguments, int seconds, const SignalsHeld& signals) {
    using Clock = std::chrono::steady_clock;
    constexpr std::chrono::milliseconds pause(20);
    const std::optional<pid_t> child = Start(signals.before())(arguments);
    if (!child) return std::string("could not be started: ") + std::strerror(errno);
    const Clock::time_point end = Clock::now() + std::chrono::seconds(seconds);
    std::string why;
    while (!hasEnded(*child) && why.empty()) {
        if (Clock::now() >= end) why = "did not end within " + std::to_string(seconds) + " seconds";
        if (signals.isAsked()) why = "was stopped";
        std::this_thread::sleep_for(pause);
    }
    const int status = collect(*child);
    if (!why.empty()) return why;
    if (WIFSIGNALED(status)) return "was ended by signal " + std::to_string(WTERMSIG(status));
    return WEXITSTATUS(status) == 0 ? "" : "ended with status " + std::to_string(WEXITSTATUS(status));
}

}  // namespace cli
