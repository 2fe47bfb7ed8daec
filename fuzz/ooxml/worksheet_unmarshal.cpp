// A worksheet part from hostile bytes: bound, written, bound and written again; and bound window by window, which may
// fail, but never gives anything else than the whole part.
#include <algorithm>
#include <vector>

#include "fuzz/ooxml/ooxml_round_trip.h"
#include "ooxml/generated/sml-sheet/sml-sheet.h"

namespace {

/// Gives a text in pieces, each time in another place of memory.
class Windows final : public bindery::c_read {
public:
    Windows(std::string_view text, std::size_t piece) : _rest(text), _piece(piece) { extend(nullptr); }
    int get() override { return -1; }
    const std::string_view* window() override { return &_window; }
    bool isWhole() const override { return _rest.empty(); }
    std::string_view extend(const char* keep) override {
        const std::size_t part = std::min(_piece, _rest.size());
        std::vector<char> next;
        if (keep != nullptr) next.assign(keep, static_cast<const char*>(_bytes.data()) + _bytes.size());
        next.insert(next.end(), _rest.begin(), _rest.begin() + static_cast<std::ptrdiff_t>(part));
        _rest.remove_prefix(part);
        _bytes = std::move(next);
        return _window = {_bytes.data(), _bytes.size()};
    }

private:
    std::string_view _rest;
    std::size_t _piece;
    std::vector<char> _bytes;
    std::string_view _window;
};

/// The part as it is written again; empty when it cannot be read.
std::string through(bindery::c_read& source) {
    bindery::c_keeping_reader<bindery::c_xml_reader> reader(source);
    bindery::c_xml_writer writer;
    sheet::c_worksheet root;
    if (root.unmarshal(reader) != 0 || root.marshal(writer) != 0) return {};
    return writer.take();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    roundTrip<sheet::c_worksheet>(bytes, size);
    const std::string_view text(reinterpret_cast<const char*>(bytes), size);
    bindery::c_read_memory memory(bytes, size);
    const std::string whole = through(memory);
    for (const std::size_t piece : {size / 2 + 1, size / 9 + 7}) {
        Windows windows(text, piece);
        const std::string inWindows = through(windows);
        if (!inWindows.empty() && inWindows != whole) std::abort();
    }
    return 0;
}
