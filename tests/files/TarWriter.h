// SPDX-License-Identifier: MIT
#ifndef TARWRITER_H
#define TARWRITER_H

#include <QByteArray>
#include <QFile>
#include <QList>
#include <QString>

// A little writer of tar archives for the tests, with the places of the fields as POSIX ustar gives them. It
// writes whatever it is told to, also what no archive may hold.
namespace tar {

constexpr int blockSize = 512;

struct Field
{
    int offset;
    int width;
};

namespace field {
constexpr Field name = {0, 100};
constexpr Field mode = {100, 8};
constexpr Field uid = {108, 8};
constexpr Field gid = {116, 8};
constexpr Field size = {124, 12};
constexpr Field mtime = {136, 12};
constexpr Field checksum = {148, 8};
constexpr Field typeFlag = {156, 1};
constexpr Field linkName = {157, 100};
constexpr Field magic = {257, 6};
constexpr Field version = {263, 2};
constexpr Field userName = {265, 32};
constexpr Field groupName = {297, 32};
constexpr Field prefix = {345, 155};
} // namespace field

struct Member
{
    QByteArray name;
    QByteArray data = {};
    char typeFlag = '0';
    QByteArray linkName = {};
};

// Overwrites the bytes from the field's first one on; more than its width is written over its neighbours.
inline void put(QByteArray &block, Field field, const QByteArray &bytes)
{
    block.replace(field.offset, bytes.size(), bytes);
}

inline QByteArray octal(qint64 number, int digits)
{
    return QByteArray::number(number, 8).rightJustified(digits, '0');
}

inline QByteArray header(const Member &member, qint64 size)
{
    QByteArray block(blockSize, '\0');
    put(block, field::name, member.name);
    put(block, field::mode, "0000644");
    put(block, field::uid, "0001750");
    put(block, field::gid, "0001750");
    put(block, field::size, octal(size, 11));
    put(block, field::mtime, "14600000000");
    put(block, field::typeFlag, QByteArray(1, member.typeFlag));
    put(block, field::linkName, member.linkName);
    put(block, field::magic, QByteArray("ustar\0", 6));
    put(block, field::version, "00");
    put(block, field::userName, "drives");
    put(block, field::groupName, "drives");
    put(block, field::checksum, "        ");
    int sum = 0;
    for (const char byte : qAsConst(block))
        sum += uchar(byte);
    put(block, field::checksum, octal(sum, 6) + QByteArray("\0 ", 2));
    return block;
}

inline QByteArray header(const Member &member)
{
    return header(member, member.data.size());
}

// With zeros to a whole number of blocks.
inline QByteArray padded(const QByteArray &data)
{
    return data + QByteArray((blockSize - data.size() % blockSize) % blockSize, '\0');
}

inline QByteArray zeroBlocks(int count = 2)
{
    return QByteArray(count * blockSize, '\0');
}

inline QByteArray members(const QList<Member> &list)
{
    QByteArray bytes;
    for (const Member &member : list)
        bytes += header(member) + padded(member.data);
    return bytes;
}

inline QByteArray archive(const QList<Member> &list)
{
    return members(list) + zeroBlocks();
}

// Makes the file exactly these bytes. It is not emptied first: file systems write out at once what is put
// into a file that was.
inline bool write(const QString &fileName, const QByteArray &bytes)
{
    QFile file(fileName);
    return file.open(QIODevice::ReadWrite) && file.write(bytes) == bytes.size() && file.resize(bytes.size());
}

} // namespace tar

#endif // TARWRITER_H
