// SPDX-License-Identifier: MIT
#ifndef CSETTINGSFILE_H
#define CSETTINGSFILE_H

#include <j6Core_export.h>

#include <QByteArray>
#include <QLocale>
#include <QSettings>
#include <QString>
#include <QVariant>

/**
 * @brief The settings store of a tool: entries addressed by section and key, typed, read with a default.
 *
 * An entry's QSettings key is the section, "/" and the key: section "Common" and key "applanguage" are
 * Common/applanguage, in an INI file the line `applanguage=` below `[Common]`. With an empty section the key
 * begins with "/"; QSettings drops that, and its INI form shows such entries below `[General]`. A section
 * that is called "General" is another one, `[%General]` in the file.
 *
 * | written by             | stored as                                                                    |
 * |------------------------|------------------------------------------------------------------------------|
 * | setString              | the string                                                                   |
 * | setIntegerValue        | a QVariant with the int; decimal text in an INI file                         |
 * | setUnsignedIntValue    | the string "0x" and exactly 8 lower-case hexadecimal digits                  |
 * | setUnsignedLongIntValue| the string "0x" and exactly 16 lower-case hexadecimal digits                 |
 * | setDoubleValue         | a QVariant with the double; in an INI file the shortest text that reads back |
 * | setBoolean             | a QVariant with the bool; "true" or "false" in an INI file                   |
 * | setLocale              | the string QLocale::name(), for example "de_DE"                              |
 * | setByteArray           | a QVariant with the bytes, and the version as a string at key + "_version"   |
 * | setValue               | the QVariant                                                                 |
 *
 * Reading is tolerant: an entry has the type that was stored as long as the value is in memory, and is a
 * string once it comes out of an INI file; the readers take both. No operation reports an error: a missing
 * entry, one of a type that the reader does not take, and a text that does not convert give the caller's
 * default. Numbers in texts are those of the C locale, whatever the default locale is.
 *
 * Every operation here is virtual, so that a tool may redirect its storage by deriving. Those that rest on
 * another one call it through its virtual slot: the short setLocale() and locale() call the long ones,
 * setUnsignedIntValue() and setUnsignedLongIntValue() call setString(), setByteArray() calls setValue() and
 * setString(), byteArray() calls string() and value(). The others go to QSettings, and setString() and its
 * companions not through the virtual setValue(). No slot is ever added between the present ones.
 *
 * setValue() and value() hide those of QSettings with a key alone, and that is on purpose: a forgotten
 * default or value would otherwise make a key of the section. Ask for those as
 * `settings.QSettings::value(QStringLiteral("Common/applanguage"))`.
 *
 * An INI file that begins with a UTF-8 byte-order mark is read as UTF-8, at once and as a whole. Like any
 * other it is written in ASCII, with escapes for all else, and without the mark. QSettings of Qt 5.15 takes
 * the mark for a part of the first line as well: that is misread if it is an entry, and where it is anything
 * else status() is QSettings::FormatError from the beginning. A file that gets its mark from another program
 * while it is open here, or that was opened earlier or elsewhere in this process, is not read as UTF-8; what
 * is not ASCII is misread then, and written so.
 *
 * File, format, groups, status() and the time of writing are those of QSettings: changes reach the file at
 * the latest when the object is destroyed, in one step; sync() writes them at once. The class has no
 * meta-object of its own.
 *
 * @warning QSettings decodes entries of the form `@Variant(...)` and `@DateTime(...)` while it reads an INI
 * file, even if nobody asks for them, and Qt 5.15 is not safe there: a file of a few bytes that declares a
 * list of 2^28 values ends the process for want of memory, and deeply nested lists overflow its stack. A file
 * of unknown origin is to be checked before it is opened. All other malformed contents are harmless.
 *
 * @warning On a disk that fails QSettings of Qt 5.15 is not safe either, and status() does not tell it: where
 * the disk is full when the last 16 KiB of the file are written, the file loses these, a small one all that
 * it holds; and what could not be read, for an input error or because the file could not be looked up, is
 * missing in what is written next. A file that another program shortens while it is read counts as whole as
 * far as it goes, also with half the text of its last entry: programs are to replace the file, as QSettings
 * does. Settings that must not be lost are changed in a copy, which replaces the file when it has been read
 * back. In all other cases the file is wholly the old or wholly the new one, also when the process is killed;
 * a killed one may leave a lock (`.lock` behind the name), for which the next one that writes waits half a
 * minute at most.
 *
 * One object per thread; several objects on one file, in one or several processes, are synchronised by
 * QSettings.
 *
 * @code
 * CSettingsFile settings(fileName, QSettings::IniFormat, nullptr);
 * settings.setUnsignedIntValue("Drive", "address", 42);       // [Drive] address=0x0000002a
 * settings.unsignedIntValue("Drive", "address", 7);           // 42
 * settings.unsignedIntValue("Drive", "no such key", 7);       // 7
 * settings.setByteArray("Scope", "layout", layout, "1.0");
 * settings.byteArray("Scope", "layout", "1.1");               // empty: written by an older layout
 * settings.locale(QLocale(QLocale::English));                 // the language of the user interface
 * @endcode
 */
class J6CORE_EXPORT CSettingsFile : public QSettings
{
public:
    /// @brief Opens the settings of this file as `QSettings(fileName, format, parent)` does: a missing file
    /// is no error, the directory and the file are made when something is written.
    CSettingsFile(const QString &fileName, QSettings::Format format, QObject *parent);
    /// @brief Writes what has not been written yet, as QSettings does.
    ~CSettingsFile() override;

    virtual void setString(const QString &section, const QString &key, const QString &value);
    /// @brief The entry as text, QVariant::toString(): empty for a list of several strings.
    virtual QString string(const QString &section, const QString &key, const QString &defaultValue) const;

#ifdef _MSC_VER
    // Compilers with Microsoft's ABI give overloads their slots in reverse order: declared so, each has the
    // slot that it has below.
    virtual void setLocale(const QLocale &locale);
    virtual void setLocale(const QString &section, const QString &key, const QLocale &locale);
    virtual QLocale locale(const QLocale &defaultLocale) const;
    virtual QLocale locale(const QString &section, const QString &key, const QLocale &defaultLocale) const;
#else
    /// @brief Stores the locale's language and country; its script and number options are not kept.
    virtual void setLocale(const QString &section, const QString &key, const QLocale &locale);
    /// @brief Stores the language of the user interface: section "Common", key "applanguage".
    virtual void setLocale(const QLocale &locale);
    /// @brief The locale that the entry names; the default if the entry is missing or its text is empty. A
    /// text that names none gives the C locale. The number options of either are replaced by
    /// QLocale::OmitGroupSeparator, so that printed numbers have no thousands separators.
    virtual QLocale locale(const QString &section, const QString &key, const QLocale &defaultLocale) const;
    /// @brief The language of the user interface: section "Common", key "applanguage".
    virtual QLocale locale(const QLocale &defaultLocale) const;
#endif

    virtual void setIntegerValue(const QString &section, const QString &key, int value);
    /// @brief A decimal text, an int, or a double truncated towards zero. A double outside `int` and a NaN
    /// give the default, as a text with anything but a decimal number does ("0x10", "12abc", "2.5").
    virtual int integerValue(const QString &section, const QString &key, int defaultValue) const;

    virtual void setUnsignedIntValue(const QString &section, const QString &key, unsigned int value);
    /// @brief An unsigned int or a text: hexadecimal behind "0x", octal behind a leading "0", else decimal.
    /// An int is another type and gives the default.
    virtual unsigned int unsignedIntValue(const QString &section, const QString &key,
                                          unsigned int defaultValue) const;

    virtual void setUnsignedLongIntValue(const QString &section, const QString &key,
                                         unsigned long long value);
    /// @brief An unsigned 64-bit number or a text as for unsignedIntValue(). Any other integer type gives the
    /// default.
    virtual unsigned long long unsignedLongIntValue(const QString &section, const QString &key,
                                                    unsigned long long defaultValue) const;

    virtual void setDoubleValue(const QString &section, const QString &key, const double &value);
    /// @brief A double, an int, or a text with a decimal point, an exponent, "nan" or "inf".
    virtual double doubleValue(const QString &section, const QString &key, const double &defaultValue) const;

    virtual void setBoolean(const QString &section, const QString &key, bool value);
    /// @brief QVariant::toBool() of any entry: of texts only "false" in any case, "0" and the empty one are
    /// false.
    virtual bool boolean(const QString &section, const QString &key, bool defaultValue) const;

    /// @brief Stores a value of any type that QSettings can store.
    virtual void setValue(const QString &section, const QString &key, const QVariant &value);
    /// @brief The entry as it is held: with its own type, or a string (or a list of strings) from an INI
    /// file.
    virtual QVariant value(const QString &section, const QString &key, const QVariant &defaultValue) const;

    virtual bool containsEntry(const QString &section, const QString &key) const;

    /// @brief Stores bytes and the version of their layout. Inverse of byteArray().
    virtual void setByteArray(const QString &section, const QString &key, const QByteArray &data,
                              const QString &version);
    /// @brief The bytes, if they were stored with exactly this version; else empty. Bytes without a version
    /// match the version "0.0".
    virtual QByteArray byteArray(const QString &section, const QString &key, const QString &version) const;

private:
    Q_DISABLE_COPY(CSettingsFile)
};

#endif // CSETTINGSFILE_H
