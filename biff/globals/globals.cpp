#include "biff/globals/globals.h"

#include <algorithm>
#include <numeric>

#include "biff/container/cursor.h"
#include "biff/names/biff5_names.h"
#include "biff/records/book_messages.h"
#include "engine/api/enums.h"
#include "engine/failure/vlerror.h"

namespace vellum {

void Globals::finishLoad() {
    if (!hasRrTabId) {
        rrTabId.resize(boundSheets.size());
        std::iota(rrTabId.begin(), rrTabId.end(), std::uint16_t{1});
    }
    others.shrink();
    if (isBiff5()) biff::convertBiff5Names(names, boundSheets.size());
    if (isBiff5()) drawingGroup.clear();
    drawingGroup.finishLoad();
}

const KeptRecords& Globals::slot(std::uint16_t id) const {
    const auto at = std::ranges::find(slotIds, id) - std::begin(slotIds);
    return slots.at(static_cast<std::size_t>(at));
}

const NumFormat* Globals::findNumFormat(std::uint16_t ifmt) const {
    const std::uint32_t at = ifmt < _formatAt.size() ? _formatAt[ifmt] : 0;
    return at == 0 ? nullptr : &numFormats[at - 1];
}

// Asked for with every number cell, so there is a table.
void Globals::addNumFormat(const NumFormat& format) {
    numFormats.push_back(format);
    if (format.ifmt >= _formatAt.size()) _formatAt.resize(format.ifmt + std::size_t{1});
    if (_formatAt[format.ifmt] == 0) _formatAt[format.ifmt] = static_cast<std::uint32_t>(numFormats.size());
}

std::uint16_t Globals::numFormatId(std::wstring_view text, StringPool& pool) {
    constexpr std::uint16_t lastCustom = 392;
    constexpr std::size_t longest = (maxRecordBody - 5) / 2;  // behind id, count and flags, two bytes a character
    if (text.size() > longest) throw vlerror(biff::msg::stringTooLong);
    for (const NumFormat& known : numFormats) {
        if (known.text.view() == text) return known.ifmt;
    }
    for (std::uint16_t ifmt = firstCustomFormat; ifmt <= lastCustom; ++ifmt) {
        if (findNumFormat(ifmt) != nullptr) continue;
        NumFormat added;
        added.ifmt = ifmt;
        added.text.set(std::wstring(text).c_str(), pool, false);
        addNumFormat(added);
        return ifmt;
    }
    throw vlerror(biff::msg::tooManyCustomFormats);
}

std::size_t Globals::keptBytes() const {
    std::size_t bytes = drawingGroup.unreadBytes();
    for (const KeptRecords* one : {&xfExts, &headerPictures, &bookExt, &extSst, &others}) {
        bytes += one->wire().size();
    }
    for (const KeptRecords& one : slots) bytes += one.wire().size();
    return bytes + names.keptBytes();
}

}  // namespace vellum
