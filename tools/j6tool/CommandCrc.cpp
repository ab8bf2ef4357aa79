// SPDX-License-Identifier: MIT
#include "Commands.h"
#include "FileChecksums.h"

namespace j6tool {

namespace {

QString hex(quint32 number, int digits)
{
    return QLatin1String("0x") + QStringLiteral("%1").arg(number, digits, 16, QLatin1Char('0')).toUpper();
}

} // namespace

Result<ExitCode> runCrc(const Arguments &arguments, Output &output)
{
    const Result<TableFormat> format = formatOption(arguments);
    if (!format)
        return format.error();
    const Result<FileChecksums> sums = checksumsOfFile(arguments.value(QStringLiteral("file")));
    if (!sums)
        return sums.error();
    const Table table({{QStringLiteral("checksum")}, {QStringLiteral("value")}},
                      {{QStringLiteral("CRC-32"), hex(sums->crc32, 8)},
                       {QStringLiteral("CRC-16 Modbus"), hex(sums->crc16Modbus, 4)},
                       {QStringLiteral("CRC-16 CCITT"), hex(sums->crc16Ccitt, 4)}});
    table.write(output, *format);
    return Done;
}

} // namespace j6tool
