// SPDX-License-Identifier: MIT
#ifndef SCOPEDLOCALE_H
#define SCOPEDLOCALE_H

#include <QLocale>

// The default locale is this one while the object lives, then the one before.
class ScopedLocale
{
public:
    explicit ScopedLocale(const QLocale &locale) { QLocale::setDefault(locale); }
    ~ScopedLocale() { QLocale::setDefault(mFormer); }

    ScopedLocale(const ScopedLocale &) = delete;
    ScopedLocale &operator=(const ScopedLocale &) = delete;

private:
    QLocale mFormer;
};

#endif // SCOPEDLOCALE_H
