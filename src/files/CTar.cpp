// SPDX-License-Identifier: MIT
#include <CTar.h>

#include "UstarBlock.h"

#include <QCoreApplication>

#include <algorithm>
#include <array>
#include <limits>
#include <numeric>

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

CTarFileInfo::EFileType fileType(char typeFlag)
{
    switch (typeFlag) {
    case '\0':
    case '0':
        return CTarFileInfo::E_TYPE_FILE;
    case '2':
        return CTarFileInfo::E_TYPE_LINK;
    case '5':
        return CTarFileInfo::E_TYPE_DIRECTORY;
    default:
        return CTarFileInfo::E_TYPE_OTHER;
    }
}

} // namespace

// A piece of the archive, as it was read at once.
struct TarWindow
{
    static constexpr qint64 pageSize = 4096;

    bool holdsBlock(qint64 position) const
    {
        return position >= start && position - start <= count - blockSize;
    }
    const char *at(qint64 position) const { return bytes.data() + (position - start); }

    std::array<char, pageSize> bytes = {};
    qint64 start = 0;
    qint64 count = 0;
};

CTar::CTar() = default;

CTar::~CTar() = default;

bool CTar::loadFile(const QString &fileName)
{
    mFile.close();
    mNames.clear();
    mInfos.clear();
    mByName.clear();
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

// Reads up to the end of the page of the file in which a header lies, since the system fetches a page as a
// whole: the headers of small members come several at a time, and large members are passed over nonetheless.
bool CTar::readFileHeaders()
{
    TarWindow window;
    qint64 position = 0;
    bool end = false;
    bool ok = true;
    while (ok && !end) {
        const qint64 restOfPage = TarWindow::pageSize - position % TarWindow::pageSize;
        ok = fetchBlock(window, position, restOfPage)
             && takeHeader(UstarBlock(window.at(position)), position, end);
    }
    return ok;
}

QString CTar::error() const
{
    return mError;
}

int CTar::count() const
{
    return mInfos.count();
}

QStringList CTar::names() const
{
    return mNames;
}

QList<CTarFileInfo> CTar::infos() const
{
    return mInfos;
}

CTarFileInfo CTar::info(int index) const
{
    return mInfos.value(index);
}

int CTar::index(const QString &name) const
{
    sortByName();
    const auto first =
        std::lower_bound(mByName.begin(), mByName.end(), name,
                         [this](int member, const QString &wanted) { return mNames.at(member) < wanted; });
    return first != mByName.end() && mNames.at(*first) == name ? *first : -1;
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
    const qint64 size = mInfos.at(index).size;
    const qint64 position = advanced(mInfos.at(index).offset, blockSize);
    // Room is made for what the file still holds, not for what the header says.
    const qint64 wanted = std::min(size, std::max(mFile.size() - position, qint64(0)));
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
    TarWindow window;
    return fetchBlock(window, position, blockSize)
           && takeHeader(UstarBlock(window.at(position)), position, end);
}

bool CTar::fetchBlock(TarWindow &window, qint64 position, qint64 byteCount)
{
    if (window.holdsBlock(position))
        return true;
    const std::optional<qint64> count = readAt(position, window.bytes.data(), byteCount);
    if (!count)
        return false;
    window.start = position;
    window.count = *count;
    if (*count >= blockSize)
        return true;
    mError = QCoreApplication::translate("CTar", "ERROR : The file ist too short. Only %1 bytes read but %2 "
                                                 "expected !")
                 .arg(*count)
                 .arg(blockSize);
    return false;
}

bool CTar::takeHeader(const UstarBlock &block, qint64 &position, bool &end)
{
    if (block.isZero()) {
        end = true;
        return true;
    }
    if (!block.magic().startsWith(QLatin1String("ustar"))) {
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
    append(block, position, *size);
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
    if (!canSeek || !mFile.seek(position)) {
        mError = mFile.errorString();
        return std::nullopt;
    }
    return std::max(mFile.read(bytes, byteCount), qint64(0));
}

void CTar::append(const UstarBlock &block, qint64 position, qint64 size)
{
    CTarFileInfo info;
    info.type = fileType(block.typeFlag());
    info.name = block.name();
    info.linkName = block.linkName();
    info.size = size;
    info.offset = position;
    mNames.append(info.name);
    mInfos.append(info);
}

void CTar::sortByName() const
{
    if (mByName.size() == std::size_t(mNames.size()))
        return;
    mByName.resize(std::size_t(mNames.size()));
    std::iota(mByName.begin(), mByName.end(), 0);
    std::stable_sort(mByName.begin(), mByName.end(),
                     [this](int left, int right) { return mNames.at(left) < mNames.at(right); });
}
