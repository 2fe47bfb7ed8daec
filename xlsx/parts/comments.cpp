#include "xlsx/parts/comments.h"

#include <algorithm>
#include <tuple>

#include "engine/facts/cell_address.h"

namespace vellum {
namespace {

auto cellOf(std::uint32_t row, std::uint32_t col) {
    return std::tuple(row, col);
}

template <class Text>
void appendText(std::wstring& joined, const Text* text) {
    if (text) joined += text->text();
}

}  // namespace

template <class Tag>
auto Comments<Tag>::entries() -> const std::vector<Entry>& {
    if (_known) return _entries;
    if (const auto* const list = std::as_const(this->_root).find_commentList()) {
        for (std::size_t i = 0; i < list->comment().size(); ++i) {
            const auto& ref = list->comment()[i].ref();
            const auto address = readCellAddress(std::wstring(ref.begin(), ref.end()));
            if (address) _entries.push_back({address->row, address->col, i});
        }
    }
    const auto less = [](const Entry& a, const Entry& b) { return cellOf(a.row, a.col) < cellOf(b.row, b.col); };
    const auto same = [](const Entry& a, const Entry& b) { return cellOf(a.row, a.col) == cellOf(b.row, b.col); };
    std::stable_sort(_entries.begin(), _entries.end(), less);
    _entries.erase(std::unique(_entries.begin(), _entries.end(), same), _entries.end());
    _known = true;
    return _entries;
}

template <class Tag>
auto Comments<Tag>::find(int row, int col) -> const Entry* {
    if (row < 0 || col < 0) return nullptr;
    const auto wanted = cellOf(static_cast<std::uint32_t>(row), static_cast<std::uint32_t>(col));
    const auto& all = entries();
    const auto at = std::lower_bound(all.begin(), all.end(), wanted, [](const Entry& entry, const auto& cell) {
        return cellOf(entry.row, entry.col) < cell;
    });
    return at != all.end() && cellOf(at->row, at->col) == wanted ? &*at : nullptr;
}

template <class Tag>
std::wstring Comments<Tag>::text(const Entry& entry) const {
    std::wstring joined;
    const auto* const text = this->_root.commentList().comment()[entry.place].find_text();
    if (!text) return joined;
    appendText(joined, text->find_t());
    for (const auto& run : text->r()) appendText(joined, run.find_t());
    return joined;
}

template <class Tag>
std::optional<std::wstring> Comments<Tag>::author(const Entry& entry) const {
    const auto* const authors = this->_root.find_authors();
    const std::size_t id = this->_root.commentList().comment()[entry.place].authorId();
    if (!authors || id >= authors->author().size()) return std::nullopt;
    return authors->author()[id].text();
}

template class Comments<ooxml::excelNormal_tag>;
template class Comments<ooxml::excelStrict_tag>;

}  // namespace vellum
