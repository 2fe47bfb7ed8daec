// A part that is parsed while it is still being unpacked.
#pragma once
#include <cstddef>
#include <string_view>
#include <vector>

#include "bindery/binderyparse/read.h"

namespace zip {
class EntryStream;
}

namespace vellum {

/// The bytes of a part, window by window: as much as the reader keeps, and one piece of the stream behind it.
class PartWindows final : public bindery::c_read {
public:
    explicit PartWindows(zip::EntryStream& stream);

    int get() override { return -1; }  // readers take the windows
    const std::string_view* window() override { return &_window; }
    bool isWhole() const override { return _ended; }
    std::string_view extend(const char* keep) override;

    /// Reads what the parser left. Throws when the stream is damaged.
    void finish();

private:
    zip::EntryStream& _stream;
    std::vector<char> _bytes;
    std::string_view _window;
    bool _ended = false;
};

}  // namespace vellum
