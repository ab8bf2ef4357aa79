// SPDX-License-Identifier: MIT
#ifndef SIPHASH_H
#define SIPHASH_H

#include <QtGlobal>

#include <cstddef>
#include <string_view>

// SipHash-2-4 (Aumasson and Bernstein, "SipHash: a fast short-input PRF", 2012) as the hash of a standard
// container. Nobody who does not know the key can make texts that share a hash, which is what one needs for
// names out of foreign files; qHash() gives such texts whatever its seed is.
class SipHash
{
public:
    struct Key
    {
        quint64 low;
        quint64 high;
    };

    // A key that is drawn anew each time.
    SipHash();
    explicit SipHash(const Key &key) : mKey(key) {}

    std::size_t operator()(std::string_view text) const { return std::size_t(hash(text)); }
    quint64 hash(std::string_view text) const;

private:
    Key mKey;
};

#endif // SIPHASH_H
