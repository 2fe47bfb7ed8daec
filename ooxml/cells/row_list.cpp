#include "ooxml/cells/row_list.h"

#include <algorithm>
#include <utility>

#include "ooxml/cells/row.h"

namespace ooxml {

template <class Row>
RowList<Row>::RowList(const RowList& other) : _size(other._size) {
    _blocks.reserve(other._blocks.size());
    for (const Block& block : other._blocks) {
        Block& copy = _blocks.emplace_back();
        copy.reserve(block.size());
        for (const auto& row : block) copy.push_back(std::make_unique<Row>(*row));
    }
}

template <class Row>
RowList<Row>& RowList<Row>::operator=(const RowList& other) {
    if (this != &other) *this = RowList(other);
    return *this;
}

template <class Row>
RowList<Row>& RowList<Row>::operator=(RowList&& other) noexcept {
    _blocks = std::move(other._blocks);
    _size = other._size;
    ++_removals;
    other.clear();
    return *this;
}

template <class Row>
Row& RowList<Row>::operator[](std::size_t at) {
    auto block = _blocks.begin();
    for (; at >= block->size(); ++block) at -= block->size();
    return *(*block)[at];
}

template <class Row>
auto RowList<Row>::firstFrom(std::uint32_t row) -> iterator {
    const auto before = [](const std::unique_ptr<Row>& element, std::uint32_t r) { return element->r() < r; };
    const auto block = std::lower_bound(_blocks.begin(), _blocks.end(), row + 1,
                                        [&](const Block& rows, std::uint32_t r) { return before(rows.back(), r); });
    if (block == _blocks.end()) return end();
    const auto at = std::lower_bound(block->begin(), block->end(), row + 1, before);
    return {this, static_cast<std::size_t>(block - _blocks.begin()), static_cast<std::size_t>(at - block->begin())};
}

template <class Row>
auto RowList<Row>::firstFrom(std::uint32_t row) const -> const_iterator {
    const iterator found = const_cast<RowList&>(*this).firstFrom(row);
    return {this, found._block, found._at};
}

/// The same place in a block that has room. Behind the last row of a full block, and in front of its first, a new block
/// begins, so that rows that come in order, from either side, leave full blocks; elsewhere a full block parts in two.
template <class Row>
auto RowList<Row>::roomAt(iterator at) -> iterator {
    if (at._at == 0 && at._block != 0) at = {this, at._block - 1, _blocks[at._block - 1].size()};
    const bool isNone = at._block == _blocks.size();
    if (!isNone && _blocks[at._block].size() < blockRows) return at;
    const std::size_t made = at._block + (at._at == 0 ? 0 : 1);
    Block fresh;
    fresh.reserve(isNone ? 1 : blockRows);
    Block& added = *_blocks.insert(_blocks.begin() + static_cast<std::ptrdiff_t>(made), std::move(fresh));
    if (isNone || at._at == 0 || at._at == blockRows) return {this, made, 0};
    Block& full = _blocks[at._block];
    const auto half = full.begin() + blockRows / 2;
    added.assign(std::make_move_iterator(half), std::make_move_iterator(full.end()));
    full.erase(half, full.end());
    return at._at <= blockRows / 2 ? at : iterator{this, made, at._at - blockRows / 2};
}

template <class Row>
auto RowList<Row>::insert(iterator at, std::unique_ptr<Row> row) -> iterator {
    at = roomAt(at);
    Block& block = _blocks[at._block];
    block.insert(block.begin() + static_cast<std::ptrdiff_t>(at._at), std::move(row));
    ++_size;
    return at;
}

template <class Row>
auto RowList<Row>::erase(iterator first, iterator past) -> iterator {
    const auto placeIn = [](Block& block, std::size_t at) { return block.begin() + static_cast<std::ptrdiff_t>(at); };
    const auto drop = [&](std::size_t block, std::size_t from, std::size_t to) {
        _blocks[block].erase(placeIn(_blocks[block], from), placeIn(_blocks[block], to));
        _size -= to - from;
    };
    if (first == past) return first;
    ++_removals;
    if (first._block == past._block) {
        drop(first._block, first._at, past._at);
    } else {
        if (past._at != 0) drop(past._block, 0, past._at);
        drop(first._block, first._at, _blocks[first._block].size());
        for (std::size_t block = first._block + 1; block < past._block; ++block) _size -= _blocks[block].size();
        const auto blockAt = [&](std::size_t at) { return _blocks.begin() + static_cast<std::ptrdiff_t>(at); };
        _blocks.erase(blockAt(first._block + 1), blockAt(past._block));
    }
    if (_blocks[first._block].empty()) _blocks.erase(_blocks.begin() + static_cast<std::ptrdiff_t>(first._block));
    if (first._block < _blocks.size() && first._at == _blocks[first._block].size()) return {this, first._block + 1, 0};
    return first;
}

template <class Row>
void RowList<Row>::clear() {
    _blocks.clear();
    _size = 0;
    ++_removals;
}

}  // namespace ooxml
