// SPDX-License-Identifier: MIT
#include "PlainTar.h"

#include <algorithm>
#include <cstring>

namespace {

constexpr int blockSize = 512;

QString field(const char *text, int width)
{
    return QString::fromLatin1(text, static_cast<int>(qstrnlen(text, static_cast<uint>(width))));
}

} // namespace

bool PlainTar::load(const QString &fileName, QIODevice::OpenMode mode)
{
    mFile.setFileName(fileName);
    if (!mFile.open(QIODevice::ReadOnly | mode))
        return false;
    qint64 position = 0;
    char block[blockSize];
    while (mFile.seek(position) && mFile.read(block, blockSize) == blockSize) {
        if (block[0] == '\0')
            return true;
        bool ok = false;
        const qint64 size = QByteArray(block + 124, 11).toLongLong(&ok, 8);
        if (!ok || std::memcmp(block + 257, "ustar", 5) != 0)
            return false;
        mMembers.push_back({field(block, 100), field(block + 157, 100), block[156], size, position});
        position += (1 + (size + blockSize - 1) / blockSize) * blockSize;
    }
    return false;
}

int PlainTar::index(const QString &name) const
{
    const auto found = std::find_if(mMembers.begin(), mMembers.end(),
                                    [&name](const Member &member) { return member.name == name; });
    return found != mMembers.end() ? static_cast<int>(found - mMembers.begin()) : -1;
}

QByteArray PlainTar::data(int member)
{
    const Member &wanted = mMembers[static_cast<std::size_t>(member)];
    return mFile.seek(wanted.offset + blockSize) ? mFile.read(wanted.size) : QByteArray();
}
