// SPDX-License-Identifier: MIT
#ifndef SCOPEDVARIABLE_H
#define SCOPEDVARIABLE_H

#include <QByteArray>
#include <QtGlobal>

// Names the directory for temporary files.
#ifdef Q_OS_WIN
constexpr const char *temporaryDirectoryVariable = "TMP";
#else
constexpr const char *temporaryDirectoryVariable = "TMPDIR";
#endif

// The environment variable has this value while this object lives, or is missing for a null one; then what it
// was before.
class ScopedVariable
{
public:
    ScopedVariable(const char *name, const QByteArray &value)
        : mName(name), mWasSet(qEnvironmentVariableIsSet(name)), mFormer(qgetenv(name))
    {
        set(!value.isNull(), value);
    }

    ~ScopedVariable() { set(mWasSet, mFormer); }

    ScopedVariable(const ScopedVariable &) = delete;
    ScopedVariable &operator=(const ScopedVariable &) = delete;

private:
    void set(bool present, const QByteArray &value) const
    {
        if (present)
            qputenv(mName, value);
        else
            qunsetenv(mName);
    }

    const char *mName;
    bool mWasSet;
    QByteArray mFormer;
};

#endif // SCOPEDVARIABLE_H
