// SPDX-License-Identifier: MIT
#include <CNewDelTrace.h>

#include "TraceFileName.h"

#include <QCoreApplication>
#include <QMutexLocker>
#include <QString>
#include <QTextCodec>
#include <QThread>

// In a static build the objects of the program stand beside it. Its place before them all in the order of
// construction needs no run time, but by it the trace is destroyed last and their destructors can be traced.
#if defined(__GNUC__) && !defined(__APPLE__)
[[gnu::init_priority(101)]]
#endif
// NOLINTNEXTLINE(cppcoreguidelines-avoid-non-const-global-variables): what the hooks write to
CNewDelTrace GlobalNewDelFile;

namespace {

// NOLINTNEXTLINE(cppcoreguidelines-avoid-non-const-global-variables): belongs to one thread
thread_local bool isTracing = false;

// While it lives, what this thread allocates and releases is a trace's own business.
class OwnBusiness
{
public:
    OwnBusiness() : mWasTracing(isTracing) { isTracing = true; }
    ~OwnBusiness() { isTracing = mWasTracing; }
    OwnBusiness(const OwnBusiness &) = delete;
    OwnBusiness &operator=(const OwnBusiness &) = delete;

private:
    bool mWasTracing;
};

// Without an application Qt would warn, and the handler of the warning would find the trace locked.
QString programPath()
{
    return QCoreApplication::instance() == nullptr ? QString() : QCoreApplication::applicationFilePath();
}

QString hexText(quintptr number, int minDigits)
{
    return QStringLiteral("%1").arg(number, minDigits, 16, QLatin1Char('0'));
}

QString addressText(const void *ptr)
{
    constexpr int digits = 8;
    return hexText(reinterpret_cast<quintptr>(ptr), digits);
}

QString threadText()
{
    return hexText(reinterpret_cast<quintptr>(QThread::currentThreadId()), 0);
}

// What the disk does not take waits in the file's buffer. A stream that has failed once would write nothing
// more, and keep all records that follow.
void writeRecord(QTextStream &stream, const QString &record)
{
    stream << record << Qt::endl;
    stream.resetStatus();
}

} // namespace

CNewDelTrace::~CNewDelTrace()
{
    const OwnBusiness ownBusiness;
    mStream.reset();
    mFile.reset();
}

void CNewDelTrace::_Init()
{
    constexpr int utf8Mib = 106;
    const OwnBusiness ownBusiness;
    mStream.reset();
    mFile = std::make_unique<QFile>(traceFileName(programPath()));
    if (mFile->open(QIODevice::WriteOnly | QIODevice::Truncate)) {
        mStream = std::make_unique<QTextStream>(mFile.get());
        mStream->setCodec(QTextCodec::codecForMib(utf8Mib));
    }
    mInitialized = true;
}

void CNewDelTrace::logNew(void *ptr, const char *file, int line, const char *function, int size)
{
    if (isTracing)
        return;
    const OwnBusiness ownBusiness;
    const QMutexLocker lock(&mMutex);
    if (!isOpen())
        return;
    // All places are filled at once: a name that holds "%1" is written as it is.
    writeRecord(*mStream, QStringLiteral("+%1 %2;%3 %4 %5 Thread %6")
                              .arg(addressText(ptr), QString::fromLatin1(file), QString::number(line),
                                   QString::fromLatin1(function), QString::number(size), threadText()));
}

// The line number stands behind the function here, unlike in the record of an allocation.
void CNewDelTrace::logDel(void *ptr, const char *file, const char *function, int line)
{
    if (isTracing)
        return;
    const OwnBusiness ownBusiness;
    const QMutexLocker lock(&mMutex);
    if (!isOpen())
        return;
    writeRecord(*mStream, QStringLiteral("-%1 %2;%3 %4 Thread %5")
                              .arg(addressText(ptr), QString::fromLatin1(file), QString::fromLatin1(function),
                                   QString::number(line), threadText()));
}

// Whether there is a file to write to; the first record opens it.
bool CNewDelTrace::isOpen()
{
    if (!mInitialized)
        _Init();
    return mStream != nullptr;
}
