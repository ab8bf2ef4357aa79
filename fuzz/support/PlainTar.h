// SPDX-License-Identifier: MIT
#ifndef PLAINTAR_H
#define PLAINTAR_H

#include <CTarFileInfo.h>

#include <QByteArray>
#include <QList>
#include <QString>

#include <limits>
#include <optional>

// An archive read in the plainest way: block by block from an array, without an index.
class PlainTar
{
public:
    // NOLINTNEXTLINE(cppcoreguidelines-prefer-member-initializer): reading fills the other members
    explicit PlainTar(const QByteArray &archive) { isWhole = readMembers(archive); }

    QList<CTarFileInfo> members;
    QString error;
    bool isWhole = false; // up to the block of zeros

private:
    static constexpr qint64 blockSize = 512;

    static QByteArray bytesAt(const QByteArray &block, int offset)
    {
        const QByteArray rest = block.mid(offset);
        return rest.left(rest.indexOf('\0') < 0 ? rest.size() : rest.indexOf('\0'));
    }

    // An octal number that is not negative, with white space around it and perhaps a sign.
    static std::optional<qint64> sizeOf(const QByteArray &block)
    {
        QByteArray digits = bytesAt(block, 124).trimmed();
        const bool hasMinus = digits.startsWith('-');
        if (hasMinus || digits.startsWith('+'))
            digits.remove(0, 1);
        quint64 size = 0;
        for (const char digit : digits) {
            if (digit < '0' || digit > '7' || size >= quint64(1) << 60)
                return std::nullopt;
            size = size * 8 + quint64(digit - '0');
        }
        if (digits.isEmpty() || (hasMinus && size != 0))
            return std::nullopt;
        return static_cast<qint64>(size);
    }

    static int typeOf(char flag)
    {
        return flag == '0' || flag == '\0' ? 1 : flag == '2' ? 2 : flag == '5' ? 3 : 0;
    }

    bool readMembers(const QByteArray &archive)
    {
        qint64 position = 0;
        while (true) {
            const qint64 left = archive.size() - position;
            if (left < blockSize) {
                error =
                    QStringLiteral("ERROR : The file ist too short. Only %1 bytes read but 512 expected !")
                        .arg(left < 0 ? 0 : left);
                return false;
            }
            const QByteArray block = archive.mid(static_cast<int>(position), blockSize);
            if (block == QByteArray(blockSize, '\0'))
                return true;
            if (block.mid(257, 5) != "ustar") {
                error = QStringLiteral("ERROR : This is not a tar archive. Header.magic = \"512\" but "
                                       "\"ustar\" was expected !");
                return false;
            }
            const std::optional<qint64> size = sizeOf(block);
            if (!size)
                return false;
            append(block, *size, position);
            // Behind the end of an array is far enough.
            position += *size > archive.size() ? archive.size() + blockSize
                                               : blockSize + (*size + blockSize - 1) / blockSize * blockSize;
        }
    }

    void append(const QByteArray &block, qint64 size, qint64 position)
    {
        CTarFileInfo info;
        info.type = typeOf(block.at(156));
        info.name = QString::fromLatin1(bytesAt(block, 0));
        info.linkName = QString::fromLatin1(bytesAt(block, 157));
        info.size = size;
        info.offset = position;
        members.append(info);
    }
};

#endif // PLAINTAR_H
