// SPDX-License-Identifier: MIT
#ifndef MEMORYLIMIT_H
#define MEMORYLIMIT_H

#include <QFile>
#include <QtGlobal>

#ifdef Q_OS_LINUX
#include <sys/resource.h>
#endif

// While this object lives, the process may take at most this many megabytes of memory more than it has; what
// asks for more fails, which ends a test. Without effect where the system offers no such limit.
class MemoryLimit
{
public:
    explicit MemoryLimit(qint64 megabytes)
    {
#ifdef Q_OS_LINUX
        const qint64 used = dataSize();
        mSet = used > 0 && getrlimit(RLIMIT_DATA, &mFormer) == 0;
        if (mSet) {
            rlimit limit = mFormer;
            limit.rlim_cur = static_cast<rlim_t>(used + megabytes * 1024 * 1024);
            mSet = setrlimit(RLIMIT_DATA, &limit) == 0;
        }
#else
        Q_UNUSED(megabytes)
#endif
    }

    ~MemoryLimit()
    {
#ifdef Q_OS_LINUX
        if (mSet)
            setrlimit(RLIMIT_DATA, &mFormer);
#endif
    }

    MemoryLimit(const MemoryLimit &) = delete;
    MemoryLimit &operator=(const MemoryLimit &) = delete;

    bool isSet() const
    {
        return mSet;
    }

private:
#ifdef Q_OS_LINUX
    // Bytes of private writable memory.
    static qint64 dataSize()
    {
        QFile status(QStringLiteral("/proc/self/status"));
        if (!status.open(QIODevice::ReadOnly))
            return 0;
        const QList<QByteArray> lines = status.readAll().split('\n');
        for (const QByteArray &line : lines) {
            if (line.startsWith("VmData:"))
                return line.mid(7).replace("kB", "").trimmed().toLongLong() * 1024;
        }
        return 0;
    }

    rlimit mFormer = {};
#endif
    bool mSet = false;
};

#endif // MEMORYLIMIT_H
