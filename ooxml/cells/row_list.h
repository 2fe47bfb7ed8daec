// The rows of a worksheet, one behind the other.
#pragma once
#include <compare>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <memory>
#include <utility>
#include <vector>

namespace ooxml {

/// Rows in blocks of pointers: one that comes or goes moves the pointers of its block only, so that rows are written
/// in any order at about the same cost. A row stays where it is in memory while others come and go.
template <class Row>
class RowList {
    template <class List, class Value>
    class Place {
    public:
        using difference_type = std::ptrdiff_t;
        using value_type = Row;
        using reference = Value&;
        using pointer = Value*;
        using iterator_category = std::bidirectional_iterator_tag;

        Place() = default;
        Value& operator*() const { return *_list->_blocks[_block][_at]; }
        Value* operator->() const { return &**this; }
        Place& operator++() {
            if (++_at == _list->_blocks[_block].size()) ++_block, _at = 0;
            return *this;
        }
        Place operator++(int) {
            const Place old = *this;
            ++*this;
            return old;
        }
        Place& operator--() {
            if (_at == 0) _at = _list->_blocks[--_block].size();
            --_at;
            return *this;
        }
        Place operator--(int) {
            const Place old = *this;
            --*this;
            return old;
        }
        friend auto operator<=>(const Place&, const Place&) = default;

    private:
        friend class RowList;
        Place(List* list, std::size_t block, std::size_t at) : _list(list), _block(block), _at(at) {}

        List* _list = nullptr;
        std::size_t _block = 0, _at = 0;  // the end: behind the last block
    };

public:
    using value_type = Row;
    using iterator = Place<RowList, Row>;
    using const_iterator = Place<const RowList, const Row>;

    RowList() = default;
    RowList(const RowList& other);
    RowList(RowList&& other) noexcept { *this = std::move(other); }
    RowList& operator=(const RowList& other);
    RowList& operator=(RowList&& other) noexcept;
    ~RowList() = default;

    std::size_t size() const { return _size; }
    bool empty() const { return _size == 0; }
    /// Grows when rows go: who remembers where one lies compares.
    std::size_t removals() const { return _removals; }
    iterator begin() { return {this, 0, 0}; }
    iterator end() { return {this, _blocks.size(), 0}; }
    const_iterator begin() const { return {this, 0, 0}; }
    const_iterator end() const { return {this, _blocks.size(), 0}; }
    Row& back() { return *_blocks.back().back(); }
    const Row& back() const { return *_blocks.back().back(); }
    /// By position; passes over the blocks in front of it.
    Row& operator[](std::size_t at);
    const Row& operator[](std::size_t at) const { return const_cast<RowList&>(*this)[at]; }

    /// The first row that does not lie before `row`, counted from 0. All rows have to be numbered and in order.
    iterator firstFrom(std::uint32_t row);
    const_iterator firstFrom(std::uint32_t row) const;
    /// Whether there is a row at a place that was found before rows came or went, be it another one.
    bool holds(const iterator& at) const {
        return at._list == this && at._block < _blocks.size() && at._at < _blocks[at._block].size();
    }

    /// A row in front of another. Other places no longer hold, as with all that follows.
    iterator insert(iterator at, std::unique_ptr<Row> row);
    iterator insert(iterator at) { return insert(at, std::make_unique<Row>()); }
    void append(std::unique_ptr<Row> row) { insert(end(), std::move(row)); }
    Row& append() { return *insert(end()); }
    /// The row behind those that went.
    iterator erase(iterator first, iterator past);
    void clear();

private:
    using Block = std::vector<std::unique_ptr<Row>>;
    static constexpr std::size_t blockRows = 256;

    iterator roomAt(iterator at);

    std::vector<Block> _blocks;  // none is empty
    std::size_t _size = 0;
    std::size_t _removals = 0;
};

}  // namespace ooxml
