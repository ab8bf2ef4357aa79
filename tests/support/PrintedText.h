// SPDX-License-Identifier: MIT
#ifndef PRINTEDTEXT_H
#define PRINTEDTEXT_H

#include "LineEnds.h"

#include <QFile>
#include <QTemporaryFile>

#include <cstdio>

#ifdef Q_OS_WIN
#include <io.h>
#else
#include <unistd.h>
#endif

// While this object lives, what the process writes to its standard output goes to a file, with C's print
// functions or without. A comparison of QtTest that fails meanwhile is lost there: compare afterwards.
class PrintedText
{
public:
    PrintedText() : mOpen(mFile.open()), mFormer(dup(standardOutput))
    {
        std::fflush(stdout);
        if (isValid())
            dup2(mFile.handle(), standardOutput);
    }

    ~PrintedText()
    {
        std::fflush(stdout);
        if (mFormer >= 0) {
            dup2(mFormer, standardOutput);
            close(mFormer);
        }
    }

    PrintedText(const PrintedText &) = delete;
    PrintedText &operator=(const PrintedText &) = delete;

    bool isValid() const { return mOpen && mFormer >= 0; }

    // What has reached the file; what a print function still keeps back has not.
    QByteArray arrived() const
    {
        QFile file(mFile.fileName());
        if (!file.open(QIODevice::ReadOnly))
            return QByteArrayLiteral("<unreadable>");
        return withPlainLineEnds(file.readAll());
    }

private:
    static constexpr int standardOutput = 1;

    QTemporaryFile mFile;
    bool mOpen;
    int mFormer;
};

// What the call prints, all of which arrives before it returns.
template<typename Call>
QByteArray printedBy(const Call &call)
{
    const PrintedText printed;
    if (!printed.isValid())
        return QByteArrayLiteral("<not redirected>");
    call();
    return printed.arrived();
}

#endif // PRINTEDTEXT_H
