// The object of a hyperlink from hostile bytes. What it leads to, given as a text, makes an object that leads there.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <span>

#include "biff/features/hyperlink_object.h"
#include "engine/failure/vlerror.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace vellum;
    std::wstring text;
    try {
        text = biff::readHyperlinkObject(std::as_bytes(std::span(data, size))).text();
    } catch (const vlerror&) {
        return 0;
    }
    const auto target = biff::LinkTarget::of(text);
    Sink object;
    biff::writeHyperlinkObject(object, target);
    if (biff::readHyperlinkObject(object.bytes()).text() != target.text()) std::abort();
    return 0;
}
