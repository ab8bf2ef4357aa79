// SPDX-License-Identifier: MIT
#ifndef SIPHASH_H
#define SIPHASH_H

#include <QtGlobal>

#include <string_view>

// SipHash-2-4 (Aumasson and Bernstein, "SipHash: a fast short-input PRF", 2012).
// Nobody who does not know the key can make texts that share a hash, which a table of names out of foreign
// files relies on. With qHash() there may be such texts whatever its seed is.
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

    quint64 hash(std::string_view text) const;

private:
    Key mKey;
};

#endif // SIPHASH_H
