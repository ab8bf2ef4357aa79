// SPDX-License-Identifier: MIT
#ifndef PLAINTAR_H
#define PLAINTAR_H

#include <QFile>
#include <QString>

#include <vector>

// A tar archive read by hand with Qt: a loop that seeks from header to header in a QFile, and a list of what
// they say. The file stays open for the data.
class PlainTar
{
public:
    struct Member
    {
        QString name;
        QString linkName;
        char typeFlag;
        qint64 size;
        qint64 offset;
    };

    // Buffered as Qt does it, unless the mode says QIODevice::Unbuffered.
    bool load(const QString &fileName, QIODevice::OpenMode mode = QIODevice::NotOpen);

    const std::vector<Member> &members() const { return mMembers; }
    // The first of this name, sought from the first member on; -1 without one.
    int index(const QString &name) const;
    QByteArray data(int member);

private:
    QFile mFile;
    std::vector<Member> mMembers;
};

#endif // PLAINTAR_H
