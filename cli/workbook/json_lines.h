// JSON, a line for each object.
#pragma once
#include <ostream>
#include <string>
#include <string_view>

namespace cli {

/// JSON text on its way to a stream, gathered into large pieces.
class JsonLines {
public:
    explicit JsonLines(std::ostream& out) : _out(out) { _buffer.reserve(flushAt + 4096); }
    JsonLines(const JsonLines&) = delete;
    JsonLines& operator=(const JsonLines&) = delete;
    ~JsonLines() { flush(); }

    /// As it stands.
    JsonLines& raw(std::string_view json) {
        _buffer.append(json);
        return *this;
    }
    JsonLines& integer(long long value);
    /// 17 significant digits, by which a reader gets the same double. A NaN is null, an infinity 1e999.
    JsonLines& number(double value);
    /// In quotes. The text is UTF-8.
    JsonLines& text(std::string_view utf8);
    void endLine() {
        _buffer.push_back('\n');
        if (_buffer.size() >= flushAt) flush();
    }
    void flush();

private:
    static constexpr std::size_t flushAt = 1 << 16;
    std::ostream& _out;
    std::string _buffer;
};

}  // namespace cli
