// SPDX-License-Identifier: MIT
#include "SipHash.h"

#include <QRandomGenerator>
#include <QtEndian>

namespace {

constexpr std::size_t wordSize = sizeof(quint64);

constexpr quint64 rotated(quint64 word, int bits)
{
    return (word << bits) | (word >> (64 - bits));
}

// The four words of the state, and the names that the paper gives to its steps.
struct State
{
    void round()
    {
        v0 += v1;
        v2 += v3;
        v1 = rotated(v1, 13) ^ v0;
        v3 = rotated(v3, 16) ^ v2;
        v0 = rotated(v0, 32);
        v2 += v1;
        v0 += v3;
        v1 = rotated(v1, 17) ^ v2;
        v3 = rotated(v3, 21) ^ v0;
        v2 = rotated(v2, 32);
    }

    void compress(quint64 word)
    {
        v3 ^= word;
        round();
        round();
        v0 ^= word;
    }

    quint64 finalized()
    {
        v2 ^= 0xFF;
        for (int i = 0; i < 4; ++i)
            round();
        return v0 ^ v1 ^ v2 ^ v3;
    }

    quint64 v0;
    quint64 v1;
    quint64 v2;
    quint64 v3;
};

// What is left of the text behind its whole words, and its length in the last byte.
quint64 lastWord(std::string_view text)
{
    quint64 word = quint64(text.size()) << 56;
    const std::string_view rest = text.substr(text.size() / wordSize * wordSize);
    for (std::size_t i = 0; i < rest.size(); ++i)
        word |= quint64(uchar(rest[i])) << (8 * i);
    return word;
}

} // namespace

SipHash::SipHash() : mKey{QRandomGenerator::global()->generate64(), QRandomGenerator::global()->generate64()}
{}

quint64 SipHash::hash(std::string_view text) const
{
    State state = {mKey.low ^ 0x736F6D6570736575, mKey.high ^ 0x646F72616E646F6D,
                   mKey.low ^ 0x6C7967656E657261, mKey.high ^ 0x7465646279746573};
    for (std::size_t i = 0; i + wordSize <= text.size(); i += wordSize)
        state.compress(qFromLittleEndian<quint64>(text.data() + i));
    state.compress(lastWord(text));
    return state.finalized();
}
