#include "biff/strings/str_map.h"

#include <algorithm>
#include <iostream>

#include "biff/container/record_codec.h"
#include "biff/records/book_messages.h"
#include "biff/records/continue_writer.h"
#include "engine/failure/vlerror.h"
#include "engine/text/string_pool.h"

namespace vellum {

namespace {

// Marks a bucket of the index whose entry was taken out; its flags occur in no string.
const ExtString deletedEntry{nullptr, nullptr, 0, 0xFF};

ExtString plain(const wchar_t* text, std::size_t length) {
    return {text, nullptr, static_cast<std::uint32_t>(length), wideText};
}

bool isDeletedMark(const ExtString& s) {
    return s.flags == 0xFF && s.text == nullptr;
}

}  // namespace

bool StrMap::Equal::operator()(const ExtString& a, const ExtString& b) const {
    if (isDeletedMark(a) || isDeletedMark(b)) return isDeletedMark(a) && isDeletedMark(b);
    return sameString(a, b);
}

void StrMap::clear() {
    _cstTotal = 0;
    _strings = {};
    _uses = {};
    _index = Index(32);
    _index.max_load_factor(0.8F);
    _index.min_load_factor(0.32F);
    _index.set_deleted_key(deletedEntry);
    _indexed = false;
}

const wchar_t* StrMap::store(std::wstring_view text) {
    return text.empty() ? nullptr : _pool->copy(text);
}

// A string with phonetic data is equal to nothing, so nobody would find it; one to which runs are added must not be
// found.
void StrMap::remember(std::uint32_t index) {
    const ExtString& entry = _strings[index];
    if ((entry.flags & phoneticText) == 0 && !entry.open) _index[entry] = index;
}

void StrMap::forget(std::uint32_t index) {
    if (!_indexed) return;
    const auto found = _index.find(_strings[index]);
    if (found != _index.end() && found->second == index) _index.erase(found);
}

void StrMap::buildIndex() {
    if (_indexed) return;
    _indexed = true;
    _index.resize(_strings.size());
    // Of equal strings of a file the last one is found; cells refer to each of them as before.
    for (std::uint32_t i = 0; i < _strings.size(); ++i) remember(i);
}

std::uint32_t StrMap::add(std::wstring_view text) {
    buildIndex();
    ExtString entry = plain(text.data(), text.size());
    if (const auto found = _index.find(entry); found != _index.end()) {
        ++_cstTotal;
        return found->second;
    }
    entry.text = store(text);
    const std::uint32_t index = append(entry);
    _index[entry] = index;
    ++_cstTotal;
    return index;
}

std::uint32_t StrMap::append(const ExtString& entry) {
    _strings.push_back(entry);
    return static_cast<std::uint32_t>(_strings.size() - 1);
}

std::uint32_t StrMap::addRich(std::uint32_t index) {
    buildIndex();
    if (index >= _strings.size()) throw vlerror(biff::msg::sstRange2);
    ++_cstTotal;
    if (const auto found = _index.find(_strings[index]); found != _index.end()) return found->second;
    _strings[index].open = false;
    remember(index);
    return index;
}

const ExtString& StrMap::at(std::uint32_t index) const {
    if (index >= _strings.size()) throw vlerror(biff::msg::sstRange2);
    return _strings[index];
}

void StrMap::replace(std::uint32_t index, std::wstring_view text) {
    if (index >= _strings.size()) throw vlerror(biff::msg::sstRange1);
    const ExtString& old = _strings[index];
    const bool isPlain = (old.flags & (richText | phoneticText)) == 0;
    if (isPlain && old.view() == text) return;  // nothing is ever given back to the pool
    replaceEntry(index, plain(store(text), text.size()));
}

void StrMap::replaceEntry(std::uint32_t index, const ExtString& entry) {
    if (index >= _strings.size()) throw vlerror(biff::msg::sstRange1);
    forget(index);
    _strings[index] = entry;
    if (_indexed) remember(index);
}

void StrMap::read(Xls& in, std::uint16_t size) {
    constexpr std::uint16_t headSize = 8;
    constexpr std::size_t minStringSize = 3;
    if (size < headSize) throwBadSize(name);
    _cstTotal = in.readInt32();
    const std::uint32_t cstUnique = in.readInt32();
    auto budget = static_cast<std::uint16_t>(size - headSize);
    _strings.reserve(std::min<std::size_t>(cstUnique, in.remaining() / minStringSize));
    for (std::uint32_t i = 0; i < cstUnique; ++i) _strings.push_back(ExtString::read(in, *_pool, budget));
    in.skip(budget);
    while (in.peekRecordId() == record_id::Continue) in.skip(in.readHeader().size);
}

void StrMap::write(Xls& out) const {
    ContinueWriter writer(out, id);
    writer.put(_cstTotal);
    writer.put(size());
    for (const ExtString& s : _strings) s.write(writer);
    writer.finish();
}

void StrMap::dump() const {
    std::wcout << L"[SST cstTotal=" << _cstTotal << L" cstUnique=" << _strings.size() << L" str=(";
    for (std::size_t i = 0; i < _strings.size(); ++i) std::wcout << (i == 0 ? L"" : L" ") << _strings[i].view();
    std::wcout << L")]\n";
}

}  // namespace vellum
