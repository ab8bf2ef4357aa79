// SPDX-License-Identifier: MIT
#include <CTar.h>

#include "PositionedRead.h"
#include "UstarBlock.h"
#include "UstarIndex.h"
#include "UstarWindow.h"

#include <QCoreApplication>

#include <algorithm>
#include <array>
#include <limits>

namespace {

constexpr qint64 lastPosition = std::numeric_limits<qint64>::max();
constexpr qint64 blockSize = UstarBlock::byteCount;

// The most that a QByteArray allocates, less its own header and the terminating zero.
constexpr qint64 maxByteCount = std::numeric_limits<int>::max() - qint64(sizeof(QByteArrayData)) - 1;

// Never beyond the last position: what would lie there is not read, and a scan cannot start anew.
qint64 advanced(qint64 position, qint64 byteCount)
{
    return position > lastPosition - byteCount ? lastPosition : position + byteCount;
}

// The position behind a member: header and data take whole blocks.
qint64 positionBehind(qint64 header, qint64 size)
{
    const qint64 lastBlock = size % blockSize;
    const qint64 padding = lastBlock == 0 ? 0 : blockSize - lastBlock;
    return advanced(advanced(advanced(header, blockSize), size), padding);
}

} // namespace

CTar::CTar() : mMembers(std::make_unique<UstarIndex>()) {}

CTar::~CTar() = default;

bool CTar::loadFile(const QString &fileName)
{
    mFile.close();
    mNames.clear();
    mInfos.clear();
    mMembers = std::make_unique<UstarIndex>();
    mKnownSize = 0;
    if (fileName.isEmpty()) {
        // What QFile says; but it would log it, too.
        mError = QStringLiteral("No file name specified");
        return false;
    }
    mFile.setFileName(fileName);
    // Unbuffered: a buffer would be filled with the data behind each header, which is passed over.
    if (!mFile.open(QIODevice::ReadOnly | QIODevice::Unbuffered)) {
        mError = mFile.errorString();
        return false;
    }
    return readFileHeaders();
}

bool CTar::readFileHeaders()
{
    UstarWindow window;
    qint64 position = 0;
    bool end = false;
    bool ok = true;
    while (ok && !end) {
        ok = (window.holdsBlock(position) || moveTo(position, window))
             && takeHeader(UstarBlock(window.at(position)), position, end);
    }
    return ok;
}

bool CTar::moveTo(qint64 position, UstarWindow &window)
{
    const qint64 byteCount = window.moveTo(position);
    const std::optional<qint64> count = readBlock(position, window.bytes(), byteCount);
    window.setCount(count.value_or(0));
    return count.has_value();
}

QString CTar::error() const
{
    return mError;
}

int CTar::count() const
{
    return mMembers->count();
}

QStringList CTar::names() const
{
    makeRecords();
    return mNames;
}

QList<CTarFileInfo> CTar::infos() const
{
    makeRecords();
    return mInfos;
}

CTarFileInfo CTar::info(int index) const
{
    if (index < 0 || index >= count())
        return CTarFileInfo();
    return index < mInfos.count() ? mInfos.at(index) : mMembers->record(index);
}

int CTar::index(const QString &name) const
{
    return mMembers->find(name);
}

bool CTar::file(int index, QByteArray &data)
{
    if (!mFile.isOpen()) {
        mError = QCoreApplication::translate("CTar", "ERROR: You must open an archive first !");
        return false;
    }
    if (index < 0 || index >= count()) {
        mError = QCoreApplication::translate("CTar", "ERROR: Index %1 must be between the limits 0 and %2. !")
                     .arg(index)
                     .arg(count());
        return false;
    }
    const qint64 size = mMembers->size(index);
    const qint64 position = advanced(mMembers->offset(index), blockSize);
    // Room is made for what the file still holds, not for what the header says. To ask for that takes a third
    // of the time of a small member, whose room is made in any case.
    const bool isSmall = size <= UstarWindow::pageSize;
    const qint64 wanted = isSmall ? size : std::min(size, std::max(mFile.size() - position, qint64(0)));
    QByteArray bytes(wanted > maxByteCount ? 0 : int(wanted), Qt::Uninitialized);
    const std::optional<qint64> count = readAt(position, bytes.data(), bytes.size());
    if (!count)
        return false;
    bytes.truncate(int(*count));
    data = bytes;
    if (*count == size)
        return true;
    mError = QCoreApplication::translate("CTar", "ERROR: %1 bytes read but %2 are expected !")
                 .arg(*count)
                 .arg(size);
    return false;
}

bool CTar::file(const QString &name, QByteArray &data)
{
    const int member = index(name);
    if (member >= 0)
        return file(member, data);
    // Given as it stands, with the place marker.
    mError = QCoreApplication::translate("CTar", "ERROR: File \"%1\" does not exist in the archive !");
    return false;
}

bool CTar::readFileHeader(qint64 &position, bool &end)
{
    std::array<char, blockSize> bytes = {};
    return readBlock(position, bytes.data(), blockSize)
           && takeHeader(UstarBlock(bytes.data()), position, end);
}

// The number of bytes read, at least a block of the up to byteCount ones.
std::optional<qint64> CTar::readBlock(qint64 position, char *bytes, qint64 byteCount)
{
    const std::optional<qint64> count = readAt(position, bytes, byteCount);
    if (!count || *count >= blockSize)
        return count;
    mError = QCoreApplication::translate("CTar", "ERROR : The file ist too short. Only %1 bytes read but %2 "
                                                 "expected !")
                 .arg(*count)
                 .arg(blockSize);
    return std::nullopt;
}

bool CTar::takeHeader(const UstarBlock &block, qint64 &position, bool &end)
{
    if (block.isZero()) {
        end = true;
        return true;
    }
    if (!block.isUstar()) {
        // Filled with the size of a block, not with what was read.
        mError = QCoreApplication::translate("CTar",
                                             "ERROR : This is not a tar archive. Header.magic = \"%1\" but "
                                             "\"ustar\" was expected !")
                     .arg(blockSize);
        return false;
    }
    const std::optional<qint64> size = block.size();
    if (!size)
        return false;
    mMembers->append(block, *size, position);
    position = positionBehind(position, *size);
    return true;
}

// The number of bytes read; nothing, with the error set, when the file cannot be positioned. Qt would log a
// seek in a closed file, in a pipe, and to where the file system has no positions any more: the first two
// fail without being tried, and behind the end of the file there is nothing to read.
std::optional<qint64> CTar::readAt(qint64 position, char *bytes, qint64 byteCount)
{
    if (position > mKnownSize && mFile.isOpen())
        mKnownSize = mFile.size();
    const bool canSeek = mFile.isOpen() && !mFile.isSequential();
    if (canSeek && position > mKnownSize)
        return 0;
    const std::optional<qint64> count =
        canSeek ? readPositioned(mFile, position, bytes, byteCount) : std::nullopt;
    if (count)
        return count;
    if (!canSeek || !mFile.seek(position)) {
        mError = mFile.errorString();
        return std::nullopt;
    }
    return std::max(mFile.read(bytes, byteCount), qint64(0));
}

void CTar::makeRecords() const
{
    for (int i = mInfos.count(); i < count(); ++i) {
        mInfos.append(mMembers->record(i));
        mNames.append(mInfos.constLast().name);
    }
}
