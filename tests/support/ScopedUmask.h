// SPDX-License-Identifier: MIT
#ifndef SCOPEDUMASK_H
#define SCOPEDUMASK_H

#include <sys/stat.h>

// The process's umask while this object lives, then the one before. Not for Windows, which has none.
class ScopedUmask
{
public:
    explicit ScopedUmask(mode_t mask) : mFormer(umask(mask)) {}
    ~ScopedUmask() { umask(mFormer); }

    ScopedUmask(const ScopedUmask &) = delete;
    ScopedUmask &operator=(const ScopedUmask &) = delete;

private:
    mode_t mFormer;
};

#endif // SCOPEDUMASK_H
