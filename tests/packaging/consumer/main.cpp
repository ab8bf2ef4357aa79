// SPDX-License-Identifier: MIT
#include <CDataTypeParser.h>
#include <j6Core_version.h>

#include <cstdio>

int main()
{
    const NTypes::eTypes_t type = CDataTypeParser::strToType(QStringLiteral("UNIT_U16"));
    std::printf(
        "j6Core %s: %s %s..%s\n", J6CORE_VERSION_STR, qPrintable(CDataTypeParser::mTypeDataMap.value(type)),
        qPrintable(CDataTypeParser::minTypeValue(type)), qPrintable(CDataTypeParser::maxTypeValue(type)));
    return 0;
}
