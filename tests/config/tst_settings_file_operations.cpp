// SPDX-License-Identifier: MIT
// What a tool that redirects its storage by deriving relies on: which operations are virtual, in which order,
// and which calls which.
#include <CSettingsFile.h>

#include "SettingsIni.h"

#include <LoggedTest.h>

#include <QTest>

#include <array>
#include <cstddef>
#include <cstring>
#include <type_traits>
#include <utility>
#include <vector>

static_assert(std::is_base_of<QSettings, CSettingsFile>::value, "it is a QSettings");
static_assert(sizeof(CSettingsFile) == sizeof(QSettings), "it adds no data");
static_assert(std::has_virtual_destructor<CSettingsFile>::value, "may be derived from");

namespace {

using uint64 = unsigned long long;

const QString section = QStringLiteral("S");
const QString key = QStringLiteral("k");

// Whether settings.value(...) and settings.setValue(...) take these arguments.
template<typename... Arguments>
class Takes
{
    template<typename Class>
    static auto readable(int)
        -> decltype(std::declval<const Class &>().value(std::declval<Arguments>()...), std::true_type());
    template<typename Class>
    static std::false_type readable(...);
    template<typename Class>
    static auto writable(int)
        -> decltype(std::declval<Class &>().setValue(std::declval<Arguments>()...), std::true_type());
    template<typename Class>
    static std::false_type writable(...);

public:
    static constexpr bool inValue = decltype(readable<CSettingsFile>(0))::value;
    static constexpr bool inSetValue = decltype(writable<CSettingsFile>(0))::value;
};

using Text = const QString &;
static_assert(Takes<Text, Text, QVariant>::inValue && Takes<Text, Text, QVariant>::inSetValue,
              "section, key and value or default");
static_assert(!Takes<Text>::inValue && !Takes<Text, Text>::inValue && !Takes<Text, QVariant>::inValue,
              "a forgotten default must not make a key of the section");
static_assert(!Takes<Text, Text>::inSetValue && !Takes<Text, QVariant>::inSetValue,
              "a forgotten value must not make a key of the section");

// The pointers to all operations with the types that callers were compiled for.
using Settings = CSettingsFile;
constexpr void (Settings::*setLocaleAt)(Text, Text, const QLocale &) = &Settings::setLocale;
constexpr void (Settings::*setLanguage)(const QLocale &) = &Settings::setLocale;
constexpr QLocale (Settings::*localeAt)(Text, Text, const QLocale &) const = &Settings::locale;
constexpr QLocale (Settings::*language)(const QLocale &) const = &Settings::locale;
constexpr void (Settings::*setString)(Text, Text, Text) = &Settings::setString;
constexpr QString (Settings::*string)(Text, Text, Text) const = &Settings::string;
constexpr void (Settings::*setInteger)(Text, Text, int) = &Settings::setIntegerValue;
constexpr int (Settings::*integer)(Text, Text, int) const = &Settings::integerValue;
constexpr void (Settings::*setUnsigned)(Text, Text, unsigned int) = &Settings::setUnsignedIntValue;
constexpr unsigned int (Settings::*unsignedInteger)(Text, Text,
                                                    unsigned int) const = &Settings::unsignedIntValue;
constexpr void (Settings::*setUnsignedLong)(Text, Text, uint64) = &Settings::setUnsignedLongIntValue;
constexpr uint64 (Settings::*unsignedLong)(Text, Text, uint64) const = &Settings::unsignedLongIntValue;
constexpr void (Settings::*setDouble)(Text, Text, const double &) = &Settings::setDoubleValue;
constexpr double (Settings::*doubleNumber)(Text, Text, const double &) const = &Settings::doubleValue;
constexpr void (Settings::*setBoolean)(Text, Text, bool) = &Settings::setBoolean;
constexpr bool (Settings::*boolean)(Text, Text, bool) const = &Settings::boolean;
constexpr void (Settings::*setValue)(Text, Text, const QVariant &) = &Settings::setValue;
constexpr QVariant (Settings::*value)(Text, Text, const QVariant &) const = &Settings::value;
constexpr bool (Settings::*containsEntry)(Text, Text) const = &Settings::containsEntry;
constexpr void (Settings::*setByteArray)(Text, Text, const QByteArray &, Text) = &Settings::setByteArray;
constexpr QByteArray (Settings::*byteArray)(Text, Text, Text) const = &Settings::byteArray;

#if defined(__GNUC__) && (defined(__x86_64__) || defined(__i386__))
#define J6_TEST_KNOWS_SLOTS

// In the Itanium C++ ABI a pointer to a virtual member function holds 1 plus the offset of its slot.
template<typename Member>
std::ptrdiff_t slotOf(Member member)
{
    std::array<std::ptrdiff_t, 2> words = {};
    static_assert(sizeof(member) == sizeof(words), "the pointer's word and the adjustment of the object");
    std::memcpy(words.data(), &member, sizeof(member));
    constexpr std::ptrdiff_t slotSize = sizeof(void *);
    return words[0] % slotSize == 1 ? words[0] / slotSize : -1;
}

// Opens what QObject keeps to its descendants.
class ObjectSlots : public QObject
{
public:
    static std::ptrdiff_t last() { return slotOf(&ObjectSlots::disconnectNotify); }
};
#endif

// Tells which slots are called, and goes on to the operations themselves.
class Recorder : public CSettingsFile
{
public:
    using CSettingsFile::CSettingsFile;

    void setString(Text entrySection, Text entryKey, Text stored) override
    {
        note("setString", entrySection, entryKey, stored);
        CSettingsFile::setString(entrySection, entryKey, stored);
    }
    QString string(Text entrySection, Text entryKey, Text defaultValue) const override
    {
        note("string", entrySection, entryKey, defaultValue);
        return CSettingsFile::string(entrySection, entryKey, defaultValue);
    }
    using CSettingsFile::setLocale;
    void setLocale(Text entrySection, Text entryKey, const QLocale &stored) override
    {
        note("setLocale", entrySection, entryKey, stored.name());
        CSettingsFile::setLocale(entrySection, entryKey, stored);
    }
    using CSettingsFile::locale;
    QLocale locale(Text entrySection, Text entryKey, const QLocale &defaultLocale) const override
    {
        note("locale", entrySection, entryKey, defaultLocale.name());
        return CSettingsFile::locale(entrySection, entryKey, defaultLocale);
    }
    void setValue(Text entrySection, Text entryKey, const QVariant &stored) override
    {
        note("setValue", entrySection, entryKey, stored.toString());
        CSettingsFile::setValue(entrySection, entryKey, stored);
    }
    QVariant value(Text entrySection, Text entryKey, const QVariant &defaultValue) const override
    {
        note("value", entrySection, entryKey,
             defaultValue.isValid() ? defaultValue.toString() : QStringLiteral("invalid"));
        return CSettingsFile::value(entrySection, entryKey, defaultValue);
    }

    QStringList takeCalls() { return std::exchange(mCalls, QStringList()); }

private:
    void note(const char *operation, Text entrySection, Text entryKey, Text argument) const
    {
        mCalls +=
            QStringLiteral("%1(%2, %3, %4)").arg(QLatin1String(operation), entrySection, entryKey, argument);
    }

    mutable QStringList mCalls;
};

QStringList calls(std::initializer_list<const char *> texts)
{
    QStringList list;
    for (const char *text : texts)
        list += QString::fromLatin1(text);
    return list;
}

// A tool whose settings are in memory: every operation that rests on these two finds them.
class InMemory : public CSettingsFile
{
public:
    using CSettingsFile::CSettingsFile;

    void setString(Text entrySection, Text entryKey, Text stored) override
    {
        mTexts.insert(entrySection + QLatin1Char('|') + entryKey, stored);
    }
    QString string(Text entrySection, Text entryKey, Text defaultValue) const override
    {
        return mTexts.value(entrySection + QLatin1Char('|') + entryKey, defaultValue);
    }

private:
    QMap<QString, QString> mTexts;
};

} // namespace

class tst_settings_file_operations : public LoggedTest
{
    Q_OBJECT

private Q_SLOTS:
    void slotsStandInTheirOrder();
    void everyOperationIsCalledThroughItsSlot();
    void languageGoesThroughTheLongForms();
    void unsignedNumbersAreWrittenThroughSetString();
    void unsignedNumbersAreReadFromTheSettingsThemselves();
    void bytesGoThroughValueAndString();
    void bytesOfAnotherVersionAreNotRead();
    void allOthersCallNoOtherSlot();
    void destroyedThroughItsBase();
    void hiddenFormsAreReachable();

private:
    SettingsIni mIni;
};

void tst_settings_file_operations::slotsStandInTheirOrder()
{
#ifdef J6_TEST_KNOWS_SLOTS
    const std::vector<std::ptrdiff_t> slots = {
        slotOf(setString),   slotOf(string),          slotOf(setLocaleAt),     slotOf(setLanguage),
        slotOf(localeAt),    slotOf(language),        slotOf(setInteger),      slotOf(integer),
        slotOf(setUnsigned), slotOf(unsignedInteger), slotOf(setUnsignedLong), slotOf(unsignedLong),
        slotOf(setDouble),   slotOf(doubleNumber),    slotOf(setBoolean),      slotOf(boolean),
        slotOf(setValue),    slotOf(value),           slotOf(containsEntry),   slotOf(setByteArray),
        slotOf(byteArray)};
    QCOMPARE(slots.size(), std::size_t(21));
    // QSettings adds no slot to those of QObject.
    std::ptrdiff_t expected = ObjectSlots::last();
    for (const std::ptrdiff_t slot : slots)
        QCOMPARE(slot, ++expected);
#else
    QSKIP("The form of member pointers is not known here.");
#endif
}

void tst_settings_file_operations::everyOperationIsCalledThroughItsSlot()
{
    // Through pointers to the members of the base, as a caller compiled against it does.
    InMemory derived(mIni.path(QStringLiteral("memory.ini")), QSettings::IniFormat, nullptr);
    CSettingsFile &settings = derived;
    (settings.*setString)(section, key, QStringLiteral("kept in memory"));
    QCOMPARE((settings.*string)(section, key, QString()), QStringLiteral("kept in memory"));
    QVERIFY(!(settings.*containsEntry)(section, key));
    (settings.*setUnsigned)(section, QStringLiteral("u"), 42);
    QCOMPARE(settings.string(section, QStringLiteral("u"), QString()), QStringLiteral("0x0000002a"));
    (settings.*setUnsignedLong)(section, QStringLiteral("v"), 42);
    QCOMPARE(settings.string(section, QStringLiteral("v"), QString()), QStringLiteral("0x000000000000002a"));
    (settings.*setByteArray)(section, QStringLiteral("b"), QByteArrayLiteral("x"), QStringLiteral("2.0"));
    QCOMPARE(settings.string(section, QStringLiteral("b_version"), QString()), QStringLiteral("2.0"));
    QCOMPARE((settings.*byteArray)(section, QStringLiteral("b"), QStringLiteral("2.0")), QByteArray("x"));
    QCOMPARE(settings.allKeys(), QStringList{QStringLiteral("S/b")});
}

void tst_settings_file_operations::languageGoesThroughTheLongForms()
{
    Recorder settings(mIni.path(), QSettings::IniFormat, nullptr);
    settings.setLocale(QLocale(QStringLiteral("de_DE")));
    QCOMPARE(settings.takeCalls(), calls({"setLocale(Common, applanguage, de_DE)"}));
    QCOMPARE(settings.locale(QLocale(QStringLiteral("fr_FR"))).name(), QStringLiteral("de_DE"));
    QCOMPARE(settings.takeCalls(), calls({"locale(Common, applanguage, fr_FR)"}));
}

void tst_settings_file_operations::unsignedNumbersAreWrittenThroughSetString()
{
    Recorder settings(mIni.path(), QSettings::IniFormat, nullptr);
    settings.setUnsignedIntValue(section, key, 42);
    QCOMPARE(settings.takeCalls(), calls({"setString(S, k, 0x0000002a)"}));
    settings.setUnsignedLongIntValue(section, key, 42);
    QCOMPARE(settings.takeCalls(), calls({"setString(S, k, 0x000000000000002a)"}));
}

void tst_settings_file_operations::unsignedNumbersAreReadFromTheSettingsThemselves()
{
    Recorder settings(mIni.path(), QSettings::IniFormat, nullptr);
    settings.QSettings::setValue(QStringLiteral("S/k"), QStringLiteral("0x2a"));
    QCOMPARE(settings.unsignedIntValue(section, key, 7), 42U);
    QCOMPARE(settings.unsignedLongIntValue(section, key, 7), uint64(42));
    QCOMPARE(settings.takeCalls(), QStringList());
}

void tst_settings_file_operations::bytesGoThroughValueAndString()
{
    Recorder settings(mIni.path(), QSettings::IniFormat, nullptr);
    settings.setByteArray(section, key, QByteArrayLiteral("data"), QStringLiteral("1.0"));
    QCOMPARE(settings.takeCalls(), calls({"setValue(S, k, data)", "setString(S, k_version, 1.0)"}));
    QCOMPARE(settings.byteArray(section, key, QStringLiteral("1.0")), QByteArray("data"));
    QCOMPARE(settings.takeCalls(), calls({"string(S, k_version, 0.0)", "value(S, k, invalid)"}));
}

void tst_settings_file_operations::bytesOfAnotherVersionAreNotRead()
{
    Recorder settings(mIni.path(), QSettings::IniFormat, nullptr);
    settings.setByteArray(section, key, QByteArrayLiteral("data"), QStringLiteral("1.0"));
    settings.takeCalls();
    QCOMPARE(settings.byteArray(section, key, QStringLiteral("1.1")), QByteArray());
    QCOMPARE(settings.takeCalls(), calls({"string(S, k_version, 0.0)"}));
}

void tst_settings_file_operations::allOthersCallNoOtherSlot()
{
    Recorder settings(mIni.path(), QSettings::IniFormat, nullptr);
    settings.setIntegerValue(section, key, 1);
    QCOMPARE(settings.integerValue(section, key, 7), 1);
    settings.setDoubleValue(section, key, 1.5);
    QVERIFY(settings.doubleValue(section, key, 7.0) == 1.5);
    settings.setBoolean(section, key, true);
    QVERIFY(settings.boolean(section, key, false));
    QVERIFY(settings.containsEntry(section, key));
    QCOMPARE(settings.takeCalls(), QStringList());

    settings.setString(section, key, QStringLiteral("x"));
    QCOMPARE(settings.string(section, key, QString()), QStringLiteral("x"));
    settings.setLocale(section, key, QLocale::c());
    QCOMPARE(settings.locale(section, key, QLocale::c()).name(), QStringLiteral("C"));
    settings.setValue(section, key, QVariant(1));
    QCOMPARE(settings.value(section, key, QVariant(2)), QVariant(1));
    QCOMPARE(settings.takeCalls(), calls({"setString(S, k, x)", "string(S, k, )", "setLocale(S, k, C)",
                                          "locale(S, k, C)", "setValue(S, k, 1)", "value(S, k, 2)"}));
}

void tst_settings_file_operations::destroyedThroughItsBase()
{
    {
        const std::unique_ptr<QSettings> settings = mIni.open(QStringLiteral("base.ini"));
        settings->setValue(QStringLiteral("S/k"), 1);
    }
    QCOMPARE(mIni.contents(QStringLiteral("base.ini")), QByteArray("[S]\nk=1\n"));
}

void tst_settings_file_operations::hiddenFormsAreReachable()
{
    const std::unique_ptr<CSettingsFile> settings = mIni.open(QStringLiteral("hidden.ini"));
    settings->QSettings::setValue(QStringLiteral("Common/applanguage"), QStringLiteral("de_DE"));
    QCOMPARE(settings->QSettings::value(QStringLiteral("Common/applanguage")),
             QVariant(QStringLiteral("de_DE")));
    QCOMPARE(settings->locale(QLocale::c()).name(), QStringLiteral("de_DE"));
}

QTEST_GUILESS_MAIN(tst_settings_file_operations)
#include "tst_settings_file_operations.moc"
