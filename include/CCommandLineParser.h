// SPDX-License-Identifier: MIT
#ifndef CCOMMANDLINEPARSER_H
#define CCOMMANDLINEPARSER_H

#include <j6Core_export.h>

#include <QLocale>
#include <QMap>
#include <QString>
#include <QStringList>

/**
 * @brief The start-up options that all tools of the family share: key=value arguments with typed accessors.
 *
 * Every argument, the program path included, is split at its first "=". The key is the text before it, the
 * value everything behind it, further "=" included; nothing is trimmed, no leading dash is removed, and upper
 * and lower case differ. An argument without "=" or with nothing before it is ignored. Of a key given twice
 * the last value counts.
 *
 * The accessors read fixed keys. Numbers are decimal, independent of the locale, with an optional sign and
 * blanks around them; a text that is no such number or does not fit the type gives 0, and so does an empty
 * text. The meaning of the numbers belongs to the tools. Nothing is logged.
 *
 * The object is built at start-up and read afterwards, then from any thread; it has no lock.
 *
 * @code
 * QStringList arguments = {"tool", "server=10.0.0.1", "level=16", "port=0x1F"};
 * const CCommandLineParser options(&arguments);
 * options.count();        // 3
 * options.serverName();   // "10.0.0.1"
 * options.userLevel();    // 16
 * options.port();         // 31
 * options.driveAddress(); // -1, absent
 * @endcode
 */
class J6CORE_EXPORT CCommandLineParser
{
public:
    /// @brief Reads the arguments of the application, argumentsMap(). There should be a QCoreApplication:
    /// without one Qt warns and the options are empty.
    CCommandLineParser();
    /// @brief Reads these arguments, argumentsMap(QStringList *); null is as an empty list.
    explicit CCommandLineParser(QStringList *arguments);
    CCommandLineParser(const CCommandLineParser &other) = default;
    CCommandLineParser(CCommandLineParser &&other) = default;
    CCommandLineParser &operator=(const CCommandLineParser &other) = default;
    CCommandLineParser &operator=(CCommandLineParser &&other) = default;
    virtual ~CCommandLineParser();

    /// @brief The key=value options of the application's arguments.
    static QMap<QString, QString> argumentsMap();

    /// @brief The key=value options of a list; the list is not changed. Null and an empty list give an empty
    /// map.
    static QMap<QString, QString> argumentsMap(QStringList *arguments);

    /**
     * @brief The options of the application's arguments in groups: an option argument and the values behind
     * it.
     *
     * An argument that starts with `prefix` (upper and lower case differ; the program path is not examined)
     * opens a group. The arguments behind it are its value, joined by one blank and trimmed as a whole, up to
     * one that starts with "-", whatever the prefix is: that one may open the next group. Other arguments are
     * passed over. The key is the whole opening argument. Of equal keys the last counts; an empty prefix
     * gives an empty map.
     *
     * With the prefix "-", the arguments `tool -f a b -g` give "-f": "a b" and "-g": "".
     */
    static QMap<QString, QString> argumentsMap(const QString &prefix);

    /// @brief The number of keys.
    int count() const;
    /// @brief Whether the key was given, with an empty value or another.
    bool contains(const QString &key) const;
    /// @brief The value of a key; empty if the key is absent.
    QString value(const QString &key) const;

    /// @brief "server": name or address of the server; empty if absent.
    QString serverName() const;
    /// @brief "abadr": an address as text; empty if absent.
    QString abAddress() const;
    /// @brief "ip": an IP address as text, not checked; empty if absent.
    QString ip() const;
    /// @brief "colormode": 0 if absent.
    int colorMode() const;
    /// @brief "comadr": 0 if absent.
    unsigned int comAddress() const;
    /// @brief "cu": the current unit; 0 if absent.
    int currentUnit() const;
    /// @brief "level": the user level (Nj6UserLevel::eUserLevel_t); 0 if absent.
    int userLevel() const;
    /// @brief "lang": `QLocale(text)`, for example of "de" or "de_DE". The C locale if the text is absent,
    /// empty or no locale that Qt knows.
    QLocale language() const;
    /// @brief "devtype": the object dictionary class; 0 if absent.
    unsigned int odictClass() const;
    /// @brief "drvadr": the drive's address; -1 if absent, but 0 if it is no number.
    int driveAddress() const;
    /// @brief "powadr": the power unit's address; -1 if absent, but 0 if it is no number.
    int powerAddress() const;
    /// @brief "df": the device function; 0 if absent, unlike the addresses.
    unsigned int deviceFunction() const;
    /// @brief "port": hexadecimal if the text begins with "0x" (not "0X"), else decimal; 0 if absent.
    int port() const;

    /// @brief Replaces "lang" by the language of `locale`: the first two characters of its name ("de" of
    /// "de_DE"), so that a language of three letters is cut. Always true.
    bool setLanguage(const QLocale &locale);

private:
    QMap<QString, QString> mArguments;
};

#endif // CCOMMANDLINEPARSER_H
