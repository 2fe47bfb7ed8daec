// One stretch of a part, deflated so that it joins the next.
#pragma once
#include <cstddef>
#include <memory>
#include <span>

namespace zip {

/// How many bytes before a stretch its codes may refer to.
constexpr std::size_t deflateWindow = 32768;

/// Deflates stretches independently of each other. All but the last of a part end with an empty stored block at a
/// byte's border and without the mark of the stream's end, so that the results, one behind the other, are one stream.
/// The result depends on the bytes alone.
class BlockDeflater {
public:
    virtual ~BlockDeflater() = default;

    /// Room that a stretch of the greatest size may need.
    virtual std::size_t bound() = 0;

    /// `before` is what stands in front of the stretch, as much of it as there is up to the window; some ways make no
    /// use of it. Returns the size of the result, 0 on failure.
    virtual std::size_t deflate(std::span<const unsigned char> before, std::span<const unsigned char> stretch,
                                bool last, std::span<unsigned char> result) noexcept = 0;
};

/// The fastest that is there, for stretches of up to `greatest` bytes. Throws std::bad_alloc.
std::unique_ptr<BlockDeflater> makeBlockDeflater(std::size_t greatest);

/// By zlib: default level, raw, memory level 8. Always there.
std::unique_ptr<BlockDeflater> makeZlibBlockDeflater(std::size_t greatest);

}  // namespace zip
