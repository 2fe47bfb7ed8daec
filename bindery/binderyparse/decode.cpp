// From the bytes of a source to one contiguous UTF-8 text. A UTF-8 document in memory is read where it lies;
// everything else is decoded once, before it is scanned.

#include "bindery/binderyparse/messages.h"
#include "bindery/binderyparse/reader.h"
#include "bindery/values/chars.h"
#include "bindery/values/value_spec.h"

namespace bindery {

namespace {

char32_t unit16(std::string_view bytes, std::size_t at, bool big) {
    const unsigned a = static_cast<unsigned char>(bytes[at]), b = static_cast<unsigned char>(bytes[at + 1]);
    return big ? a << 8 | b : b << 8 | a;
}

/// False when the bytes end, or a high surrogate stands alone, in the middle of a character.
bool decode16(std::string_view bytes, bool big, bool surrogates, std::string& out) {
    out.reserve(out.size() + bytes.size() / 2);
    std::size_t at = 0;
    for (; at + 1 < bytes.size(); at += 2) {
        char32_t c = unit16(bytes, at, big);
        if (surrogates && c >= 0xD800 && c < 0xDC00) {
            const char32_t low = at + 3 < bytes.size() ? unit16(bytes, at + 2, big) : 0;
            if (low < 0xDC00 || low > 0xDFFF) return false;
            c = 0x10000 + ((c - 0xD800) << 10) + (low - 0xDC00);
            at += 2;
        }
        appendCodePoint(out, c);
    }
    return at == bytes.size();
}

/// Code units that a text had as UTF-16.
std::size_t utf16Units(std::string_view utf8) {
    std::size_t units = 0;
    for (const char c : utf8) {
        const auto byte = static_cast<unsigned char>(c);
        units += (byte & 0xC0) == 0x80 ? 0 : byte < 0xF0 ? 1 : 2;
    }
    return units;
}

}  // namespace

void c_xml_reader::takeSource() {
    if (const std::string_view* window = _source.window()) {
        _bytes = *window;
        _wholeDocument = _source.isWhole();
    } else {
        for (int c = _source.get(); c >= 0; c = _source.get()) _gathered.push_back(static_cast<char>(c));
        _bytes = _gathered;
    }
    _begin = _cur = _end = _bytes.data();
}

void c_xml_reader::detectEncoding() {
    const auto byte = [&](std::size_t i) {
        return i < _bytes.size() ? int(static_cast<unsigned char>(_bytes[i])) : -1;
    };
    const auto ascii = [](int c) { return c >= 1 && c <= 127; };
    const auto opens = [](int c) { return c == '<' || c == ' ' || c == '\t' || c == '\n' || c == '\r'; };
    if (byte(0) == 0xFF && byte(1) == 0xFE && ascii(byte(2)) && byte(3) == 0) {
        _encoding = Encoding::utf16le;
        _bytesFrom = 2;
    } else if (byte(0) == 0xFE && byte(1) == 0xFF && byte(2) == 0 && ascii(byte(3))) {
        _encoding = Encoding::utf16be;
        _bytesFrom = 2;
    } else if (byte(0) == 0xEF && byte(1) == 0xBB && byte(2) == 0xBF) {
        _encoding = Encoding::utf8;
        _bytesFrom = 3;
    } else if (opens(byte(0))) {
        _encoding = byte(1) == 0 ? Encoding::utf16le : Encoding::utf8;
    } else if (byte(0) == 0 && opens(byte(1))) {
        _encoding = Encoding::utf16be;
    }
}

/// Decodes the bytes from an offset on, behind what is decoded already.
void c_xml_reader::decode(std::size_t from) {
    const std::string_view rest = _bytes.substr(from);
    _brokenEnd = false;
    switch (_encoding) {
        case Encoding::singleByte:
            for (const char c : rest) appendCodePoint(_decoded, static_cast<unsigned char>(c));
            break;
        case Encoding::utf16be:
        case Encoding::utf16le:
            _brokenEnd = !decode16(rest, _encoding == Encoding::utf16be, true, _decoded);
            break;
        case Encoding::ucs2be:
        case Encoding::ucs2le:
            _brokenEnd = !decode16(rest, _encoding == Encoding::ucs2be, false, _decoded);
            break;
        default:
            break;
    }
}

/// The declaration, passed already, has named an encoding that its bytes could not tell.
void c_xml_reader::changeEncoding(Encoding to) {
    const std::size_t passed = static_cast<std::size_t>(_cur - _begin);
    const bool wide = to == Encoding::ucs2be || to == Encoding::ucs2le;
    _encoding = to;
    _decoded = std::string(_begin, passed);
    decode(_bytesFrom + (wide ? utf16Units(_decoded) * 2 : passed));
    _begin = _decoded.data();
    _cur = _begin + passed;
    _end = _begin + _decoded.size();
}

void c_xml_reader::start() {
    _started = true;
    takeSource();
    if (_source.errorCode() != 0) {
        report(0, _source.errorCode(), msg::cannotOpen);
        return;
    }
    detectEncoding();
    if (_encoding == Encoding::unknown) {
        report(0, unknown_encoding, msg::unrecognisedEncoding);
        return;
    }
    if (_encoding == Encoding::utf8) {
        _begin = _cur = _bytes.data() + _bytesFrom;
        _end = _bytes.data() + _bytes.size();
        return;
    }
    decode(_bytesFrom);
    _begin = _cur = _decoded.data();
    _end = _begin + _decoded.size();
}

}  // namespace bindery
