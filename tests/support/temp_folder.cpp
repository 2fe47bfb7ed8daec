// A folder of its own for each test program that runs: ctest runs many side by side, whose files have the same names.
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <string>

namespace {

/// Stands behind testing::TempDir() from the program's start to its end; a child that was forked does not remove it.
struct TempFolder {
    TempFolder() {
        std::string made = (std::filesystem::temp_directory_path() / "quillet-test-XXXXXX").string();
        if (mkdtemp(made.data()) == nullptr) return;
        path = made;
        setenv("TEST_TMPDIR", path.c_str(), 1);
    }
    ~TempFolder() {
        std::error_code ignored;
        if (getpid() == owner && !path.empty()) std::filesystem::remove_all(path, ignored);
    }
    const pid_t owner = getpid();
    std::string path;
} folder;

}  // namespace
