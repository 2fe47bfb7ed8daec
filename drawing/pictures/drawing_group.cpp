#include "drawing/pictures/drawing_group.h"

#include <algorithm>
#include <utility>

#include "biff/container/xls.h"
#include "biff/records/continue_writer.h"
#include "drawing/art/messages.h"
#include "drawing/pictures/new_picture.h"
#include "engine/failure/vlerror.h"

namespace vellum::drawing {
namespace {

constexpr std::uint32_t clusterSize = OfficeArtFDGGBlock::clusterSize;
constexpr std::uint32_t maxDgid = 0xFFE;
constexpr std::uint32_t spidLimit = 0x03FFD7FF;  // of spidMax
// A new group comes with one drawing of the group shape and two more.
constexpr std::uint32_t firstDgid = 1, firstShapes = 3;

class RecordOutput final : public ArtOutput {
public:
    explicit RecordOutput(Xls& xls) : _record(xls, record_id::MsoDrawingGroup) {}
    void write(std::span<const std::byte> bytes) override { _record.write(bytes); }
    void finish() { _record.finish(); }

private:
    ContinueWriter _record;
};

}  // namespace

void DrawingGroup::take(Xls& in, RecordHeader header) {
    while (true) {
        const auto body = in.take(header.size);
        _bytes.insert(_bytes.end(), body.begin(), body.end());
        _records.push_back(header);
        if (in.peekRecordId() != record_id::Continue) return;
        header = in.readHeader();
    }
}

void DrawingGroup::finishLoad() {
    if (_records.empty()) return;
    ArtInput in(_bytes);
    std::size_t remaining = _bytes.size();
    if (_dgg.read(in, remaining) == 0) throw vlerror(msg::dggContainer);
    _behind = in.position();
}

void DrawingGroup::write(Xls& out) const {
    if (_changed) {
        RecordOutput record(out);
        _dgg.write(record);
        record.write(std::span(_bytes).subspan(_behind));
        record.finish();
        return;
    }
    auto rest = std::span(_bytes);
    for (const RecordHeader& header : _records) {
        out.writeRecord(header.id, rest.first(header.size));
        rest = rest.subspan(header.size);
    }
}

void DrawingGroup::makeReady() {
    _changed = _dgg.sizeDirty = true;
    if (_dgg.fdgg.absent) _dgg.fdgg.make();
    if (!_dgg.absent) return;
    _dgg.make();
    _dgg.fdgg.cspSaved = firstShapes;
    _dgg.fdgg.cdgSaved = 1;
    addCluster(firstDgid).cspidCur = firstShapes;
    _dgg.fdgg.spidMax = clusterSize + firstShapes;
    _firstIsFree = true;
    for (const std::uint16_t id : {property::textBooleans, property::fillColor}) _dgg.fopt.table.add(id, 0x8000041);
    _dgg.fopt.table.add(property::lineColor, 0x8000040);
    _dgg.fopt.makeTable();
    static_cast<MenuColors&>(_dgg.splitMenuColors) = {0x0800000D, 0x0800000C, 0x08000017, 0x100000F7};
    _dgg.splitMenuColors.make();
}

OfficeArtFDGGBlock::Cluster& DrawingGroup::addCluster(std::uint32_t dgid) {
    auto& fdgg = _dgg.fdgg;
    if ((fdgg.clusters.size() + 2) * clusterSize >= spidLimit) throw vlerror(msg::tooManyDrawings);
    fdgg.sizeDirty = true;
    fdgg.clusters.push_back({dgid, 0});
    return fdgg.clusters.back();
}

DrawingGroup::NewDrawing DrawingGroup::newDrawing(std::uint32_t usedDgid) {
    makeReady();
    auto& fdgg = _dgg.fdgg;
    if (std::exchange(_firstIsFree, false) && usedDgid == 0) return {firstDgid, clusterSize, true};
    for (const auto& cluster : fdgg.clusters) usedDgid = std::max(usedDgid, cluster.dgid);
    if (usedDgid >= maxDgid) throw vlerror(msg::tooManyDrawings);
    addCluster(usedDgid + 1);
    ++fdgg.cdgSaved;
    return {static_cast<std::uint16_t>(usedDgid + 1), static_cast<std::uint32_t>(fdgg.clusters.size()) * clusterSize,
            false};
}

// Identifiers of one cluster are used up before the next is begun; what was deleted at its end is given again.
std::uint32_t DrawingGroup::newSpid(std::uint32_t dgid, std::uint32_t highest) {
    makeReady();
    auto& clusters = _dgg.fdgg.clusters;
    auto last = std::find_if(clusters.rbegin(), clusters.rend(), [dgid](const auto& c) { return c.dgid == dgid; });
    const auto firstOf = [&clusters](auto cluster) {
        return static_cast<std::uint32_t>(clusters.rend() - cluster) * clusterSize;
    };
    std::uint32_t used = clusterSize;
    if (last != clusters.rend()) used = highest < firstOf(last) ? 0 : highest - firstOf(last) + 1;
    if (used >= clusterSize) {
        addCluster(dgid);
        last = clusters.rbegin();
        used = 0;
    }
    last->cspidCur = std::max(last->cspidCur, used + 1);
    const std::uint32_t spid = firstOf(last) + used;
    _dgg.fdgg.spidMax = std::max(_dgg.fdgg.spidMax, spid + 1);
    return spid;
}

std::uint32_t DrawingGroup::newCluster(std::uint32_t dgid) {
    makeReady();
    addCluster(dgid);
    return static_cast<std::uint32_t>(_dgg.fdgg.clusters.size()) * clusterSize;
}

void DrawingGroup::useSpid(std::uint32_t spid) {
    auto& cluster = _dgg.fdgg.clusters[spid / clusterSize - 1];
    cluster.cspidCur = std::max(cluster.cspidCur, spid % clusterSize + 1);
    _dgg.fdgg.spidMax = std::max(_dgg.fdgg.spidMax, spid + 1);
}

void DrawingGroup::removeDrawing(std::uint32_t dgid, std::uint32_t shapes) {
    if (_dgg.absent || dgid == 0) return;
    shapesChanged(-std::int64_t{shapes});
    for (auto& cluster : _dgg.fdgg.clusters) {
        if (cluster.dgid == dgid) cluster.dgid = 0;
    }
    if (_dgg.fdgg.cdgSaved > 0) --_dgg.fdgg.cdgSaved;
}

void DrawingGroup::coverSpid(std::uint32_t spid) {
    makeReady();
    if (spid >= spidLimit) throw vlerror(msg::tooManyDrawings);
    while (_dgg.fdgg.clusters.size() < spid / clusterSize) addCluster(0);
}

void DrawingGroup::shapesChanged(std::int64_t difference) {
    makeReady();
    auto& saved = _dgg.fdgg.cspSaved;
    saved = static_cast<std::uint32_t>(std::max<std::int64_t>(std::int64_t{saved} + difference, 0));
}

std::size_t DrawingGroup::addPicture(std::span<const std::byte> file) {
    return addEntry(newPicture(file));
}

std::size_t DrawingGroup::adoptPicture(const OfficeArtFBSE& source) {
    auto copy = std::make_unique<OfficeArtFBSE>(source);
    copy->entry.cRef = 0;
    if (Blip* const blip = copy->picture())
        blip->content.own.assign(blip->content.bytes().begin(), blip->content.bytes().end());
    return addEntry(std::move(copy));
}

std::size_t DrawingGroup::addEntry(std::unique_ptr<OfficeArtFBSE> entry) {
    constexpr std::size_t mostCounted = 0xFFF;  // the list's header has 12 bits; readers go by its length
    auto& pictures = _dgg.pictures;
    makeReady();
    pictures.make();
    pictures.add(std::move(entry));
    pictures.header.recInstance = static_cast<std::uint16_t>(std::min(pictures.records.size(), mostCounted));
    return pictures.entries.size() - 1;
}

void DrawingGroup::addUse(std::size_t id) {
    if (id >= pictureTotal()) return;
    makeReady();
    ++_dgg.pictures.entries[id]->entry.cRef;
}

void DrawingGroup::dropUse(std::size_t id) {
    if (id >= pictureTotal()) return;
    makeReady();
    auto& uses = _dgg.pictures.entries[id]->entry.cRef;
    if (uses > 0) --uses;
}

}  // namespace vellum::drawing
