// SPDX-License-Identifier: MIT
#include "ProcessSetup.h"

#include <QByteArray>
#include <QtGlobal>

namespace j6tool {

void prepareProcess()
{
    qputenv("TZ", QByteArrayLiteral("UTC"));
}

} // namespace j6tool
