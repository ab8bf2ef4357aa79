// SPDX-License-Identifier: MIT
#include <CTarFileInfo.h>

#include <QDebug>

void CTarFileInfo::clear()
{
    *this = CTarFileInfo();
}

bool CTarFileInfo::operator==(const CTarFileInfo &other) const
{
    return type == other.type && name == other.name && linkName == other.linkName && size == other.size
           && offset == other.offset;
}

QDebug operator<<(QDebug debug, const CTarFileInfo &info)
{
    const QDebugStateSaver saver(debug);
    // All at once: place markers in the names are text.
    debug.nospace() << QStringLiteral("CTarFileInfo(%1, %2, %3, %4, %5)")
                           .arg(QString::number(info.type), info.name, info.linkName,
                                QString::number(info.size), QString::number(info.offset));
    return debug;
}
