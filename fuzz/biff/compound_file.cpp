// A whole compound file: load, read the main stream, take the kept streams, save, and load what was saved.
#include <cstdlib>
#include <exception>
#include <vector>

#include "biff/container/memory_stream.h"
#include "biff/container/xls.h"
#include "engine/failure/vlerror.h"

using namespace vellum;

namespace {

std::vector<std::byte> load(Xls& xls, std::span<const std::byte> bytes) {
    MemoryStream in(bytes);
    xls.setStream(&in);
    xls.measure();
    std::uint64_t counter = 0;
    xls.read(counter);
    std::vector<std::byte> main(xls.remaining());
    xls.readBytes(main.data(), main.size());
    xls.setStream(nullptr);
    return main;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    Xls xls;
    std::vector<std::byte> main;
    MemoryStream out;
    try {
        main = load(xls, std::as_bytes(std::span(data, size)));
        xls.extractKeptStreams();
        if (main.empty()) return 0;
        xls.reset(false);
        xls.setStream(&out);
        xls.writeBytes(main);
        xls.close();
    } catch (const vlerror&) {
        return 0;
    }
    Xls again;  // what was saved must load, with the same content
    const auto saved = load(again, std::as_bytes(std::span(out.written())));
    if (saved.size() < main.size() || !std::equal(main.begin(), main.end(), saved.begin())) std::abort();
    again.extractKeptStreams();
    return 0;
}
