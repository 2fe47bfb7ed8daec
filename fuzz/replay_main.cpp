// Runs every file of the folders or files named on the command line through the fuzz entry, once each, so that what
// the fuzzers found stays found. Without a file to run it fails: an empty corpus proves nothing.
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace {

std::size_t runFile(const std::filesystem::path& path) {
    std::ifstream in(path, std::ios::binary);
    const std::vector<char> bytes((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
    std::fprintf(stderr, "%s\n", path.filename().c_str());
    LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size());
    return 1;
}

}  // namespace

int main(int argc, char** argv) {
    std::size_t count = 0;
    for (int i = 1; i < argc; ++i) {
        if (!std::filesystem::is_directory(argv[i])) {
            count += runFile(argv[i]);
            continue;
        }
        for (const auto& entry : std::filesystem::recursive_directory_iterator(argv[i])) {
            if (entry.is_regular_file()) count += runFile(entry.path());
        }
    }
    std::fprintf(stderr, "%zu files\n", count);
    return count == 0 ? 1 : 0;
}
