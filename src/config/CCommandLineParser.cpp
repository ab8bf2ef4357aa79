// SPDX-License-Identifier: MIT
#include <CCommandLineParser.h>

#include <QCoreApplication>

namespace {

constexpr QLatin1String languageKey("lang", 4);

// The values behind the option that opens a group; `next` moves to the first argument that is none of them.
QString groupValue(const QStringList &arguments, int &next)
{
    QString value;
    for (; next < arguments.size() && !arguments.at(next).startsWith(QLatin1Char('-')); ++next)
        value += arguments.at(next) + QLatin1Char(' ');
    return value.trimmed();
}

} // namespace

CCommandLineParser::CCommandLineParser() : mArguments(argumentsMap()) {}

CCommandLineParser::CCommandLineParser(QStringList *arguments) : mArguments(argumentsMap(arguments)) {}

CCommandLineParser::~CCommandLineParser() = default;

QMap<QString, QString> CCommandLineParser::argumentsMap()
{
    QStringList arguments = QCoreApplication::arguments();
    return argumentsMap(&arguments);
}

QMap<QString, QString> CCommandLineParser::argumentsMap(QStringList *arguments)
{
    QMap<QString, QString> map;
    if (!arguments)
        return map;
    for (const QString &argument : qAsConst(*arguments)) {
        const int separator = argument.indexOf(QLatin1Char('='));
        if (separator > 0)
            map.insert(argument.left(separator), argument.mid(separator + 1));
    }
    return map;
}

QMap<QString, QString> CCommandLineParser::argumentsMap(const QString &prefix)
{
    QMap<QString, QString> map;
    if (prefix.isEmpty())
        return map;
    const QStringList arguments = QCoreApplication::arguments();
    int next = 1;
    while (next < arguments.size()) {
        const QString &argument = arguments.at(next++);
        if (argument.startsWith(prefix))
            map.insert(argument, groupValue(arguments, next));
    }
    return map;
}

int CCommandLineParser::count() const
{
    return mArguments.count();
}

bool CCommandLineParser::contains(const QString &key) const
{
    return mArguments.contains(key);
}

QString CCommandLineParser::value(const QString &key) const
{
    return mArguments.value(key);
}

QString CCommandLineParser::serverName() const
{
    return value(QStringLiteral("server"));
}

QString CCommandLineParser::abAddress() const
{
    return value(QStringLiteral("abadr"));
}

QString CCommandLineParser::ip() const
{
    return value(QStringLiteral("ip"));
}

int CCommandLineParser::colorMode() const
{
    return value(QStringLiteral("colormode")).toInt();
}

unsigned int CCommandLineParser::comAddress() const
{
    return value(QStringLiteral("comadr")).toUInt();
}

int CCommandLineParser::currentUnit() const
{
    return value(QStringLiteral("cu")).toInt();
}

int CCommandLineParser::userLevel() const
{
    return value(QStringLiteral("level")).toInt();
}

QLocale CCommandLineParser::language() const
{
    const QString text = value(languageKey);
    return text.isEmpty() ? QLocale(QLocale::C) : QLocale(text);
}

unsigned int CCommandLineParser::odictClass() const
{
    // Absent, the text is a character that does not convert: 0, and not its code 65535.
    return mArguments.value(QStringLiteral("devtype"), QString(QChar(0xFFFF))).toUInt();
}

int CCommandLineParser::driveAddress() const
{
    return mArguments.value(QStringLiteral("drvadr"), QStringLiteral("-1")).toInt();
}

int CCommandLineParser::powerAddress() const
{
    return mArguments.value(QStringLiteral("powadr"), QStringLiteral("-1")).toInt();
}

unsigned int CCommandLineParser::deviceFunction() const
{
    // Absent, the text is one that an unsigned conversion rejects: 0, unlike the addresses.
    return mArguments.value(QStringLiteral("df"), QStringLiteral("-1")).toUInt();
}

int CCommandLineParser::port() const
{
    const QString text = value(QStringLiteral("port"));
    return text.toInt(nullptr, text.startsWith(QLatin1String("0x")) ? 16 : 10);
}

bool CCommandLineParser::setLanguage(const QLocale &locale)
{
    mArguments.insert(languageKey, locale.name().left(2));
    return true;
}
