// SPDX-License-Identifier: MIT
#include "Commands.h"
#include "InventoryCsv.h"
#include "InventoryFile.h"
#include "InventoryText.h"
#include "OutputFile.h"
#include "VisibleText.h"

#include <array>

namespace j6tool {

namespace {

struct Need
{
    const char *option;
    const char *other;
};

// Which option makes no sense without which other one.
constexpr std::array<Need, 6> needs = {{
    {"unite", "file"},
    {"unite", "out"},
    {"out", "unite"},
    {"format", "file"},
    {"new", "from"},
    {"from", "new"},
}};

std::optional<Error> checkOptions(const Arguments &arguments)
{
    for (const QString &key : arguments.keys()) {
        if (arguments.value(key).isEmpty())
            return callError(key, QStringLiteral("is empty"));
    }
    if (arguments.contains(QStringLiteral("file")) == arguments.contains(QStringLiteral("new")))
        return callError(QStringLiteral("either file or new must be given"));
    for (const Need &need : needs) {
        const QString option = QLatin1String(need.option);
        const QString other = QLatin1String(need.other);
        if (arguments.contains(option) && !arguments.contains(other))
            return callError(option, QStringLiteral("needs the option '%1'").arg(other));
    }
    return std::nullopt;
}

// To overwrite the file that was read by another thing than its new state is never meant.
std::optional<Error> checkTarget(const Arguments &arguments, const QString &target, const QString &source)
{
    if (!isSameFile(arguments.value(target), arguments.value(source)))
        return std::nullopt;
    return callError(target, QStringLiteral("is the same file as '%1'").arg(source));
}

Result<TableFormat> inventoryFormat(const Arguments &arguments)
{
    Result<TableFormat> format = formatOption(arguments);
    if (format && *format != TableFormat::Csv)
        return format;
    return callError(
        QStringLiteral("format"),
        QStringLiteral("%1 is none of table, json").arg(quoted(arguments.value(QStringLiteral("format")))));
}

void print(Output &output, TableFormat format, const CDeviceList &list, const ShownMerge *merge)
{
    if (format == TableFormat::Json)
        writeInventoryJson(output, list, merge);
    else
        writeInventoryTable(output, list, merge);
}

Result<ExitCode> makeInventory(const Arguments &arguments, Output &output)
{
    const QString fileName = arguments.value(QStringLiteral("new"));
    if (const std::optional<Error> error =
            checkTarget(arguments, QStringLiteral("new"), QStringLiteral("from")))
        return *error;
    const Result<CDeviceList> list = readInventoryCsv(arguments.value(QStringLiteral("from")));
    if (!list)
        return list.error();
    // What cannot be told is not done, and what cannot be done is not told.
    const auto tell = [&] {
        output.writeLine(QStringLiteral("%1: %2 devices with %3 sub-devices")
                             .arg(visible(fileName), QString::number(list->size()),
                                  QString::number(subDeviceCount(*list))));
        return output.flush();
    };
    if (const std::optional<Error> error = writeInventory(*list, fileName, tell))
        return *error;
    return Done;
}

Result<ExitCode> uniteInventories(const Arguments &arguments, Output &output, TableFormat format,
                                  CDeviceList list)
{
    if (const std::optional<Error> error =
            checkTarget(arguments, QStringLiteral("out"), QStringLiteral("unite")))
        return *error;
    const QString otherName = arguments.value(QStringLiteral("unite"));
    const Result<CDeviceList> other = readInventory(otherName);
    if (!other)
        return other.error();
    const ShownMerge merge = {mergeInventory(list, *other), otherName};
    const auto tell = [&] {
        print(output, format, list, &merge);
        return output.flush();
    };
    if (const std::optional<Error> error = writeInventory(list, arguments.value(QStringLiteral("out")), tell))
        return *error;
    return Done;
}

} // namespace

Result<ExitCode> runDevices(const Arguments &arguments, Output &output)
{
    if (const std::optional<Error> error = checkOptions(arguments))
        return *error;
    if (arguments.contains(QStringLiteral("new")))
        return makeInventory(arguments, output);
    const Result<TableFormat> format = inventoryFormat(arguments);
    if (!format)
        return format.error();
    const Result<CDeviceList> list = readInventory(arguments.value(QStringLiteral("file")));
    if (!list)
        return list.error();
    if (arguments.contains(QStringLiteral("unite")))
        return uniteInventories(arguments, output, *format, *list);
    print(output, *format, *list, nullptr);
    return Done;
}

} // namespace j6tool
