#include "biff/names/links.h"

#include <algorithm>
#include <utility>

#include "biff/container/cursor.h"
#include "biff/names/name_messages.h"
#include "engine/failure/vlerror.h"

namespace vellum::biff {

using globals::Xti;

namespace {

// A SupBook of add-in functions: a count of 1 and this mark.
constexpr std::uint16_t addInMark = 0x3A01;
constexpr std::uint16_t selfMark = 0x0401;
constexpr std::size_t maxEntries = 0xFFFF;

std::uint16_t wordAt(std::span<const std::byte> body, std::size_t at) {
    return body.size() < at + 2 ? std::uint16_t{0} : loadLe<std::uint16_t>(&body[at]);
}

int externNames(const SupBookBlock& block) {
    int count = 0;
    for (const KeptRecords* part : {&block.head, &block.tail}) {
        part->forEach([&](std::uint16_t id, std::span<const std::byte>) { count += id == record_id::ExternName; });
    }
    return count;
}

constexpr std::size_t pathAt = 5;  // behind the count of sheets and the text's own head

// A path of a blank or a null stands for a link that is not used any more.
bool hasPath(std::span<const std::byte> body) {
    const std::uint16_t characters = wordAt(body, 2);
    if (characters == 0 || body.size() <= pathAt) return false;
    return characters > 1 || std::to_integer<unsigned char>(body[pathAt]) > ' ';
}

// Server and topic instead of a path, and no sheets. Paths of workbooks begin with a 1.
bool isDde(std::span<const std::byte> body) {
    return wordAt(body, 0) == 0 && body[pathAt] != std::byte{1};
}

}  // namespace

const Xti* Links::entry(std::uint16_t index) const {
    for (const SupBookBlock& block : _blocks) {
        if (index < block.xti.size()) return &block.xti[index];
    }
    return nullptr;
}

std::optional<SheetSpan> Links::ownSheets(std::uint16_t index) const {
    const Xti* const found = entry(index);
    if (found == nullptr || !isOwn(*found)) return std::nullopt;
    const auto sheet = [](std::uint16_t itab) { return int{static_cast<std::int16_t>(itab)}; };
    const SheetSpan sheets{sheet(found->itabFirst), sheet(found->itabLast)};
    if (sheets.first < -1 || sheets.last < -1) return std::nullopt;
    return sheets;
}

std::size_t Links::self() const {
    const auto found = std::ranges::find_if(_blocks, &SupBookBlock::isSelf);
    return found == _blocks.end() ? none : static_cast<std::size_t>(found - _blocks.begin());
}

// The longest list: an index behind its end is reached in no other.
std::size_t Links::owner() const {
    std::size_t longest = none;
    for (std::size_t i = 0; i < _blocks.size(); ++i) {
        if (!_blocks[i].hasTable) continue;
        if (longest == none || _blocks[i].xti.size() > _blocks[longest].xti.size()) longest = i;
    }
    return longest;
}

// Readers look for the list behind the last block, so it moves there.
std::size_t Links::addSelf() {
    const std::size_t old = owner();
    SupBookBlock& block = _blocks.emplace_back();
    std::byte body[4];
    storeLe(&body[0], std::uint16_t{1});
    storeLe(&body[2], selfMark);
    block.head.add(record_id::SupBook, body);
    if (old == none) return _blocks.size() - 1;
    block.xti = std::exchange(_blocks[old].xti, {});
    block.hasTable = std::exchange(_blocks[old].hasTable, false);
    return _blocks.size() - 1;
}

std::uint16_t Links::indexOf(SheetSpan sheets) {
    std::size_t own = self();
    if (own == none) own = addSelf();
    std::size_t list = owner();
    if (list == none) list = own;
    SupBookBlock& block = _blocks[list];
    const auto first = static_cast<std::uint16_t>(sheets.first), last = static_cast<std::uint16_t>(sheets.last);
    const auto same = [&](const Xti& entry) {
        return entry.iSupBook == own && entry.itabFirst == first && entry.itabLast == last;
    };
    const auto found = std::ranges::find_if(block.xti, same);
    if (found != block.xti.end()) {
        const auto index = static_cast<std::uint16_t>(found - block.xti.begin());
        if (entry(index) == &*found) return index;
    }
    if (block.xti.size() >= maxEntries) throw vlerror(msg::tooManyReferences);
    block.xti.push_back({static_cast<std::uint16_t>(own), first, last});
    block.hasTable = true;
    return static_cast<std::uint16_t>(block.xti.size() - 1);
}

Links::Mark Links::mark() const {
    const std::size_t list = owner();
    return {_blocks.size(), list, list == none ? 0 : _blocks[list].xti.size()};
}

void Links::takeBack(const Mark& mark) {
    const std::size_t now = owner();
    if (now == none) return;
    if (mark.owner == none) {
        _blocks[now].xti.clear();
        _blocks[now].hasTable = false;
    } else {
        _blocks[now].xti.resize(mark.entries);
        if (now != mark.owner) {
            std::swap(_blocks[mark.owner].xti, _blocks[now].xti);
            std::swap(_blocks[mark.owner].hasTable, _blocks[now].hasTable);
        }
    }
    _blocks.resize(mark.blocks);
}

Links::Outside Links::outside() const {
    Outside found;
    for (const SupBookBlock& block : _blocks) {
        const auto body = block.head.firstBody();
        if (block.isSelf() || body.size() < 4) continue;
        if (body.size() == 4 && wordAt(body, 2) == addInMark) {
            found.addInFunctions += externNames(block);
        } else if (hasPath(body)) {
            ++(isDde(body) ? found.ddeLinks : found.otherBooks);
        }
    }
    return found;
}

void Links::renumber(std::span<const int> newIndex) {
    std::vector<std::uint32_t> removedBefore{0};  // sheets that go, in front of each
    for (const int index : newIndex) removedBefore.push_back(removedBefore.back() + (index < 0 ? 1 : 0));
    const auto renumberEntry = [&](Xti& entry) {
        if (entry.itabFirst >= newIndex.size() || entry.itabLast >= newIndex.size()) return;  // none, or the book
        const auto [low, high] = std::minmax(entry.itabFirst, entry.itabLast);
        if (removedBefore[low] != removedBefore[high + std::size_t{1}]) {
            entry.itabFirst = entry.itabLast = Xti::noSheet;
            return;
        }
        const int first = newIndex[entry.itabFirst], last = newIndex[entry.itabLast];
        entry.itabFirst = static_cast<std::uint16_t>(std::min(first, last));
        entry.itabLast = static_cast<std::uint16_t>(std::max(first, last));
    };
    for (SupBookBlock& block : _blocks) {
        for (Xti& entry : block.xti) {
            if (isOwn(entry)) renumberEntry(entry);
        }
    }
}

}  // namespace vellum::biff
