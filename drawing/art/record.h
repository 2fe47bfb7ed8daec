// The root of the drawing records: one class for each record of the published family.
#pragma once
#include <cstddef>
#include <cstdint>
#include <memory>

#include "drawing/art/art_stream.h"

namespace vellum {

/// The 8 bytes before every body: 4 bits of version, 12 of instance, type, length of the body.
struct ArtHeader {
    static constexpr std::size_t wireSize = 8;
    static constexpr std::uint8_t containerVer = 15;  // the body is a run of records

    std::uint8_t recVer = 0;
    std::uint16_t recInstance = 0;
    std::uint16_t recType = 0;
    std::uint32_t recLen = 0;

    static ArtHeader read(std::span<const std::byte> bytes);
    void write(drawing::ArtOutput& out) const;
};

/// A drawing record, absent until it was read or made. A container tries its members in their order; each takes the
/// next header or leaves it for the next member, so a record that a file does not have is no error.
class OfficeArtRecordBase {
public:
    virtual ~OfficeArtRecordBase() = default;
    [[nodiscard]] virtual std::unique_ptr<OfficeArtRecordBase> clone() const = 0;
    /// Takes the record when it comes next, and answers its bytes with the header, else 0 with nothing taken.
    /// `remaining` is what the container around it still holds.
    virtual std::size_t read(drawing::ArtInput& in, std::size_t& remaining);
    /// Answers the bytes written, 0 when absent. The length is counted anew when `sizeDirty`.
    virtual std::size_t write(drawing::ArtOutput& out) const;
    /// With the header; 0 when absent.
    [[nodiscard]] virtual std::size_t size() const;
    /// Pixels; 0 except in pictures.
    [[nodiscard]] virtual std::uint32_t pictureWidth() const { return 0; }
    [[nodiscard]] virtual std::uint32_t pictureHeight() const { return 0; }
    [[nodiscard]] virtual std::uint32_t pictureDpiX() const { return defaultDpi; }
    [[nodiscard]] virtual std::uint32_t pictureDpiY() const { return defaultDpi; }
    /// The header that was read is one of this class.
    [[nodiscard]] virtual bool headerMatches() const = 0;

    static constexpr std::uint32_t defaultDpi = 96;

    bool absent = true;
    bool sizeDirty = false;
    ArtHeader header;

    /// Makes the record one of the book's own.
    void make() { absent = false, sizeDirty = true; }

protected:
    OfficeArtRecordBase() = default;
    OfficeArtRecordBase(const OfficeArtRecordBase&) = default;
    OfficeArtRecordBase& operator=(const OfficeArtRecordBase&) = default;

    /// The body, of which `size` bytes are there.
    virtual void readBody(drawing::ArtInput& in, std::size_t size) = 0;
    virtual void writeBody(drawing::ArtOutput& out) const = 0;
    [[nodiscard]] virtual std::size_t bodySize() const = 0;
    /// The failure when the body is longer than what is left of its container, or with `pastStream` of all bytes.
    /// Null leaves the record to its container's rest.
    [[nodiscard]] virtual const char* overrun(bool /*pastStream*/) const { return nullptr; }
    /// An overlong record is read as far as it goes, so that a failure in it is told by its own name.
    [[nodiscard]] virtual bool readsAsFarAsItGoes() const { return false; }
};

/// What `headerMatches` compares.
enum ArtCheck : unsigned { checkVer = 1, checkType = 2, checkInstance = 4, checkLen = 8 };

/// A record of one kind: which fields of its header are fixed, and how.
template <unsigned Mask, unsigned RecVer, unsigned RecInstance, unsigned RecType, unsigned RecLen>
class OfficeArtRecord : public OfficeArtRecordBase {
public:
    static constexpr unsigned mask = Mask;
    static constexpr ArtHeader kind{RecVer, RecInstance, RecType, RecLen};

    OfficeArtRecord() { header = kind; }
    [[nodiscard]] bool headerMatches() const override {
        return ((Mask & checkVer) == 0 || header.recVer == RecVer) &&
               ((Mask & checkType) == 0 || header.recType == RecType) &&
               ((Mask & checkInstance) == 0 || header.recInstance == RecInstance) &&
               ((Mask & checkLen) == 0 || header.recLen == RecLen);
    }
};

}  // namespace vellum
