// SPDX-License-Identifier: MIT
#ifndef SCOPEDTIMEZONE_H
#define SCOPEDTIMEZONE_H

#include <QByteArray>

#include <time.h>

// The process's local time zone is `posixZone` while this object lives, then the one before. Zones are given
// by their rules, for example "CET-1CEST,M3.5.0,M10.5.0/3", so that no zone database is needed.
class ScopedTimeZone
{
public:
    explicit ScopedTimeZone(const QByteArray &posixZone)
        : mWasSet(qEnvironmentVariableIsSet("TZ")), mFormer(qgetenv("TZ"))
    {
        qputenv("TZ", posixZone);
        reload();
    }

    ~ScopedTimeZone()
    {
        if (mWasSet)
            qputenv("TZ", mFormer);
        else
            qunsetenv("TZ");
        reload();
    }

    // Whether the rules are followed. Windows takes the offset alone, and has summer where America has.
    static constexpr bool followsRules()
    {
#ifdef Q_OS_WIN
        return false;
#else
        return true;
#endif
    }

    ScopedTimeZone(const ScopedTimeZone &) = delete;
    ScopedTimeZone &operator=(const ScopedTimeZone &) = delete;

private:
    static void reload()
    {
#ifdef Q_OS_WIN
        _tzset();
#else
        tzset();
#endif
    }

    bool mWasSet;
    QByteArray mFormer;
};

#endif // SCOPEDTIMEZONE_H
