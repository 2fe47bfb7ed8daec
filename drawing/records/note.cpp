#include "drawing/records/note.h"

#include <algorithm>

#include "biff/container/sink.h"
#include "biff/container/xls.h"

namespace vellum {
namespace {

constexpr std::size_t fixedSize = 8;
constexpr std::uint8_t wideFlag = 1;

}  // namespace

std::wstring Note::authorText() const {
    Cursor in(author);
    if (in.left() < 3) return {};
    const std::size_t cch = in.get<std::uint16_t>();
    const bool wide = (in.get<std::uint8_t>() & wideFlag) != 0;
    std::wstring text;
    while (text.size() < cch && in.left() >= (wide ? 2U : 1U)) {
        text += static_cast<wchar_t>(wide ? in.get<std::uint16_t>() : in.get<std::uint8_t>());
    }
    return text;
}

void Note::setAuthor(std::wstring_view text) {
    text = text.substr(0, maxAuthor);
    Sink out;
    out.putAll(static_cast<std::uint16_t>(text.size()), wideFlag);
    for (const wchar_t c : text) out.put(static_cast<std::uint16_t>(c));
    out.put(std::uint8_t{0});
    author.assign(out.bytes().begin(), out.bytes().end());
}

namespace drawing {

std::uint16_t Notes::read(std::span<const std::byte> body) {
    Entry entry;
    if (body.size() < fixedSize) {
        entry.state = State::bytes;
        entry.note.author.assign(body.begin(), body.end());
    } else {
        Cursor in(body);
        entry.note.row = in.get<std::uint16_t>();
        entry.note.col = in.get<std::uint16_t>();
        entry.note.flags = in.get<std::uint16_t>();
        entry.note.objectId = in.get<std::uint16_t>();
        entry.note.author.assign(in.rest().begin(), in.rest().end());
    }
    const std::uint16_t named = entry.note.objectId;
    _notes.push_back(std::move(entry));
    _indexed = false;
    return named;
}

void Notes::write(Xls& out) const {
    for (const auto& [note, state] : _notes) {
        if (state == State::gone) continue;
        Sink& sink = out.out();
        const std::size_t fixed = state == State::note ? fixedSize : 0;
        sink.putAll(Note::id, static_cast<std::uint16_t>(fixed + note.author.size()));
        if (fixed != 0) sink.putAll(note.row, note.col, note.flags, note.objectId);
        sink.write(note.author);
    }
}

Notes::Entry* Notes::entryAt(std::uint16_t row, std::uint16_t col) {
    if (!_indexed) {
        _places.clear();
        _repeats = false;
        for (std::size_t i = 0; i < _notes.size(); ++i) {
            const auto& [note, state] = _notes[i];
            if (state == State::note && !_places.try_emplace(key(note.row, note.col), i).second) _repeats = true;
        }
        _indexed = true;
    }
    const auto found = _places.find(key(row, col));
    return found == _places.end() ? nullptr : &_notes[found->second];
}

const Note* Notes::find(std::uint16_t row, std::uint16_t col) {
    const Entry* const entry = entryAt(row, col);
    return entry == nullptr ? nullptr : &entry->note;
}

void Notes::put(Note note) {
    if (Entry* const entry = entryAt(note.row, note.col)) {
        entry->note = std::move(note);
        return;
    }
    _places.emplace(key(note.row, note.col), _notes.size());
    _notes.push_back({std::move(note), State::note});
}

void Notes::remove(std::uint16_t row, std::uint16_t col) {
    Entry* const entry = entryAt(row, col);
    if (entry == nullptr) return;
    entry->state = State::gone;
    entry->note.author.clear();
    _places.erase(key(row, col));
    if (_repeats) _indexed = false;
    if (++_gone > _notes.size() / 2) closeGaps();
}

void Notes::move(bool rows, int first, int difference) {
    for (Entry& entry : _notes) {
        std::uint16_t& place = rows ? entry.note.row : entry.note.col;
        if (entry.state == State::note && place >= first) place = static_cast<std::uint16_t>(place + difference);
    }
    _indexed = false;
}

void Notes::closeGaps() {
    std::erase_if(_notes, [](const Entry& entry) { return entry.state == State::gone; });
    _gone = 0;
    _indexed = false;
}

}  // namespace drawing
}  // namespace vellum
