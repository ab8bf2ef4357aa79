// SPDX-License-Identifier: MIT
#include <CCommandLineParser.h>

#include <LoggedTest.h>

#include <QCoreApplication>
#include <QTest>
#include <QVector>

#include <memory>
#include <type_traits>
#include <vector>

using Options = QMap<QString, QString>;

static_assert(std::has_virtual_destructor<CCommandLineParser>::value, "may be derived from");
static_assert(
    std::is_same<decltype(std::declval<const CCommandLineParser &>().comAddress()), unsigned int>::value
        && std::is_same<decltype(std::declval<const CCommandLineParser &>().port()), int>::value,
    "the results are as wide as the conversions");

Q_DECLARE_METATYPE(Options)

namespace {

// An application with these arguments, the program path first, while this object lives.
class ScopedApplication
{
public:
    explicit ScopedApplication(const QStringList &arguments) : mArgc(arguments.size())
    {
        for (const QString &argument : arguments)
            mTexts.push_back(argument.toLocal8Bit());
        for (QByteArray &text : mTexts)
            mArgv.push_back(text.data());
        mArgv.push_back(nullptr);
        mApplication = std::make_unique<QCoreApplication>(mArgc, mArgv.data());
    }

private:
    std::vector<QByteArray> mTexts;
    std::vector<char *> mArgv;
    int mArgc;
    std::unique_ptr<QCoreApplication> mApplication;
};

QStringList listOf(std::initializer_list<const char *> texts)
{
    QStringList list;
    for (const char *text : texts)
        list += QString::fromUtf8(text);
    return list;
}

Options mapOf(std::initializer_list<std::pair<const char *, const char *>> entries)
{
    Options map;
    for (const auto &[key, value] : entries)
        map.insert(QString::fromUtf8(key), QString::fromUtf8(value));
    return map;
}

CCommandLineParser parserOf(QStringList arguments)
{
    return CCommandLineParser(&arguments);
}

// The options of a tool that was given the key with this text, or not at all for a null text.
CCommandLineParser parserWith(const QString &key, const QString &text)
{
    QStringList arguments = listOf({"/opt/tool", "other=5"});
    if (!text.isNull())
        arguments += key + QLatin1Char('=') + text;
    return parserOf(arguments);
}

template<typename Result>
struct Accessor
{
    const char *key;
    Result (CCommandLineParser::*read)() const;
    Result absent;
};

const QVector<Accessor<int>> &signedAccessors()
{
    static const QVector<Accessor<int>> all = {
        {"colormode", &CCommandLineParser::colorMode, 0},  {"cu", &CCommandLineParser::currentUnit, 0},
        {"level", &CCommandLineParser::userLevel, 0},      {"drvadr", &CCommandLineParser::driveAddress, -1},
        {"powadr", &CCommandLineParser::powerAddress, -1}, {"port", &CCommandLineParser::port, 0},
    };
    return all;
}

const QVector<Accessor<unsigned int>> &unsignedAccessors()
{
    static const QVector<Accessor<unsigned int>> all = {
        {"comadr", &CCommandLineParser::comAddress, 0},
        {"devtype", &CCommandLineParser::odictClass, 0},
        {"df", &CCommandLineParser::deviceFunction, 0},
    };
    return all;
}

const QVector<Accessor<QString>> &textAccessors()
{
    static const QVector<Accessor<QString>> all = {
        {"server", &CCommandLineParser::serverName, QString()},
        {"abadr", &CCommandLineParser::abAddress, QString()},
        {"ip", &CCommandLineParser::ip, QString()},
    };
    return all;
}

} // namespace

class tst_command_line_parser : public LoggedTest
{
    Q_OBJECT

private Q_SLOTS:
    void splitsAtTheFirstEqualsSign_data();
    void splitsAtTheFirstEqualsSign();
    void nullListIsEmpty();
    void theListIsNotChanged();
    void readsTheApplicationsArguments();
    void withoutAnApplicationQtWarnsAndNothingIsRead();
    void countContainsAndValue();

    void groups_data();
    void groups();

    void textAccessor_data();
    void textAccessor();
    void signedAccessor_data();
    void signedAccessor();
    void unsignedAccessor_data();
    void unsignedAccessor();
    void absentUnsignedKeysAreZeroUnlikeTheAddresses();
    void port_data();
    void port();
    void keysAreExact_data();
    void keysAreExact();
    void numbersAreIndependentOfTheLocale();

    void language_data();
    void language();
    void setLanguageStoresTwoCharacters_data();
    void setLanguageStoresTwoCharacters();
    void setLanguageReplacesAndIsTheCopysOwn();

    void aDerivedParserIsDestroyedThroughItsBase();
    void exampleOfTheClassComment();
};

void tst_command_line_parser::splitsAtTheFirstEqualsSign_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<Options>("options");

    const auto row = [](const char *name, std::initializer_list<const char *> arguments,
                        std::initializer_list<std::pair<const char *, const char *>> options) {
        QTest::newRow(name) << listOf(arguments) << mapOf(options);
    };
    row("empty list", {}, {});
    row("program path alone", {"app.exe"}, {});
    row("two keys, a word and a value without key", {"app.exe", "server=10.0.0.1", "level=3", "x", "=y"},
        {{"server", "10.0.0.1"}, {"level", "3"}});
    row("further = belong to the value", {"app", "a=b=c"}, {{"a", "b=c"}});
    row("two = in a row", {"app", "a==b"}, {{"a", "=b"}});
    row("nothing but =", {"app", "=", "==", "=a=b"}, {});
    row("empty value", {"app", "a="}, {{"a", ""}});
    row("empty argument", {"app", "", "a=1"}, {{"a", "1"}});
    row("the last of equal keys counts", {"app", "a=1", "b=2", "a=3"}, {{"a", "3"}, {"b", "2"}});
    row("the last counts, empty too", {"app", "a=1", "a="}, {{"a", ""}});
    row("case differs", {"app", "Level=1", "level=2", "LEVEL=3"},
        {{"Level", "1"}, {"level", "2"}, {"LEVEL", "3"}});
    row("dashes are part of the key", {"app", "-port=1", "--port=2", "/port=3"},
        {{"-port", "1"}, {"--port", "2"}, {"/port", "3"}});
    row("nothing is trimmed", {"app", " a = b ", "\tc=\n"}, {{" a ", " b "}, {"\tc", "\n"}});
    row("quotes stay", {"app", "a=\"b c\""}, {{"a", "\"b c\""}});
    row("the program path is examined, too", {"/opt/a=b/tool", "c=d"}, {{"/opt/a", "b/tool"}, {"c", "d"}});
    row("beyond ASCII", {"app", "größe=Ω=1", "😀=x"}, {{"größe", "Ω=1"}, {"😀", "x"}});
}

void tst_command_line_parser::splitsAtTheFirstEqualsSign()
{
    QFETCH(QStringList, arguments);
    QFETCH(Options, options);

    QCOMPARE(CCommandLineParser::argumentsMap(&arguments), options);
    const CCommandLineParser parser(&arguments);
    QCOMPARE(parser.count(), options.size());
    for (auto option = options.cbegin(); option != options.cend(); ++option) {
        QVERIFY(parser.contains(option.key()));
        QCOMPARE(parser.value(option.key()), option.value());
    }
}

void tst_command_line_parser::nullListIsEmpty()
{
    QStringList *const none = nullptr;
    QCOMPARE(CCommandLineParser::argumentsMap(none), Options());
    QCOMPARE(CCommandLineParser::argumentsMap(nullptr), Options());
    const CCommandLineParser parser(none);
    QCOMPARE(parser.count(), 0);
    QCOMPARE(parser.driveAddress(), -1);
}

void tst_command_line_parser::theListIsNotChanged()
{
    const QStringList before = listOf({"app", "a=1", "b", "a=2", "=c"});
    QStringList arguments = before;
    static_cast<void>(CCommandLineParser::argumentsMap(&arguments));
    QCOMPARE(arguments, before);

    // Nor does a parser follow a later change of the list.
    const CCommandLineParser parser(&arguments);
    arguments.clear();
    QCOMPARE(parser.value(QStringLiteral("a")), QStringLiteral("2"));
}

void tst_command_line_parser::readsTheApplicationsArguments()
{
    const QStringList arguments = listOf({"/opt/tool", "server=host", "port=0x1F", "-v", "=x"});
    // cppcheck-suppress unreadVariable ; it lives while the parser asks
    const ScopedApplication application(arguments);
    QCOMPARE(CCommandLineParser::argumentsMap(), mapOf({{"server", "host"}, {"port", "0x1F"}}));
    const CCommandLineParser parser;
    QCOMPARE(parser.count(), 2);
    QCOMPARE(parser.serverName(), QStringLiteral("host"));
    QCOMPARE(parser.port(), 31);
    QCOMPARE(QCoreApplication::arguments(), arguments);
}

void tst_command_line_parser::withoutAnApplicationQtWarnsAndNothingIsRead()
{
    const QString warning =
        QStringLiteral("QCoreApplication::arguments: Please instantiate the QApplication object first");
    QVERIFY(!QCoreApplication::instance());
    const CCommandLineParser parser;
    QCOMPARE(takeLog(), QStringList{warning});
    QCOMPARE(parser.count(), 0);
    QCOMPARE(CCommandLineParser::argumentsMap(QStringLiteral("-")), Options());
    QCOMPARE(takeLog(), QStringList{warning});
    // An empty prefix and a list of one's own need no application.
    QCOMPARE(CCommandLineParser::argumentsMap(QString()), Options());
    QCOMPARE(parserOf(listOf({"app", "a=1"})).count(), 1);
}

void tst_command_line_parser::countContainsAndValue()
{
    const CCommandLineParser parser = parserOf(listOf({"app", "a=1", "empty=", "a=2"}));
    QCOMPARE(parser.count(), 2);
    QVERIFY(parser.contains(QStringLiteral("a")));
    QVERIFY(parser.contains(QStringLiteral("empty")));
    QVERIFY(!parser.contains(QStringLiteral("A")));
    QVERIFY(!parser.contains(QString()));
    QCOMPARE(parser.value(QStringLiteral("a")), QStringLiteral("2"));
    QCOMPARE(parser.value(QStringLiteral("empty")), QString());
    QCOMPARE(parser.value(QStringLiteral("missing")), QString());
    // Asking does not add.
    QCOMPARE(parser.count(), 2);
    QVERIFY(!parser.contains(QStringLiteral("missing")));
}

void tst_command_line_parser::groups_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QString>("prefix");
    QTest::addColumn<Options>("options");

    const auto row = [](const char *name, std::initializer_list<const char *> arguments, const char *prefix,
                        std::initializer_list<std::pair<const char *, const char *>> options) {
        QTest::newRow(name) << listOf(arguments) << QString::fromUtf8(prefix) << mapOf(options);
    };
    row("a group of two and an empty one", {"app", "-f", "a", "b", "-g"}, "-", {{"-f", "a b"}, {"-g", ""}});
    row("empty prefix", {"app", "-f", "a"}, "", {});
    row("no arguments at all", {}, "-", {});
    row("program path alone", {"app"}, "-", {});
    row("the program path opens no group", {"-app", "a", "-f", "b"}, "-", {{"-f", "b"}});
    row("arguments before the first group are passed over", {"app", "a", "b", "-f", "c"}, "-", {{"-f", "c"}});
    row("other options end a group", {"app", "--f", "a", "-g", "b", "--h", "c"}, "--",
        {{"--f", "a"}, {"--h", "c"}});
    row("the prefix may be the whole argument", {"app", "-", "a"}, "-", {{"-", "a"}});
    row("the prefix is longer than a dash", {"app", "-file", "a", "-fine", "b", "-g", "c"}, "-fi",
        {{"-file", "a"}, {"-fine", "b"}});
    row("case differs", {"app", "-File", "a", "-file", "b"}, "-f", {{"-file", "b"}});
    row("the last of equal options counts", {"app", "-f", "a", "-g", "-f", "b", "c"}, "-",
        {{"-f", "b c"}, {"-g", ""}});
    row("the last counts, empty too", {"app", "-f", "a", "-f"}, "-", {{"-f", ""}});
    row("a group ends only at a dash, whatever the prefix",
        {"app", "/f", "a", "/g", "b", "-x", "c", "/h", "d"}, "/", {{"/f", "a /g b"}, {"/h", "d"}});
    row("negative numbers are options", {"app", "-f", "1", "-2", "3"}, "-", {{"-f", "1"}, {"-2", "3"}});
    row("= is no separator here", {"app", "-f=1", "a=2"}, "-", {{"-f=1", "a=2"}});
    row("trimmed as a whole, not inside", {"app", "-f", "  a  b ", "\tc\n"}, "-", {{"-f", "a  b  \tc"}});
    row("an empty argument leaves its blank", {"app", "-f", "a", "", "b", ""}, "-", {{"-f", "a  b"}});
    row("place markers are plain text", {"app", "-f", "%1", "%2 %1"}, "-", {{"-f", "%1 %2 %1"}});
}

void tst_command_line_parser::groups()
{
    QFETCH(QStringList, arguments);
    QFETCH(QString, prefix);
    QFETCH(Options, options);

    // cppcheck-suppress unreadVariable ; it lives while the parser asks
    const ScopedApplication application(arguments);
    QCOMPARE(CCommandLineParser::argumentsMap(prefix), options);
}

void tst_command_line_parser::textAccessor_data()
{
    QTest::addColumn<int>("accessor");
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("expected");

    for (int i = 0; i < textAccessors().size(); ++i) {
        const char *const key = textAccessors().at(i).key;
        QTest::addRow("%s absent", key) << i << QString() << QString();
        QTest::addRow("%s empty", key) << i << QString::fromLatin1("") << QString();
        QTest::addRow("%s plain", key) << i << QStringLiteral("10.0.0.1") << QStringLiteral("10.0.0.1");
        QTest::addRow("%s as it stands", key) << i << QStringLiteral(" Ä=%1 ") << QStringLiteral(" Ä=%1 ");
    }
}

void tst_command_line_parser::textAccessor()
{
    QFETCH(int, accessor);
    QFETCH(QString, text);
    QFETCH(QString, expected);

    const Accessor<QString> &accessed = textAccessors().at(accessor);
    const CCommandLineParser parser = parserWith(QString::fromLatin1(accessed.key), text);
    QCOMPARE((parser.*accessed.read)(), expected);
    for (const Accessor<QString> &other : textAccessors())
        QVERIFY(qstrcmp(other.key, accessed.key) == 0 || (parser.*other.read)() == other.absent);
}

void tst_command_line_parser::signedAccessor_data()
{
    QTest::addColumn<int>("accessor");
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("expected");

    for (int i = 0; i < signedAccessors().size(); ++i) {
        const char *const key = signedAccessors().at(i).key;
        const auto row = [i, key](const char *name, const char *text, int expected) {
            QTest::addRow("%s %s", key, name) << i << QString::fromUtf8(text) << expected;
        };
        QTest::addRow("%s absent", key) << i << QString() << signedAccessors().at(i).absent;
        row("empty", "", 0);
        row("zero", "0", 0);
        row("number", "17", 17);
        row("negative", "-17", -17);
        row("plus sign", "+17", 17);
        row("leading zero is not octal", "017", 17);
        row("blanks around", " 17 ", 17);
        row("largest", "2147483647", 2147483647);
        row("one too large", "2147483648", 0);
        row("smallest", "-2147483648", -2147483647 - 1);
        row("one too small", "-2147483649", 0);
        row("far too large", "99999999999999999999999", 0);
        row("word", "abc", 0);
        row("number and more", "17a", 0);
        row("fraction", "1.5", 0);
        row("exponent", "1e3", 0);
        row("grouped", "1,000", 0);
        row("two numbers", "1 2", 0);
        row("digits of another script", "٣", 0);
        row("upper-case hexadecimal mark", "0X1F", 0);
    }
}

void tst_command_line_parser::signedAccessor()
{
    QFETCH(int, accessor);
    QFETCH(QString, text);
    QFETCH(int, expected);

    const Accessor<int> &accessed = signedAccessors().at(accessor);
    const CCommandLineParser parser = parserWith(QString::fromLatin1(accessed.key), text);
    QCOMPARE((parser.*accessed.read)(), expected);
    // No other accessor reads this key.
    for (const Accessor<int> &other : signedAccessors())
        QVERIFY(qstrcmp(other.key, accessed.key) == 0 || (parser.*other.read)() == other.absent);
    for (const Accessor<unsigned int> &other : unsignedAccessors())
        QCOMPARE((parser.*other.read)(), other.absent);
}

void tst_command_line_parser::unsignedAccessor_data()
{
    QTest::addColumn<int>("accessor");
    QTest::addColumn<QString>("text");
    QTest::addColumn<uint>("expected");

    for (int i = 0; i < unsignedAccessors().size(); ++i) {
        const char *const key = unsignedAccessors().at(i).key;
        const auto row = [i, key](const char *name, const char *text, uint expected) {
            QTest::addRow("%s %s", key, name) << i << QString::fromUtf8(text) << expected;
        };
        QTest::addRow("%s absent", key) << i << QString() << unsignedAccessors().at(i).absent;
        row("empty", "", 0);
        row("zero", "0", 0);
        row("number", "17", 17);
        row("plus sign", "+17", 17);
        row("negative", "-1", 0);
        row("blanks around", " 17 ", 17);
        row("above the signed range", "2147483648", 2147483648U);
        row("largest", "4294967295", 4294967295U);
        row("one too large", "4294967296", 0);
        row("far too large", "99999999999999999999999", 0);
        row("word", "abc", 0);
        row("hexadecimal", "0x1F", 0);
        row("fraction", "1.5", 0);
        row("U+FFFF", "\xEF\xBF\xBF", 0);
    }
}

void tst_command_line_parser::unsignedAccessor()
{
    QFETCH(int, accessor);
    QFETCH(QString, text);
    QFETCH(uint, expected);

    const Accessor<unsigned int> &accessed = unsignedAccessors().at(accessor);
    const CCommandLineParser parser = parserWith(QString::fromLatin1(accessed.key), text);
    QCOMPARE((parser.*accessed.read)(), expected);
    for (const Accessor<unsigned int> &other : unsignedAccessors())
        QVERIFY(qstrcmp(other.key, accessed.key) == 0 || (parser.*other.read)() == other.absent);
    for (const Accessor<int> &other : signedAccessors())
        QCOMPARE((parser.*other.read)(), other.absent);
}

void tst_command_line_parser::absentUnsignedKeysAreZeroUnlikeTheAddresses()
{
    const CCommandLineParser parser = parserOf(listOf({"app"}));
    QCOMPARE(parser.odictClass(), 0U);
    QCOMPARE(parser.deviceFunction(), 0U);
    QCOMPARE(parser.driveAddress(), -1);
    QCOMPARE(parser.powerAddress(), -1);
}

void tst_command_line_parser::port_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("expected");

    QTest::newRow("hexadecimal") << QStringLiteral("0x1F") << 31;
    QTest::newRow("hexadecimal, small letters") << QStringLiteral("0xff") << 255;
    QTest::newRow("decimal") << QStringLiteral("31") << 31;
    QTest::newRow("word") << QStringLiteral("abc") << 0;
    QTest::newRow("hexadecimal digits without the mark") << QStringLiteral("1F") << 0;
    QTest::newRow("upper-case mark is decimal") << QStringLiteral("0X1F") << 0;
    QTest::newRow("mark not at the start") << QStringLiteral(" 0x1F") << 0;
    QTest::newRow("sign before the mark") << QStringLiteral("-0x1F") << 0;
    QTest::newRow("mark alone") << QStringLiteral("0x") << 0;
    QTest::newRow("mark twice") << QStringLiteral("0x0x1F") << 0;
    QTest::newRow("no hexadecimal digit") << QStringLiteral("0xG") << 0;
    QTest::newRow("largest") << QStringLiteral("0x7FFFFFFF") << 2147483647;
    QTest::newRow("one too large") << QStringLiteral("0x80000000") << 0;
    QTest::newRow("beyond what a port can be") << QStringLiteral("70000") << 70000;
}

void tst_command_line_parser::port()
{
    QFETCH(QString, text);
    QFETCH(int, expected);
    QCOMPARE(parserWith(QStringLiteral("port"), text).port(), expected);
}

void tst_command_line_parser::keysAreExact_data()
{
    QTest::addColumn<QString>("argument");

    QTest::newRow("dash") << QStringLiteral("-drvadr=5");
    QTest::newRow("two dashes") << QStringLiteral("--drvadr=5");
    QTest::newRow("upper case") << QStringLiteral("DRVADR=5");
    QTest::newRow("blank before") << QStringLiteral(" drvadr=5");
    QTest::newRow("blank behind") << QStringLiteral("drvadr =5");
    QTest::newRow("no value") << QStringLiteral("drvadr");
    QTest::newRow("colon") << QStringLiteral("drvadr:5");
}

void tst_command_line_parser::keysAreExact()
{
    QFETCH(QString, argument);
    QCOMPARE(parserOf({QStringLiteral("app"), argument}).driveAddress(), -1);
}

void tst_command_line_parser::numbersAreIndependentOfTheLocale()
{
    const QLocale former;
    QLocale::setDefault(QLocale(QLocale::German, QLocale::Germany));
    const CCommandLineParser parser = parserOf(listOf({"app", "level=1.000", "comadr=1.000", "cu=1000"}));
    const QVector<int> read = {parser.userLevel(), static_cast<int>(parser.comAddress()),
                               parser.currentUnit()};
    const QLocale withoutLanguage = parser.language();
    QLocale::setDefault(former);
    QCOMPARE(read, (QVector<int>{0, 0, 1000}));
    QCOMPARE(withoutLanguage, QLocale(QLocale::C));
}

void tst_command_line_parser::language_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QLocale>("expected");

    QTest::newRow("absent") << QString() << QLocale(QLocale::C);
    QTest::newRow("empty") << QString::fromLatin1("") << QLocale(QLocale::C);
    QTest::newRow("language") << QStringLiteral("de") << QLocale(QLocale::German, QLocale::Germany);
    QTest::newRow("language and country")
        << QStringLiteral("de_AT") << QLocale(QLocale::German, QLocale::Austria);
    QTest::newRow("English") << QStringLiteral("en_US") << QLocale(QLocale::English, QLocale::UnitedStates);
    QTest::newRow("C") << QStringLiteral("C") << QLocale(QLocale::C);
    QTest::newRow("unknown language") << QStringLiteral("xx") << QLocale(QLocale::C);
    QTest::newRow("language by name") << QStringLiteral("german") << QLocale(QLocale::C);
    QTest::newRow("not trimmed") << QStringLiteral(" de") << QLocale(QLocale::C);
}

void tst_command_line_parser::language()
{
    QFETCH(QString, text);
    QFETCH(QLocale, expected);

    const QLocale read = parserWith(QStringLiteral("lang"), text).language();
    QCOMPARE(read, expected);
    QCOMPARE(read.name(), expected.name());
}

void tst_command_line_parser::setLanguageStoresTwoCharacters_data()
{
    QTest::addColumn<QLocale>("locale");
    QTest::addColumn<QString>("stored");

    QTest::newRow("English, United States")
        << QLocale(QLocale::English, QLocale::UnitedStates) << QStringLiteral("en");
    QTest::newRow("German, Austria") << QLocale(QLocale::German, QLocale::Austria) << QStringLiteral("de");
    QTest::newRow("C has one character") << QLocale(QLocale::C) << QStringLiteral("C");
    QTest::newRow("three letters are cut")
        << QLocale(QLocale::Filipino, QLocale::Philippines) << QStringLiteral("fi");
}

void tst_command_line_parser::setLanguageStoresTwoCharacters()
{
    QFETCH(QLocale, locale);
    QFETCH(QString, stored);

    CCommandLineParser parser = parserOf(listOf({"app"}));
    QVERIFY(parser.setLanguage(locale));
    QCOMPARE(parser.value(QStringLiteral("lang")), stored);
    QCOMPARE(parser.language(), QLocale(stored));
    QCOMPARE(parser.count(), 1);
}

void tst_command_line_parser::setLanguageReplacesAndIsTheCopysOwn()
{
    const CCommandLineParser original = parserOf(listOf({"app", "lang=fr", "level=3"}));
    CCommandLineParser copy(original);
    QVERIFY(copy.setLanguage(QLocale(QLocale::German, QLocale::Germany)));
    QCOMPARE(copy.count(), 2);
    QCOMPARE(copy.language().language(), QLocale::German);
    QCOMPARE(copy.userLevel(), 3);
    QCOMPARE(original.language().language(), QLocale::French);
    copy = original;
    QCOMPARE(copy.language().language(), QLocale::French);
}

void tst_command_line_parser::aDerivedParserIsDestroyedThroughItsBase()
{
    class Derived : public CCommandLineParser
    {
    public:
        explicit Derived(bool &destroyed) : CCommandLineParser(nullptr), mDestroyed(destroyed) {}
        ~Derived() override { mDestroyed = true; }

    private:
        bool &mDestroyed;
    };
    bool destroyed = false;
    std::unique_ptr<CCommandLineParser> parser = std::make_unique<Derived>(destroyed);
    parser.reset();
    QVERIFY(destroyed);
    parser = std::make_unique<CCommandLineParser>(nullptr);
    QCOMPARE(parser->count(), 0);
}

void tst_command_line_parser::exampleOfTheClassComment()
{
    QStringList arguments = listOf({"tool", "server=10.0.0.1", "level=16", "port=0x1F"});
    const CCommandLineParser options(&arguments);
    QCOMPARE(options.count(), 3);
    QCOMPARE(options.serverName(), QStringLiteral("10.0.0.1"));
    QCOMPARE(options.userLevel(), 16);
    QCOMPARE(options.port(), 31);
    QCOMPARE(options.driveAddress(), -1);
}

QTEST_APPLESS_MAIN(tst_command_line_parser)
#include "tst_command_line_parser.moc"
