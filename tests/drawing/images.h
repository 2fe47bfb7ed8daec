// Small images of each format.
#pragma once
#include <string>

#include "tests/biff/book/fixture.h"

namespace vellum::test {

// 32 by 16 pixels each, but for those that say nothing.
inline const Bytes png = hex("89504E470D0A1A0A 0000000D 49484452 00000020 00000010 08 02 00 00 00 12345678");
inline const Bytes jpeg =
    hex("FFD8 FFE0 0010 4A46494600 0101 01 0048 0048 0000 FFC0 0011 08 0010 0020 03 012200 021101 031101 FFD9");
inline const Bytes placeableWmf =
    hex("D7CDC69A 0000 0000 0000 E001 F000 A005 00000000 0000 0100 0900 0003 0C000000 0000 03000000 0000");
inline const Bytes bareWmf = hex("0100 0900 0003 0C000000 0000 03000000 0000");
inline const Bytes dib =
    hex("28000000 20000000 10000000 0100 1800 00000000 00000000 00000000 00000000 00000000 00000000 AABBCC");

inline Bytes joined(Bytes first, const Bytes& second) {
    first.insert(first.end(), second.begin(), second.end());
    return first;
}
inline const Bytes bmp = joined(hex("424D 39000000 00000000 36000000"), dib);

inline Bytes emf() {
    Bytes bytes =
        hex("01000000 6C000000 00000000 00000000 1F000000 0F000000 00000000 00000000 52030000 A9010000 20454D46");
    bytes.resize(108);
    return bytes;
}

}  // namespace vellum::test
