// SPDX-License-Identifier: MIT
#ifndef SCOPEDCURRENTDIRECTORY_H
#define SCOPEDCURRENTDIRECTORY_H

#include <QDir>
#include <QString>

// The current directory is this one while this object lives.
class ScopedCurrentDirectory
{
public:
    explicit ScopedCurrentDirectory(const QString &path) : mFormer(QDir::currentPath())
    {
        QDir::setCurrent(path);
    }
    ~ScopedCurrentDirectory() { QDir::setCurrent(mFormer); }
    ScopedCurrentDirectory(const ScopedCurrentDirectory &) = delete;
    ScopedCurrentDirectory &operator=(const ScopedCurrentDirectory &) = delete;

private:
    QString mFormer;
};

#endif // SCOPEDCURRENTDIRECTORY_H
