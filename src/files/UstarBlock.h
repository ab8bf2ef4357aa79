// SPDX-License-Identifier: MIT
#ifndef USTARBLOCK_H
#define USTARBLOCK_H

#include <QtGlobal>

#include <cstddef>
#include <optional>
#include <string_view>

// The fields of a header block, as POSIX ustar lays them out (IEEE Std 1003.1, pax, "ustar Interchange
// Format"), and the bytes that fill the block.
struct UstarFields
{
    char name[100];
    char mode[8];
    char uid[8];
    char gid[8];
    char size[12];
    char mtime[12];
    char chksum[8];
    char typeflag;
    char linkname[100];
    char magic[6];
    char version[2];
    char uname[32];
    char gname[32];
    char devmajor[8];
    char devminor[8];
    char prefix[155];
    char padding[12];
};

static_assert(sizeof(UstarFields) == 512, "a header is one block of the archive");

// One block of the archive, read as a header. The bytes belong to somebody else.
class UstarBlock
{
public:
    static constexpr int byteCount = sizeof(UstarFields);

    // byteCount bytes
    explicit UstarBlock(const char *bytes) : mBytes(bytes) {}

    // Whether all bytes are zero, which marks the end of the archive.
    bool isZero() const;

    // Whether the magic begins with "ustar", as that of the GNU form does.
    bool isUstar() const;

    std::string_view name() const { return text(offsetof(UstarFields, name)); }
    std::string_view linkName() const { return text(offsetof(UstarFields, linkname)); }
    char typeFlag() const { return mBytes[offsetof(UstarFields, typeflag)]; }

    // The length of the member's data, 0 or more; nothing when the text is no such octal number.
    std::optional<qint64> size() const;

private:
    // From this byte to the first NUL, or to the end of the block: no width of a field is looked at.
    std::string_view text(std::size_t offset) const;

    const char *mBytes;
};

#endif // USTARBLOCK_H
