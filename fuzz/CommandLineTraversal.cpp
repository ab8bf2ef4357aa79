// SPDX-License-Identifier: MIT
// Any lines as the arguments of a program, the first one its name: as a list, and as the arguments of an
// application, in groups behind a prefix.
#include "Traversals.h"

#include <CCommandLineParser.h>

#include <InputReader.h>
#include <Properties.h>

#include <QCoreApplication>

#include <clocale>
#include <string>
#include <vector>

namespace {

QMap<QString, QString> plainOptions(const QStringList &arguments)
{
    QMap<QString, QString> options;
    for (const QString &argument : arguments) {
        const int sign = argument.indexOf(QLatin1Char('='));
        if (sign > 0)
            options[argument.left(sign)] = argument.mid(sign + 1);
    }
    return options;
}

QMap<QString, QString> plainGroups(const QStringList &arguments, const QString &prefix)
{
    QMap<QString, QString> groups;
    for (int i = 1; i < arguments.size() && !prefix.isEmpty(); ++i) {
        if (!arguments.at(i).startsWith(prefix))
            continue;
        QStringList values;
        for (int j = i + 1; j < arguments.size() && !arguments.at(j).startsWith(QLatin1Char('-')); ++j)
            values.append(arguments.at(j));
        groups[arguments.at(i)] = values.join(QLatin1Char(' ')).trimmed();
        i += values.size();
    }
    return groups;
}

void checkNumbers(const CCommandLineParser &options)
{
    const auto text = [&options](const char *key) { return options.value(QLatin1String(key)); };
    const auto addressOr = [&options, &text](const char *key) {
        return options.contains(QLatin1String(key)) ? text(key).toInt() : -1;
    };
    require(options.colorMode() == text("colormode").toInt() && options.currentUnit() == text("cu").toInt()
                && options.userLevel() == text("level").toInt(),
            "a text that is no number is 0");
    require(options.comAddress() == text("comadr").toUInt()
                && options.odictClass() == text("devtype").toUInt()
                && options.deviceFunction() == text("df").toUInt(),
            "a text that is no number without a sign is 0");
    require(options.driveAddress() == addressOr("drvadr") && options.powerAddress() == addressOr("powadr"),
            "an address is -1 only when it is absent or says so");
    const QString port = text("port");
    const int base = port.startsWith(QLatin1String("0x")) ? 16 : 10;
    require(options.port() == port.toInt(nullptr, base), "a port is hexadecimal behind 0x", port);
}

void checkOptions(const CCommandLineParser &options, const QMap<QString, QString> &expected)
{
    require(options.count() == expected.size(), "every key counts once");
    for (auto option = expected.begin(); option != expected.end(); ++option) {
        require(options.contains(option.key()), "a key that was given is there", option.key());
        require(options.value(option.key()) == option.value(), "the last value of a key counts",
                option.key());
    }
    require(options.serverName() == expected.value(QStringLiteral("server"))
                && options.abAddress() == expected.value(QStringLiteral("abadr"))
                && options.ip() == expected.value(QStringLiteral("ip")),
            "a text is the value of its key");
    checkNumbers(options);
    const QString language = expected.value(QStringLiteral("lang"));
    require(options.language() == (language.isEmpty() ? QLocale::c() : QLocale(language)),
            "the language is the one that Qt knows", language);
    CCommandLineParser inGerman(options);
    require(inGerman.setLanguage(QLocale(QLocale::German))
                && inGerman.language().language() == QLocale::German
                && options.language() == (language.isEmpty() ? QLocale::c() : QLocale(language)),
            "a language is set in one copy only");
}

void checkList(QStringList arguments, std::size_t size)
{
    const QStringList given = arguments;
    const auto options = bounded(4096 + 64 * size, "arguments cost memory in proportion to them",
                                 [&arguments] { return CCommandLineParser::argumentsMap(&arguments); });
    require(options == plainOptions(given), "each argument is split at its first sign");
    require(arguments == given, "the list is not changed");
    checkOptions(CCommandLineParser(&arguments), options);
}

// Makes the lines the arguments of an application. It takes the locale from the environment when it is made.
void checkApplication(const QByteArrayList &lines, const QString &prefix)
{
    std::vector<std::string> texts;
    for (const QByteArray &line : lines)
        texts.emplace_back(line.constData()); // up to a NUL: there is none in an argument
    std::vector<char *> pointers;
    pointers.reserve(texts.size() + 1);
    for (std::string &text : texts)
        pointers.push_back(text.data());
    auto count = static_cast<int>(pointers.size());
    pointers.push_back(nullptr);

    const std::string locale = std::setlocale(LC_ALL, nullptr);
    {
        const QCoreApplication application(count, pointers.data());
        std::setlocale(LC_ALL, locale.c_str());
        const QStringList arguments = QCoreApplication::arguments();
        require(CCommandLineParser::argumentsMap() == plainOptions(arguments),
                "the application's arguments are options");
        checkOptions(CCommandLineParser(), plainOptions(arguments));
        for (const QString &opener : {prefix, QStringLiteral("-"), arguments.last()})
            require(CCommandLineParser::argumentsMap(opener) == plainGroups(arguments, opener),
                    "a prefix opens groups", opener);
    }
}

} // namespace

void traverseCommandLine(const QByteArray &input)
{
    constexpr int mostApplicationBytes = 4096;
    const QString text = InputReader(input).takeText();
    const QStringList arguments = text.split(QLatin1Char('\n'));
    checkList(arguments, static_cast<std::size_t>(text.size()) * sizeof(QChar)
                             + 64 * static_cast<std::size_t>(arguments.size()));
    require(CCommandLineParser::argumentsMap(static_cast<QStringList *>(nullptr)).isEmpty()
                && CCommandLineParser(nullptr).count() == 0,
            "without a list there are no options");
    if (input.size() <= mostApplicationBytes)
        checkApplication(input.split('\n'), arguments.first());
}
