// The notes of a sheet: which cells have a comment, and who wrote it.
#pragma once
#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "biff/container/cursor.h"
#include "biff/container/record_ids.h"

namespace vellum {

class Xls;

/// One note. The object of its number has the text.
struct Note {
    static constexpr std::uint16_t id = record_id::Note;
    enum Flags : std::uint16_t { shown = 2, rowHidden = 0x80, columnHidden = 0x100 };
    static constexpr std::size_t maxAuthor = 54;

    std::uint16_t row = 0, col = 0;
    std::uint16_t flags = 0;
    std::uint16_t objectId = 0;
    std::vector<std::byte> author;  // as it lies in the file, with a byte behind it that most writers add

    [[nodiscard]] std::wstring authorText() const;
    /// Cut to what the format holds.
    void setAuthor(std::wstring_view text);
};

namespace drawing {

/// In file order. What is too short to be a note is kept among them as bytes.
class Notes {
public:
    /// The body of a record. Gives the number of the object that it names, 0 for what is no note.
    std::uint16_t read(std::span<const std::byte> body);
    void write(Xls& out) const;

    /// Of several notes of one cell the first; null when there is none.
    [[nodiscard]] const Note* find(std::uint16_t row, std::uint16_t col);
    /// Takes the place of the note of that cell, if any.
    void put(Note note);
    void remove(std::uint16_t row, std::uint16_t col);
    /// Moves the notes from row, or column, `first` on by `difference`; the caller knows that they stay on the sheet.
    void move(bool rows, int first, int difference);
    [[nodiscard]] bool empty() const { return _notes.size() == _gone; }
    template <class Visit>
    void forEach(Visit&& visit) const {
        for (const Entry& entry : _notes) {
            if (entry.state == State::note) visit(entry.note);
        }
    }

private:
    enum class State : std::uint8_t { note, bytes, gone };
    struct Entry {
        Note note;
        State state = State::note;
    };
    static std::uint32_t key(std::uint16_t row, std::uint16_t col) { return std::uint32_t{row} << 16 | col; }
    Entry* entryAt(std::uint16_t row, std::uint16_t col);
    void closeGaps();

    std::vector<Entry> _notes;
    std::size_t _gone = 0;  // entries that were removed; their places are closed now and then
    bool _indexed = false;
    bool _repeats = false;                                   // some cell has more than one
    std::unordered_map<std::uint32_t, std::size_t> _places;  // by cell
};

}  // namespace drawing
}  // namespace vellum
