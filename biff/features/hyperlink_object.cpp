#include "biff/features/hyperlink_object.h"

#include <algorithm>
#include <array>

#include "biff/container/cursor.h"
#include "biff/features/feature_messages.h"
#include "biff/records/unicode_string.h"

namespace vellum::biff {
namespace {

enum Flags : std::uint32_t {
    hasMoniker = 0x0001,
    isAbsolute = 0x0002,
    hasLocation = 0x0008,
    hasDisplayName = 0x0010,
    hasFrameName = 0x0080,
    monikerAsString = 0x0100,
};

constexpr std::uint32_t streamVersion = 2;
using ClassId = std::array<std::uint8_t, 16>;
constexpr ClassId urlMoniker{0xE0, 0xC9, 0xEA, 0x79, 0xF9, 0xBA, 0xCE, 0x11,
                             0x8C, 0x82, 0x00, 0xAA, 0x00, 0x4B, 0xA9, 0x0B};
constexpr ClassId fileMoniker{0x03, 0x03, 0, 0, 0, 0, 0, 0, 0xC0, 0, 0, 0, 0, 0, 0, 0x46};
constexpr std::wstring_view parentFolder = L"..\\";
constexpr std::size_t maxParents = 256;  // more than any path has

class ObjectReader {
public:
    explicit ObjectReader(std::span<const std::byte> object) : _in(object) {}

    LinkTarget read() {
        _in.skip(sizeof streamVersion, tooShort);
        const auto flags = get<std::uint32_t>();
        if ((flags & hasDisplayName) != 0) countedText();
        if ((flags & hasFrameName) != 0) countedText();
        LinkTarget target;
        if ((flags & hasMoniker) != 0) {
            if ((flags & monikerAsString) != 0) {
                target.moniker = countedText();
            } else {
                readMoniker(target);
            }
        }
        // Behind a moniker of an unknown kind nobody knows where to read on.
        if (target.known && (flags & hasLocation) != 0) target.location = countedText();
        return target;
    }

private:
    static constexpr const char* tooShort = msg::hyperlinkObject;

    template <class T>
    T get() {
        return _in.get<T>(tooShort);
    }
    // Up to a null, or all of it.
    static std::wstring textOf(std::span<const std::byte> bytes, bool wide) {
        std::wstring text(bytes.size() / (wide ? 2 : 1), L'\0');
        widenText(text.data(), bytes.first(text.size() * (wide ? 2 : 1)), wide);
        text.resize(std::min(text.find(L'\0'), text.size()));
        return text;
    }
    std::wstring countedText() {
        const std::size_t count = get<std::uint32_t>();
        return textOf(_in.take(count > _in.left() ? _in.left() + 1 : count * 2, tooShort), true);
    }

    void readMoniker(LinkTarget& target) {
        const auto id = _in.take(sizeof(ClassId), tooShort);
        const auto is = [&](const ClassId& known) { return std::ranges::equal(id, std::as_bytes(std::span(known))); };
        if (is(urlMoniker)) {
            // The length may take in an id and flags behind the text.
            target.moniker = textOf(_in.take(get<std::uint32_t>(), tooShort), true);
        } else if (is(fileMoniker)) {
            target.moniker = filePath();
        } else {
            target.known = false;
        }
    }

    // The path in bytes of some code page, and where those do not do, once more in 16-bit characters.
    std::wstring filePath() {
        constexpr std::size_t fixedSize = 24;  // mark, version, and nothing
        const auto parents = get<std::uint16_t>();
        std::wstring path = textOf(_in.take(get<std::uint32_t>(), tooShort), false);
        _in.skip(fixedSize, tooShort);
        if (const auto size = get<std::uint32_t>(); size != 0) {
            Cursor wide(_in.take(size, tooShort));
            const auto bytes = wide.get<std::uint32_t>(tooShort);
            wide.skip(sizeof(std::uint16_t), tooShort);
            path = textOf(wide.take(bytes, tooShort), true);
        }
        std::wstring full;
        for (std::size_t i = 0; i < parents && i < maxParents; ++i) full += parentFolder;
        return full + path;
    }
    Cursor _in;
};

void writeCountedText(Sink& out, std::wstring_view text) {
    out.put(static_cast<std::uint32_t>(text.size() + 1));
    writeCharacters(out, text, true);
    out.put(std::uint16_t{0});
}

void writeUrl(Sink& out, std::wstring_view url) {
    out.write(std::as_bytes(std::span(urlMoniker)));
    out.put(static_cast<std::uint32_t>((url.size() + 1) * 2));
    writeCharacters(out, url, true);
    out.put(std::uint16_t{0});
}

void writeFile(Sink& out, std::wstring_view path) {
    std::uint16_t parents = 0;
    for (; path.starts_with(parentFolder) && parents < maxParents; ++parents) path.remove_prefix(parentFolder.size());
    out.write(std::as_bytes(std::span(fileMoniker)));
    out.putAll(parents, static_cast<std::uint32_t>(path.size() + 1));
    for (const wchar_t c : path) out.put(static_cast<std::uint8_t>(c > 0 && c < 0x100 ? c : L'?'));
    out.putAll(std::uint8_t{0}, std::uint16_t{0xFFFF}, std::uint16_t{0xDEAD});
    out.fill(20);
    const auto bytes = static_cast<std::uint32_t>(path.size() * 2);
    out.putAll(static_cast<std::uint32_t>(bytes + 6), bytes, std::uint16_t{3});
    writeCharacters(out, path, true);
}

bool isUrl(std::wstring_view moniker) {
    return moniker.find(L"://") != std::wstring_view::npos || moniker.starts_with(L"mailto:");
}

}  // namespace

std::wstring LinkTarget::text() const {
    if (!known) return {};
    if (moniker.empty() || location.empty()) return moniker + location;
    return moniker + L"#" + location;
}

LinkTarget LinkTarget::of(std::wstring_view text) {
    LinkTarget target;
    const std::size_t hash = text.find(L'#');
    if (text.find(L"://") != std::wstring_view::npos) {
        target.moniker = text;
    } else if (hash != std::wstring_view::npos) {
        target.moniker = text.substr(0, hash);
        target.location = text.substr(hash + 1);
    } else if (text.find(L'!') != std::wstring_view::npos) {
        target.location = text;
    } else {
        target.moniker = text;
    }
    return target;
}

LinkTarget readHyperlinkObject(std::span<const std::byte> object) {
    return ObjectReader(object).read();
}

void writeHyperlinkObject(Sink& out, const LinkTarget& target) {
    const bool url = isUrl(target.moniker);
    std::uint32_t flags = 0;
    if (!target.moniker.empty()) flags |= url ? hasMoniker | isAbsolute : hasMoniker;
    if (!target.location.empty()) flags |= hasLocation;
    out.putAll(streamVersion, flags);
    if (!target.moniker.empty()) url ? writeUrl(out, target.moniker) : writeFile(out, target.moniker);
    if (!target.location.empty()) writeCountedText(out, target.location);
}

}  // namespace vellum::biff
