#include "engine/failure/last_error.h"

#include <exception>

#include "engine/failure/messages.h"

namespace vellum {

namespace {
constexpr std::size_t usualLength = 120;  // longer than nearly all texts, so that the buffer stays
}

LastError::LastError() {
    _text.reserve(usualLength);
    _text = msg::ok;
}

void LastError::clear() noexcept {
    _text.assign(msg::ok);  // fits the buffer that is there
}

void LastError::set(const char* text) noexcept {
    try {
        _text.assign(text);
    } catch (const std::exception&) {
        _text.assign(msg::generalFailure);
    }
}

}  // namespace vellum
