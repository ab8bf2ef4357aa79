// SPDX-License-Identifier: MIT
#include <CTemporaryDir.h>

CTemporaryDir::CTemporaryDir() = default;

CTemporaryDir::~CTemporaryDir() = default;

void CTemporaryDir::setAutoRemove(bool autoRemove)
{
    mDirectory.setAutoRemove(autoRemove);
}

bool CTemporaryDir::autoRemove() const
{
    return mDirectory.autoRemove();
}

bool CTemporaryDir::isValid() const
{
    return mDirectory.isValid();
}

QString CTemporaryDir::path() const
{
    return mDirectory.path();
}

bool CTemporaryDir::remove()
{
    return mDirectory.remove();
}
