// SPDX-License-Identifier: MIT
#include "Commands.h"

#include "VisibleText.h"

#include <algorithm>

namespace j6tool {

namespace {

constexpr Option listOption = {"file", "LIST", true, "the parameter list to read"};
constexpr Option formatOptionRow = {"format", "table|csv|json", false, "for people (table) or for programs"};

constexpr std::array<Command, commandCount> table = {{
    {"show",
     "file=LIST [filter=TEXT] [format=table|csv|json]",
     "print the parameters of a list: bytes, text and unit",
     {listOption,
      Option{"filter", "TEXT", false, "only those with the text in index, name, type or unit, in any case"},
      formatOptionRow},
     false,
     0,
     "Floating-point numbers have the display digits of their unit, or 6 (UNIT_F32) or\n"
     "15 (UNIT_F64) significant digits where those would read as 0 or be too many.\n"
     "Texts end at their terminating zero. The table cuts long bytes and texts and\n"
     "ends them with an ellipsis. In the table and in CSV, characters that cannot be\n"
     "printed stand as \\n, \\x1b or \\u200b, and \\ as \\\\; JSON holds the exact text.\n",
     runShow},
    {"set",
     "file=LIST out=FILE NAME=TEXT ...",
     "write a list with edited values; print old -> new",
     {listOption, Option{"out", "FILE", true, "the list to write; it may be the one that is read"}},
     true,
     0,
     "NAME is an index such as 0x6081 or 0x6081:01, or the name of one parameter\n"
     "(a name that is also an option, file or out, can be given by its index only).\n"
     "TEXT must be exactly a value of the parameter's type:\n"
     "  integers, command   31, 0x1F or octal 037, with a sign, in the type's range\n"
     "  floating point      1500, -0.25 or 1.5e3; no nan, no inf\n"
     "  date-time           2024-03-01 12:30:45 or 2024-03-01T12:30:45.67, no time\n"
     "                      zone; 0000-00-00 00:00:00 is the empty one\n"
     "  versions            1.2.300 or 1.2.3.4\n"
     "  IPv4 address        192.168.1.10\n"
     "  strings             up to the field's length; 8-bit ones in ASCII\n"
     "  all others          hexadecimal digits of exactly the type's bytes\n"
     "If one is refused nothing is written. FILE is replaced in one step; whatever is\n"
     "not changed keeps its bytes, quotes and line ends. A number within the tolerance\n"
     "of the old one (2^-23, or 2^-52 for UNIT_F64) that also reads like it does not\n"
     "change it.\n",
     runSet},
    {"diff",
     "file=A with=B",
     "compare two lists; exit code 1 when they differ",
     {Option{"file", "A", true, "a parameter list"},
      Option{"with", "B", true, "the list to compare it with"}},
     false,
     0,
     "Parameters are matched by index. A row says that the bytes changed, that the\n"
     "type, the unit or the name is another one, that the parameter is missing from B,\n"
     "or that B has it additionally. Equal texts of different bytes are shown with the\n"
     "bytes behind.\n",
     runDiff},
    {"value",
     "type=NAME bytes=HEX|text=TEXT [unit=CODE] [lang=CODE] [format=table|csv|json]",
     "print every form of one value",
     {Option{"type", "NAME", true, "a type by its catalogue name, for example UNIT_U16"},
      Option{"bytes", "HEX", false, "the value as bytes in device order"},
      Option{"text", "TEXT", false, "the value as text, as for the command set"},
      Option{"unit", "CODE", false, "a unit by its code: adds the text with the unit's digits"},
      Option{"lang", "CODE", false, "the language of the locale text, for example de; default C"},
      formatOptionRow},
     false,
     0,
     "Give either bytes or text. Printed are the value's texts, its hexadecimal and bit\n"
     "form, size, default and range, and what it reads as each type that it can be\n"
     "converted to; a conversion keeps the low-order bits and checks no range.\n",
     runValue},
    {"types",
     "[format=table|csv|json]",
     "list the type catalogue",
     {formatOptionRow},
     false,
     0,
     "Number, catalogue name, enumerator, size in bytes and range of each type. The\n"
     "table cuts the longest limits and ends them with an ellipsis.\n",
     runTypes},
    {"units",
     "[format=table|csv|json]",
     "list the unit catalogue",
     {formatOptionRow},
     false,
     0,
     "Code, text, description and display digits of each unit, and the code that a\n"
     "linear motor uses in its place, where there is one.\n",
     runUnits},
    {"crc",
     "file=FILE [format=table|csv|json]",
     "print the three checksums of a file",
     {Option{"file", "FILE", true, "any file"}, formatOptionRow},
     false,
     0,
     "CRC-32, CRC-16 Modbus and CRC-16 CCITT (both with the initial value 0xFFFF).\n",
     runCrc},
    {"devices",
     "file=INVENTORY [unite=OTHER out=FILE] [format=table|json] | new=FILE from=CSV",
     "print, merge or make a device inventory",
     {Option{"file", "INVENTORY", false, "the stored inventory to read"},
      Option{"unite", "OTHER", false, "an inventory whose devices are added"},
      Option{"out", "FILE", false, "the inventory to write then; it may be the one of file"},
      Option{"format", "table|json", false, "for people (table) or for programs"},
      Option{"new", "FILE", false, "the inventory to make"},
      Option{"from", "CSV", false, "what to make it from"}},
     false,
     0,
     "Prints the list's name and source and, by key, its devices, each with its\n"
     "sub-devices. The table cuts long texts and has the further members of a device\n"
     "only where they are set; JSON holds everything.\n"
     "unite adds the devices whose keys file does not have, writes the result to out\n"
     "and prints it. Of two devices under one key that of file is kept, and a line\n"
     "says so unless they are equal.\n"
     "An inventory is the stream form of a CDeviceList (Qt 5.15, big-endian). A file\n"
     "that is not one whole inventory is refused.\n"
     "The CSV has a header row that names its columns: row and key, and in any order\n"
     "those needed of name, identifier, kind, address, port, flag1, flag2, text1,\n"
     "value1, text2, value2, rights, number, sets, active and version. A row is that\n"
     "of the list (the first or none), of a device, or of a sub-device behind its\n"
     "device. sets has the form \"0=Rough;1=Fine;7\".\n"
     "Files are replaced in one step, and if anything is refused nothing is written.\n",
     runDevices},
    {"code",
     "key=HEX|keyfile=FILE [step=30] [digits=6] [t0=0] [check=CODE [tolerance=1]]",
     "print or check a one-time code; exit code 1 when refused",
     {Option{"key", "HEX", false, "the secret; every user of the machine can see it while j6tool runs"},
      Option{"keyfile", "FILE", false, "a file with the secret in hexadecimal, white space around it"},
      Option{"step", "SECONDS", false, "length of a time step, 1 to 4294967295; default 30"},
      Option{"digits", "NUMBER", false, "digits of a code, 1 to 9; default 6"},
      Option{"t0", "SECONDS", false, "start of the count, in seconds since 1970 UTC; default 0"},
      Option{"check", "CODE", false, "a code to check instead of printing the present one"},
      Option{"tolerance", "STEPS", false, "how many steps old the code may be, 0 to 1000; default 1"}},
     false,
     0,
     "The codes are CHmac's own; no other scheme has the same. Codes of future steps\n"
     "are refused; in place of each, the scheme tries one of the far past. So a step\n"
     "of tolerance is two more codes that a guess can hit, hence its limit; and\n"
     "tolerance * step must be below 2^32 s, where the scheme's arithmetic ends.\n"
     "The key is never printed.\n",
     runCode},
    {"paths",
     "[format=table|csv|json]",
     "list the directories of this installation",
     {formatOptionRow},
     false,
     0,
     "Where this program and the others in its directory look for their files: the\n"
     "installation (the parent of that directory), the user's application data and\n"
     "documents, and what all products share. Libraries lie beside the programs.\n"
     "Nothing is created.\n",
     runPaths},
    {"settings",
     "file=INI [section=S] key=K [type=TYPE] [value=TEXT] [version=V]",
     "read or write one entry of a settings file",
     {Option{"file", "INI", true, "the settings file; writing makes it if there is none"},
      Option{"section", "S", false, "the section; without it the entries below [General]"},
      Option{"key", "K", true, "the key"},
      Option{"type", "TYPE", false,
             "string (also without it), int, uint, ulong, double, bool, locale, bytes"},
      Option{"value", "TEXT", false, "the value to write; without it the entry is printed"},
      Option{"version", "V", false, "the version of the bytes; 0.0 without it"}},
     false,
     0,
     "TEXT must be exactly a value of the type:\n"
     "  int          a decimal integer from -2147483648 to 2147483647\n"
     "  uint, ulong  31, 0x1F or octal 037, of 32 or 64 bits\n"
     "  double       1500, -0.25 or 1.5e3; no nan, no inf\n"
     "  bool         true or false\n"
     "  locale       de_DE, or de for its main country\n"
     "  bytes        hexadecimal digits, two for each byte\n"
     "An entry of another form is not read. Bytes are read only if they have the\n"
     "version V; they are written with it. The file is replaced in one step and all\n"
     "other entries are kept, as every tool does it; comments are not. A section that\n"
     "is named General is [%General] in the file.\n",
     runSettings},
    {"tar",
     "file=BUNDLE [member=NAME out=FILE] [format=table|csv|json]",
     "list the members of a tar archive, or extract one",
     {Option{"file", "BUNDLE", true, "a tar archive (POSIX ustar)"},
      Option{"member", "NAME", false, "the file in the archive to extract, by its name in the list"},
      Option{"out", "FILE", false, "the file to make of it; it must not exist"}, formatOptionRow},
     false,
     0,
     "Listed are files, directories and links (symbolic); all else, such as a hard link\n"
     "or the extended header of a long name, is of the type other. Names are shown as\n"
     "UTF-8 where they are, else as Latin-1. Only files are extracted, of several with\n"
     "one name the first, and to no other place than FILE. An archive that cannot be\n"
     "read up to its end is neither listed nor extracted from.\n",
     runTar},
    {"help", "[COMMAND]", "explain the tool or one command", {}, false, 1, "", runHelp},
}};

bool isInUse(const Option &option)
{
    return option.key != nullptr;
}

QString optionKeys(const Command &command)
{
    QStringList keys;
    for (const Option &option : command.options) {
        if (isInUse(option))
            keys.append(QLatin1String(option.key));
    }
    return keys.isEmpty() ? QStringLiteral("none") : keys.join(QLatin1String(", "));
}

// In a call for a code, a secret in Base64 that stands apart by mistake ends in equals signs and looks like
// an option without a value.
bool mayBeSecret(const Command &command, const Arguments &arguments, const QString &key)
{
    const QString value = arguments.value(key);
    return hasOption(command, QStringLiteral("keyfile")) && value.count(QLatin1Char('=')) == value.size();
}

Error unknownOption(const Command &command, const Arguments &arguments, const QString &key)
{
    const QString what = QStringLiteral("is no option of '%1' (these are: %2)")
                             .arg(QLatin1String(command.name), optionKeys(command));
    return mayBeSecret(command, arguments, key) ? callError(QStringLiteral("a word (not shown) ") + what)
                                                : callError(key, what);
}

} // namespace

const std::array<Command, commandCount> &commands()
{
    return table;
}

const Command *findCommand(const QString &name)
{
    const auto *command = std::find_if(
        table.begin(), table.end(), [&name](const Command &row) { return name == QLatin1String(row.name); });
    return command == table.end() ? nullptr : command;
}

bool hasOption(const Command &command, const QString &key)
{
    return std::any_of(command.options.begin(), command.options.end(), [&key](const Option &option) {
        return isInUse(option) && key == QLatin1String(option.key);
    });
}

std::optional<Error> checkCall(const Command &command, const Arguments &arguments)
{
    const QString name = QLatin1String(command.name);
    if (arguments.operands().size() > command.maxOperands) {
        // A word that stands apart by mistake may be the key of a code.
        const QString word = arguments.operands().at(command.maxOperands);
        return callError(QStringLiteral("%1 is one word too many for '%2'")
                             .arg(hasOption(command, QStringLiteral("keyfile"))
                                      ? QStringLiteral("a word (not shown)")
                                      : quoted(word),
                                  name));
    }
    for (const QString &key : arguments.keys()) {
        if (!command.takesParameters && !hasOption(command, key))
            return unknownOption(command, arguments, key);
    }
    for (const Option &option : command.options) {
        if (option.isRequired && arguments.value(QLatin1String(option.key)).isEmpty()) {
            return callError(
                QLatin1String(option.key),
                QStringLiteral("is missing (usage: j6tool %1 %2)").arg(name, QLatin1String(command.usage)));
        }
    }
    return std::nullopt;
}

Result<TableFormat> formatOption(const Arguments &arguments)
{
    const QString key = QStringLiteral("format");
    const QString format = arguments.value(key);
    if (!arguments.contains(key) || format == QLatin1String("table"))
        return TableFormat::Aligned;
    if (format == QLatin1String("csv"))
        return TableFormat::Csv;
    if (format == QLatin1String("json"))
        return TableFormat::Json;
    return callError(key, QStringLiteral("%1 is none of table, csv, json").arg(quoted(format)));
}

} // namespace j6tool
