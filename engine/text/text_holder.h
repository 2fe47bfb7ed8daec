// Strings that an operation gives out.
#pragma once
#include <string>
#include <string_view>
#include <type_traits>

namespace vellum {

/// One string in narrow and wide form, each made when it is first asked for. It owns what a reading
/// operation returns: a pointer stays valid until the next setter.
class TextHolder {
public:
    /// A null leaves the holder as it was.
    void setNarrow(const char* text);
    void setWide(const wchar_t* text);
    void setNarrow(std::string_view text);
    void setWide(std::wstring_view text);
    void clear();

    /// `utf8` is the coding of the narrow form. Throws "Invalid UTF-16" and the like.
    const char* narrow(bool utf8);
    const wchar_t* wide(bool utf8);

    /// The form of an interface's character type.
    template <class CharT>
    const CharT* as(bool utf8) {
        if constexpr (std::is_same_v<CharT, char>) {
            return narrow(utf8);
        } else {
            return wide(utf8);
        }
    }
    /// Stores a text and gives it back in the interface's form: the last line of most readers.
    template <class CharT>
    const CharT* give(std::wstring_view text, bool utf8) {
        setWide(text);
        return as<CharT>(utf8);
    }

    /// Whether the last conversion, in locale mode, put '?' for a character.
    bool lostCharacters() const { return _lost; }

private:
    bool _narrowStale = false;
    bool _wideStale = false;
    std::string _narrow;
    std::wstring _wide;
    bool _lost = false;
};

}  // namespace vellum
