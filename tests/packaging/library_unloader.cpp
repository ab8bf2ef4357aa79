// SPDX-License-Identifier: MIT
// library_unloader LIBRARY: loads the library as a plugin that was linked with it would, lets it go again and
// uses what it has registered with Qt, several times. It is not linked with the library itself.
#include <StreamForm.h>

#include <QFileInfo>
#include <QLibrary>
#include <QMetaType>
#include <QVariant>

#include <cstdio>
#include <string>

#ifdef Q_OS_WIN
#include <qt_windows.h>
#endif

namespace {

int fail(const char *what)
{
    std::printf("%s\n", what);
    return 1;
}

// A default value, through a stream and compared: every function of the type is called.
bool canBeUsed(int type)
{
    const QVariant value(type, nullptr);
    const QByteArray bytes = streamed(value);
    QVariant read;
    readFrom(bytes, read);
    return bytes.size() > 64 && read.userType() == type && read == value;
}

// Windows may leave the bytes of a library that has gone readable for a while: it is asked.
bool isThere(const QString &path)
{
#ifdef Q_OS_WIN
    const std::wstring name = QFileInfo(path).fileName().toStdWString();
    return GetModuleHandleW(name.c_str()) != nullptr;
#else
    Q_UNUSED(path)
    return true;
#endif
}

int loadAndUnload(const QString &path)
{
    QLibrary library(path);
    if (!library.load())
        return fail(qPrintable(library.errorString()));
    const int type = QMetaType::type("CString32");
    if (type == QMetaType::UnknownType)
        return fail("the library registers no type");
    if (!library.unload())
        return fail(qPrintable(library.errorString()));
    if (!isThere(path))
        return fail("the library has gone");
    return canBeUsed(type) ? 0 : fail("the type is of no use any more");
}

} // namespace

int main(int argc, char *argv[])
{
    if (argc != 2 || QMetaType::type("CString32") != QMetaType::UnknownType)
        return fail("called wrongly: the type is known already");
    constexpr int times = 5;
    int result = 0;
    for (int i = 0; i < times && result == 0; ++i)
        result = loadAndUnload(QString::fromLocal8Bit(argv[1]));
    return result;
}
