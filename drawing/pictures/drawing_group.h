// The drawing group of a book, from and to the workbook stream.
#pragma once
#include <cstdint>
#include <memory>
#include <span>
#include <vector>

#include "biff/container/record_ids.h"
#include "drawing/pictures/dgg_container.h"

namespace vellum {

class Xls;

namespace drawing {

/// Pictures and identifiers that the drawings of all sheets share. Its bytes are held once: the records that were read
/// point into them, and what nobody changed is written as it came, cuts between records included.
class DrawingGroup {
public:
    /// An MsoDrawingGroup record whose header has just been read, and what continues it.
    void take(Xls& in, RecordHeader header);
    /// When all records of a file are in. Throws when they are no drawing group.
    void finishLoad();
    void write(Xls& out) const;
    void clear() { *this = DrawingGroup(); }
    /// Of what is read only as bytes.
    [[nodiscard]] std::size_t unreadBytes() const { return _dgg.absent ? _bytes.size() : _dgg.tail.size(); }

    // Pictures.
    [[nodiscard]] std::size_t pictureTotal() const { return _dgg.pictures.entries.size(); }
    /// `id` below the total.
    [[nodiscard]] const OfficeArtFBSE& picture(std::size_t id) const { return *_dgg.pictures.entries[id]; }
    /// Adds a picture from the bytes of an image file and answers its id. Throws and adds nothing when the format is
    /// not one that a binary workbook holds.
    std::size_t addPicture(std::span<const std::byte> file);
    /// Adds a picture of another book.
    std::size_t adoptPicture(const OfficeArtFBSE& source);
    /// A shape shows the picture, or does so no more; ids out of range have no effect.
    void addUse(std::size_t id);
    void dropUse(std::size_t id);

    // Identifiers.

    struct NewDrawing {
        std::uint16_t dgid;
        std::uint32_t firstSpid;
        bool isFirst;  // of a group that the book made
    };
    /// Makes a group when there is none. `usedDgid` is the largest drawing number on the sheets.
    NewDrawing newDrawing(std::uint32_t usedDgid);
    /// The next shape identifier of a drawing of which `highest` is the largest one in use.
    std::uint32_t newSpid(std::uint32_t dgid, std::uint32_t highest);
    /// Number of shapes of a drawing has changed by so much.
    void shapesChanged(std::int64_t difference);
    /// Start of a further cluster for a drawing.
    std::uint32_t newCluster(std::uint32_t dgid);
    /// An identifier of a drawing's cluster is in use.
    void useSpid(std::uint32_t spid);
    /// Gives a drawing's clusters back.
    void removeDrawing(std::uint32_t dgid, std::uint32_t shapes);
    /// `spid` is in use: nothing above it may be given to another drawing.
    void coverSpid(std::uint32_t spid);

private:
    void makeReady();
    std::size_t addEntry(std::unique_ptr<OfficeArtFBSE> entry);
    OfficeArtFDGGBlock::Cluster& addCluster(std::uint32_t dgid);
    void changed() { _changed = true; }

    OfficeArtDggContainer _dgg;
    std::vector<std::byte> _bytes;       // bodies of the records, put together
    std::vector<RecordHeader> _records;  // how they were cut
    std::size_t _behind = 0;             // where in _bytes the group ends
    bool _changed = false;
    bool _firstIsFree = false;  // the drawing that a new group comes with has not been given out
};

}  // namespace drawing
}  // namespace vellum
