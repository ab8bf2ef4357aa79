// SPDX-License-Identifier: MIT
// Texts as numbers: always what QString's own parsers make of them, whichever way they are read. The
// environment variable J6CORE_NUMBER_SAMPLES raises the number of samples of each row from 100000.
#include "NumberSamples.h"

#include <AllocationCounter.h>
#include <CStr.h>
#include <CVariant.h>
#include <LoggedTest.h>

#include <QTest>
#include <QtEndian>

#include <tuple>

using namespace NumberSamples;

Q_DECLARE_METATYPE(Source<QString>)

namespace {

// A type of numbers: Qt's parser, which may be one for longer numbers, ours, and the tag of its values.
template<typename Integer, typename ByQt>
struct IntegerReader
{
    ByQt (QString::*byQt)(bool *ok, int base) const;
    Integer (*ours)(const QString &text, bool *ok, int base);
    NTypes::eTypes_t type;
};

template<typename Float>
struct FloatReader
{
    Float (QString::*byQt)(bool *ok) const;
    Float (*ours)(const QString &text, bool *ok);
    NTypes::eTypes_t type;
};

constexpr auto readers =
    std::make_tuple(IntegerReader<quint8, uint>{&QString::toUInt, CStr::strToU8, NTypes::E_U8},
                    IntegerReader<quint16, uint>{&QString::toUInt, CStr::strToU16, NTypes::E_U16},
                    IntegerReader<quint32, uint>{&QString::toUInt, CStr::strToU32, NTypes::E_U32},
                    IntegerReader<quint64, qulonglong>{&QString::toULongLong, CStr::strToU64, NTypes::E_U64},
                    IntegerReader<qint8, int>{&QString::toInt, CStr::strToI8, NTypes::E_I8},
                    IntegerReader<qint16, int>{&QString::toInt, CStr::strToI16, NTypes::E_I16},
                    IntegerReader<qint32, int>{&QString::toInt, CStr::strToI32, NTypes::E_I32},
                    IntegerReader<qint64, qlonglong>{&QString::toLongLong, CStr::strToI64, NTypes::E_I64},
                    FloatReader<float>{&QString::toFloat, CStr::strToF32, NTypes::E_F32},
                    FloatReader<double>{&QString::toDouble, CStr::strToF64, NTypes::E_F64});

// What was read, and whether it was a number. A zero has a sign, and a NaN may be any.
template<typename Number>
struct Reading
{
    Number number;
    bool ok;

    bool operator==(const Reading &other) const
    {
        if constexpr (std::is_floating_point<Number>::value) {
            if (std::isnan(number) || std::signbit(number) != std::signbit(other.number))
                return std::isnan(number) && std::isnan(other.number) && ok == other.ok;
        }
        return number == other.number && ok == other.ok;
    }
};

template<typename Number>
bool same(const QString &text, const Reading<Number> &reading, const Reading<Number> &expected)
{
    const bool isSame = reading == expected;
    if (!isSame) {
        qWarning("%s is %.17g (%d), should be %.17g (%d)", text.toUtf8().toPercentEncoding().constData(),
                 static_cast<double>(reading.number), int(reading.ok), static_cast<double>(expected.number),
                 int(expected.ok));
    }
    return isSame;
}

template<typename Number>
Reading<Number> valueOf(const QString &text, NTypes::eTypes_t type)
{
    bool ok = false;
    const QByteArray bytes = CVariant::fromStr(text, type, &ok).toByteArray();
    return {qFromLittleEndian<Number>(bytes.constData()), ok};
}

template<typename Integer, typename ByQt>
Reading<ByQt> readByQt(const IntegerReader<Integer, ByQt> &reader, const QString &text, int base)
{
    bool ok = false;
    const ByQt number = (text.*reader.byQt)(&ok, base);
    return {number, ok};
}

// Beside a failure Qt gives infinity for a number beyond the range; ours is 0.
template<typename Float>
Reading<Float> readByQt(const FloatReader<Float> &reader, const QString &text)
{
    Reading<Float> reading{};
    reading.number = (text.*reader.byQt)(&reading.ok);
    if (!reading.ok)
        reading.number = Float(0);
    return reading;
}

// A parser refuses numbers that are too long for its type; a value keeps their low-order bits.
template<typename Integer, typename ByQt>
bool readsAsQt(const IntegerReader<Integer, ByQt> &reader, const QString &text, int base)
{
    const Reading<ByQt> byQt = readByQt(reader, text, base);
    const auto cut = static_cast<Integer>(byQt.number);
    const bool fits = byQt.ok && cut == byQt.number;
    bool parsed = !fits;
    const Integer ours = reader.ours(text, &parsed, base);
    return same<Integer>(text, {ours, parsed}, {fits ? cut : Integer(0), fits})
           && (base != 0 || same<Integer>(text, valueOf<Integer>(text, reader.type), {cut, byQt.ok}));
}

template<typename Float>
bool readsAsQt(const FloatReader<Float> &reader, const QString &text, int base)
{
    const Reading<Float> expected = readByQt(reader, text);
    bool parsed = !expected.ok;
    const Float ours = reader.ours(text, &parsed);
    return same<Float>(text, {ours, parsed}, expected)
           && (base != 0 || same<Float>(text, valueOf<Float>(text, reader.type), expected));
}

bool allReadAsQt(const QString &text, int base)
{
    return std::apply([&](const auto &...reader) { return (readsAsQt(reader, text, base) && ...); }, readers);
}

QString integerText(std::mt19937_64 &random)
{
    return random() % 2 == 0 ? QString::number(anyBits<qint64>(random))
                             : QString::number(anyBits<quint64>(random));
}

// Up to 22 digits with perhaps a sign and a point, which may stand anywhere.
QString digitsText(std::mt19937_64 &random)
{
    QString text;
    for (int left = upTo(21, random); left >= 0; --left)
        text += QChar(u'0' + upTo(9, random));
    if (random() % 4 != 0)
        text.insert(upTo(text.size(), random), QLatin1Char('.'));
    return random() % 2 == 0 ? QLatin1Char('-') + text : text;
}

QString floatText(std::mt19937_64 &random)
{
    const char format = "gfe"[upTo(2, random)];
    if (random() % 2 == 0)
        return QString::number(moderate<double>(random), format, upTo(17, random));
    return QString::number(anyBits<double>(random), 'g', upTo(17, random));
}

// As numbers with an exponent are written, here and elsewhere: 'e' or 'E', one, two or three digits, a sign
// or none.
QString exponentText(std::mt19937_64 &random)
{
    static const QStringList signs = {QStringLiteral("+"), QStringLiteral("-"), QString()};
    QString text = QString::number(random() >> (1 + upTo(62, random)));
    if (text.size() > 1 && random() % 2 == 0)
        text.insert(1 + upTo(text.size() - 2, random), QLatin1Char('.'));
    text += QLatin1Char(random() % 8 == 0 ? 'E' : 'e');
    text += signs.at(random() % 8 == 0 ? 2 : upTo(1, random));
    const int width = random() % 4 == 0 ? 1 + upTo(2, random) : 2;
    text +=
        QString::number(upTo(random() % 8 == 0 ? 400 : 40, random)).rightJustified(width, QLatin1Char('0'));
    return random() % 2 == 0 ? QLatin1Char('-') + text : text;
}

// Signs, blanks of several kinds, prefixes, separators, digits of other scripts, and a zero unit.
const QString &strangeUnits()
{
    static const QString units =
        QStringLiteral(
            "+-.,' _xXbBeEoOnaif0019 \t\n\v\f\r\u0085\u00A0\u1680\u2003\u2028\u202F\u3000\u200B\uFEFF"
            "\u0660\u0669\u096B\uFF11\u2212\u066B\u066C%$")
        + QChar(0);
    return units;
}

QString mangledText(std::mt19937_64 &random)
{
    constexpr QString (*makers[])(std::mt19937_64 &) = {integerText, digitsText, floatText, exponentText};
    QString text = makers[upTo(3, random)](random);
    for (int left = upTo(2, random); left >= 0; --left) {
        const QChar unit = strangeUnits().at(upTo(strangeUnits().size() - 1, random));
        const int ends[] = {0, text.size(), upTo(text.size(), random)};
        text.replace(ends[upTo(2, random)], upTo(1, random), unit);
    }
    return text;
}

void addTexts(const char *name, const QStringList &texts)
{
    for (const QString &text : texts)
        QTest::addRow("%s '%s'", name, text.toUtf8().toPercentEncoding().constData()) << text;
}

} // namespace

class tst_number_reading : public LoggedTest
{
    Q_OBJECT

private Q_SLOTS:
    void texts_data();
    void texts();
    void edges();
    void chosenTexts_data();
    void chosenTexts();
    void textWithoutTerminator();
    void readingAllocatesNothing();
};

void tst_number_reading::texts_data()
{
    QTest::addColumn<Source<QString>>("source");
    QTest::newRow("integers") << Source<QString>(integerText);
    QTest::newRow("digits and a point") << Source<QString>(digitsText);
    QTest::newRow("floating-point numbers") << Source<QString>(floatText);
    QTest::newRow("exponents") << Source<QString>(exponentText);
    QTest::newRow("mangled") << Source<QString>(mangledText);
}

void tst_number_reading::texts()
{
    QFETCH(const Source<QString>, source);
    std::mt19937_64 random(20260705);
    for (int left = sampleCount(); left > 0; --left)
        QVERIFY(allReadAsQt(source(random), left % 2 == 0 ? 10 : 0));
}

// Also where the numbers begin to be too long: by one, and by one digit.
void tst_number_reading::edges()
{
    const QVector<qint64> integers = integerEdges<qint64>();
    for (const qint64 value : integers) {
        for (const QString &text : {QString::number(value), QString::number(static_cast<quint64>(value)),
                                    QString::number(value) + QLatin1Char('0')}) {
            for (const int base : {0, 2, 8, 10, 16, 36})
                QVERIFY(allReadAsQt(text, base));
        }
    }
    const QVector<double> numbers = floatEdges<double>();
    for (const double value : numbers) {
        for (const int digits : {6, 17})
            QVERIFY(allReadAsQt(QString::number(value, 'g', digits), 0));
        if (std::fabs(value) < 1e25)
            QVERIFY(allReadAsQt(QString::number(value, 'f', 16), 0));
    }
}

void tst_number_reading::chosenTexts_data()
{
    QTest::addColumn<QString>("text");
    QTest::newRow("null") << QString();
    QTest::newRow("empty") << QString(QLatin1String(""));
    QTest::newRow("a zero unit within") << QStringLiteral("12\0"
                                                          "34");
    QTest::newRow("a zero unit at the end") << QStringLiteral("12\0");
    QTest::newRow("a control character for a sign") << QStringLiteral("\u00015");
    QTest::newRow("a control character for a sign, with a point") << QStringLiteral("\u00015.5");
    QTest::newRow("digits of another script") << QStringLiteral("\u0661\u0662");
    QTest::newRow("a minus sign that is no hyphen") << QStringLiteral("\u22121");
    addTexts("zero",
             QStringLiteral("0 -0 +0 00 -00 0.0 -0.0 00.5 -00.5 0. .0 -.0 0x0 0e5").split(QLatin1Char(' ')));
    addTexts("point",
             QStringLiteral(". -. 5. .5 -5. -.5 1..2 1.2.3 1.2. .1.2 1,5 1.5f").split(QLatin1Char(' ')));
    addTexts("sign", QStringLiteral("- + -- +- -+ --1 -+1 +1 +1.5 1- 1.5-").split(QLatin1Char(' ')));
    addTexts("prefix",
             QStringLiteral("0x1F -0x1F 0X1F 0x 010 -010 08 0b1 0b 1F 1e5 1E5 1e 1e+ -1e-5 1e400 1e-400")
                 .split(QLatin1Char(' ')));
    addTexts(
        "exponent",
        QStringLiteral("1e+06 1e-05 -1e+06 1e+6 1e06 1E+06 1e+006 1e+0006 -0e+00 0e+00 0e-99 0.0e-05 -0.0e+19"
                       " 1e+19 1e+20 1e-19 1e-20 1.5e+19 1.5e+20 1.5e-18 1.5e-19 1e+22 1e+23 1e+99 1e-99"
                       " 1.5e+308 1.5e+309 123456789012345678e+19 9007199254740992e+19 9007199254740993e+00"
                       " 9007199254740992e+00 900719925474099.3e+01 9007199254740991e-19 0.0001e+22"
                       " .5e+06 5.e+06 e+06 -e+06 1e+ 1e- 1e+0x 1e+-6 1e--6 1e++6 1e+06e+06 1e+06.0 1e+06f"
                       " 1e+0\u0661 1,5e+06 0x1e+06 3.4e+38 3.5e+38 1e-38 1e-45 1e-46")
            .split(QLatin1Char(' ')));
    addTexts("blank",
             {QStringLiteral("1e+06 "), QStringLiteral(" 1e+06"), QStringLiteral("1e +06"),
              QStringLiteral("1e+ 06"), QStringLiteral(" "), QStringLiteral(" 1"), QStringLiteral("1 "),
              QStringLiteral("- 1"), QStringLiteral("1 2"), QStringLiteral("\u00A01"),
              QStringLiteral("1\u3000"), QStringLiteral("\t1.5\n"), QStringLiteral("1\u200B")});
    addTexts("word", QStringLiteral("inf -inf +inf nan -nan infinity INF abc a").split(QLatin1Char(' ')));
    addTexts("group", QStringLiteral("1,000 1.000,5 1'000 1_000 1,000.5 12,34").split(QLatin1Char(' ')));
    addTexts("length",
             QStringLiteral("999999999 1000000000 -999999999 -1000000000 0000000001 999999999999999999"
                            " 1000000000000000000 0000000000000000001 9999999999999999999"
                            " 10000000000000000000 18446744073709551616 99999999999999999999999")
                 .split(QLatin1Char(' ')));
    addTexts("precision",
             QStringLiteral("9007199254740992 9007199254740993 900719925474099.2 900719925474099.3"
                            " 0.1234567890123456 0.12345678901234567 0.000000000000000001"
                            " 0.0000000000000000001 0.00000000000000000001 000000000000000000001.5"
                            " 16777217 16777219 0.1000000014901161 340282356779733642748073463979561713664"
                            " 1.000000059604644 1.000000059604645 1.0000000596046448")
                 .split(QLatin1Char(' ')));
}

void tst_number_reading::chosenTexts()
{
    QFETCH(const QString, text);
    for (const int base : {0, 2, 8, 10, 16, 36})
        QVERIFY(allReadAsQt(text, base));
}

// A text may end within the characters of another.
void tst_number_reading::textWithoutTerminator()
{
    const QString text = QStringLiteral("-123456.75");
    for (int length = 0; length <= text.size(); ++length) {
        const QString part = QString::fromRawData(text.constData(), length);
        QVERIFY(allReadAsQt(part, 0));
        QCOMPARE(CStr::strToF64(part), text.leftRef(length).toDouble());
        QCOMPARE(CStr::strToI32(part), text.leftRef(length).toInt());
    }
}

void tst_number_reading::readingAllocatesNothing()
{
    if (!AllocationCounter::isAvailable())
        QSKIP("Another allocator is interposed.");
    const QString integer = QStringLiteral("-12345");
    const QString number = QStringLiteral("-123.456");
    const AllocationCounter counter;
    const int parsed = CStr::strToI32(integer) + CStr::strToI16(integer);
    const qint64 longer = CStr::strToI64(integer);
    const double sum =
        CStr::strToF64(number) + CStr::strToF64(integer) + static_cast<double>(CStr::strToF32(integer));
    QCOMPARE(counter.count(), 0L);
    QCOMPARE(parsed, -24690);
    QCOMPARE(longer, Q_INT64_C(-12345));
    QCOMPARE(sum, -24813.456);
}

QTEST_GUILESS_MAIN(tst_number_reading)
#include "tst_number_reading.moc"
