#include "engine/facts/digest.h"

#include <gtest/gtest.h>

#include <string>

namespace vellum {
namespace {

// Of the publication of the algorithm, and around the ends of its blocks (by another program).
TEST(Digest, Md5OfPublishedTexts) {
    const struct {
        std::string text;
        const char* digest;
    } cases[] = {
        {"", "d41d8cd98f00b204e9800998ecf8427e"},
        {"a", "0cc175b9c0f1b6a831c399e269772661"},
        {"message digest", "f96b697d7cb7938d525a2f31aaf161d0"},
        {"12345678901234567890123456789012345678901234567890123456789012345678901234567890",
         "57edf4a22be3c955ac49da2e2107b67a"},
        {std::string(55, 'x'), "04364420e25c512fd958a70738aa8f72"},
        {std::string(56, 'x'), "668a72d5ba17f08e62dabcafad6db14b"},
        {std::string(64, 'x'), "c1bb4f81d892b2d57947682aeb252456"},
    };
    for (const auto& c : cases) {
        std::string hex;
        for (const int byte : md5(std::as_bytes(std::span(c.text)))) {
            hex += "0123456789abcdef"[byte >> 4];
            hex += "0123456789abcdef"[byte & 15];
        }
        EXPECT_EQ(hex, c.digest) << c.text;
    }
}

}  // namespace
}  // namespace vellum
