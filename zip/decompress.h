// The three ways in which an entry's bytes may be stored.
#pragma once
#include <cstddef>
#include <cstdint>
#include <span>

#include "zip/central_directory.h"

namespace zip {

class ZipSource;

/// Takes the bytes of an entry as they come.
class ByteSink {
public:
    /// Forgets what has come: the entry is read again.
    virtual void restart() = 0;
    /// Room for at least one byte, and for as many as can be had up to `wanted`.
    virtual std::span<unsigned char> room(std::size_t wanted) = 0;
    /// The first `count` bytes of the room are filled.
    virtual void filled(std::size_t count) = 0;

protected:
    ~ByteSink() = default;
};

/// Who inflates: the fastest library that is there, or zlib, whose judgement of damaged streams counts.
enum class Inflater { fast, zlib };

/// Feeds all of an entry's data to the sink. Throws ZipError when they are damaged or do not come to the recorded size;
/// with the fast inflater the text may be another one.
void decompressEntry(const ZipSource& source, const ZipEntry& entry, ByteSink& sink, Inflater inflater);

}  // namespace zip
