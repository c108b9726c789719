// SPDX-License-Identifier: Apache-2.0
#include "automation/typed/type_id.h"

#include <array>
#include <bit>
#include <cstdint>
#include <string>

namespace fixtop {

namespace {

// ---- SHA-1 (FIPS 180-4)

constexpr std::size_t kBlock = 64;
using State = std::array<std::uint32_t, 5>;

std::uint32_t WordAt(const char* bytes) {
    std::uint32_t word = 0;
    for (int i = 0; i < 4; ++i) word = word << 8 | static_cast<unsigned char>(bytes[i]);
    return word;
}

// What a round mixes in, of the quarter in which it is.
std::uint32_t Mixed(int quarter, std::uint32_t b, std::uint32_t c, std::uint32_t d) {
    switch (quarter) {
        case 0:
            return ((b & c) | (~b & d)) + 0x5a827999;
        case 1:
            return (b ^ c ^ d) + 0x6ed9eba1;
        case 2:
            return ((b & c) | (b & d) | (c & d)) + 0x8f1bbcdc;
        default:
            return (b ^ c ^ d) + 0xca62c1d6;
    }
}

void TakeBlock(State& state, const char* block) {
    std::array<std::uint32_t, 80> words;
    for (std::size_t i = 0; i < 16; ++i) words[i] = WordAt(block + 4 * i);
    for (std::size_t i = 16; i < words.size(); ++i) {
        words[i] = std::rotl(words[i - 3] ^ words[i - 8] ^ words[i - 14] ^ words[i - 16], 1);
    }
    auto [a, b, c, d, e] = state;
    for (std::size_t i = 0; i < words.size(); ++i) {
        const std::uint32_t next =
            std::rotl(a, 5) + Mixed(static_cast<int>(i / 20), b, c, d) + e + words[i];
        e = d;
        d = c;
        c = std::rotl(b, 30);
        b = a;
        a = next;
    }
    state = {state[0] + a, state[1] + b, state[2] + c, state[3] + d, state[4] + e};
}

void AppendNumber(std::string& bytes, std::uint64_t number, int size) {
    for (int shift = 8 * size - 8; shift >= 0; shift -= 8) {
        bytes += static_cast<char>(number >> shift & 0xff);
    }
}

State Sha1(std::string bytes) {
    const std::uint64_t bits = 8 * static_cast<std::uint64_t>(bytes.size());
    bytes += static_cast<char>(0x80);
    while (bytes.size() % kBlock != kBlock - sizeof bits) bytes += '\0';
    AppendNumber(bytes, bits, sizeof bits);
    State state = {0x67452301, 0xefcdab89, 0x98badcfe, 0x10325476, 0xc3d2e1f0};
    for (std::size_t at = 0; at < bytes.size(); at += kBlock) TakeBlock(state, bytes.data() + at);
    return state;
}

std::string BytesOf(const InterfaceId& id) {
    std::string bytes;
    AppendNumber(bytes, id.data1, 4);
    AppendNumber(bytes, id.data2, 2);
    AppendNumber(bytes, id.data3, 2);
    for (const std::uint8_t each : id.data4) bytes += static_cast<char>(each);
    return bytes;
}

}  // namespace

InterfaceId IdOfType(std::string_view name, int major, int minor) {
    std::string text = BytesOf(kTypeNamespace);
    text.append(name);
    text += ' ' + std::to_string(major) + '.' + std::to_string(minor);
    const State hash = Sha1(std::move(text));
    InterfaceId id{};
    id.data1 = hash[0];
    id.data2 = static_cast<std::uint16_t>(hash[1] >> 16);
    // Version 5.
    id.data3 = static_cast<std::uint16_t>((hash[1] & 0x0fff) | 0x5000);
    for (int i = 0; i < 8; ++i) {
        id.data4[i] = static_cast<std::uint8_t>(hash[i < 4 ? 2 : 3] >> (24 - i % 4 * 8));
    }
    // The variant of the RFC.
    id.data4[0] = static_cast<std::uint8_t>((id.data4[0] & 0x3f) | 0x80);
    return id;
}

}  // namespace fixtop
