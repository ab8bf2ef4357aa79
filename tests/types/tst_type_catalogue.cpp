// SPDX-License-Identifier: MIT
#include <CDataTypeParser.h>
#include <LoggedTest.h>

#include <QTest>
#include <QVector>

#include <atomic>
#include <cfloat>
#include <limits>
#include <thread>
#include <type_traits>
#include <vector>

namespace {

// The catalogue as the devices' documents have it, written down once more by hand.
struct CatalogueRow
{
    int number;
    NTypes::eTypes_t type;
    const char *catalogueName;
    const char *enumeratorName;
    unsigned int size;
};

const QVector<CatalogueRow> &catalogue()
{
    static const QVector<CatalogueRow> rows = {
        {0, NTypes::E_UNKNOWN, "UNKNOWN", "E_UNKNOWN", 1},
        {1, NTypes::E_U8, "UNIT_U8", "E_U8", 1},
        {2, NTypes::E_I8, "UNIT_I8", "E_I8", 1},
        {3, NTypes::E_U16, "UNIT_U16", "E_U16", 2},
        {4, NTypes::E_I16, "UNIT_I16", "E_I16", 2},
        {5, NTypes::E_U32, "UNIT_U32", "E_U32", 4},
        {6, NTypes::E_I32, "UNIT_I32", "E_I32", 4},
        {7, NTypes::E_F32, "UNIT_F32", "E_F32", 4},
        {8, NTypes::E_U64, "UNIT_U64", "E_U64", 8},
        {9, NTypes::E_I64, "UNIT_I64", "E_I64", 8},
        {10, NTypes::E_F64, "UNIT_F64", "E_F64", 8},
        {12, NTypes::E_STRING32, "UNIT_STRING32", "E_STRING32", 64},
        {13, NTypes::E_CHARSTR64, "UNIT_CHARSTR64", "E_CHARSTR64", 64},
        {14, NTypes::E_STRING128, "UNIT_STRING128", "E_STRING128", 256},
        {15, NTypes::E_CHARSTR256, "UNIT_CHARSTR256", "E_CHARSTR256", 256},
        {16, NTypes::E_DATETIME, "UNIT_DATETIME", "E_DATETIME", 8},
        {17, NTypes::E_STRING64, "UNIT_STRING64", "E_STRING64", 128},
        {18, NTypes::E_CHARSTR128, "UNIT_CHARSTR128", "E_CHARSTR128", 128},
        {19, NTypes::E_UTF16CHAR, "UNIT_UTF16CHAR", "E_UTF16CHAR", 2},
        {20, NTypes::E_CHAR, "UNIT_CHAR", "E_CHAR", 1},
        {21, NTypes::E_VERSION, "UNIT_VERSION", "E_VERSION", 4},
        {22, NTypes::E_IPV4ADDR, "UNIT_IPV4ADDR", "E_IPV4ADDR", 4},
        {23, NTypes::E_COMMAND, "UNIT_COMMAND", "E_COMMAND", 4},
        {24, NTypes::E_2DF32F32, "UNIT_2D_F32_F32", "E_2DF32F32", 8},
        {25, NTypes::E_BYTEARRAY, "UNIT_BYTEARRAY", "E_BYTEARRAY", 1},
        {26, NTypes::E_DS402_ACC_REC, "UNIT_DS402_ACCERLERATION_REC", "E_DS402_ACC_REC", 7},
        {27, NTypes::E_DS402_I16_ARRAY, "UNIT_DS402_I16_ARRAY", "E_DS402_I16_ARRAY", 6},
        {28, NTypes::E_DS402_I32_ARRAY, "UNIT_DS402_I32_ARRAY", "E_DS402_I32_ARRAY", 12},
        {29, NTypes::E_DS402_DIO_ARRAY, "UNIT_DS402_DIO_ARRAY", "E_DS402_DIO_ARRAY", 12},
        {30, NTypes::E_DS402_U16_ARRAY, "UNIT_DS402_U16_ARRAY", "E_DS402_U16_ARRAY", 6},
        {31, NTypes::E_DS402_U32_ARRAY, "UNIT_DS402_U32_ARRAY", "E_DS402_U32_ARRAY", 12},
        {32, NTypes::E_VERSION_4, "UNIT_VERSION_4", "E_VERSION_4", 8},
    };
    return rows;
}

NTypes::eTypes_t typeOf(int number)
{
    return static_cast<NTypes::eTypes_t>(number);
}

void addRowsOutsideTheCatalogue()
{
    QTest::newRow("the gap 11") << 11;
    QTest::newRow("-1") << -1;
    QTest::newRow("-2147483648") << std::numeric_limits<int>::min();
    QTest::newRow("33") << 33;
    QTest::newRow("40") << 40;
    QTest::newRow("256 (low byte of a row)") << 256;
    QTest::newRow("257 (low byte of a row)") << 257;
    QTest::newRow("2147483647") << std::numeric_limits<int>::max();
}

#ifndef J6CORE_STATIC_DEFINE
// What a static object of a program sees while the program starts.
struct MapsAtStart
{
    int sizes = CDataTypeParser::mDataSizeMap.size();
    int names = CDataTypeParser::mTypeDataMap.size();
    int enumerators = CDataTypeParser::mTypeEnumMap.size();
    bool namesAreThere = CDataTypeParser::typeToStr(NTypes::E_U16) == QLatin1String("UNIT_U16");
};
const MapsAtStart mapsAtStart;
#endif

} // namespace

class tst_type_catalogue : public LoggedTest
{
    Q_OBJECT

private Q_SLOTS:
    void tagIsASigned32BitEnumeration();
    void everyTagHasItsNumber_data();
    void everyTagHasItsNumber();
    void typeToStr_data();
    void typeToStr();
    void typeToEnum_data();
    void typeToEnum();
    void typeSizeOfTag_data();
    void typeSizeOfTag();
    void typeSizeOfName_data();
    void typeSizeOfName();
    void strToType_data();
    void strToType();
    void numbersWithoutARow_data();
    void numbersWithoutARow();
    void textsThatAreNoCatalogueName_data();
    void textsThatAreNoCatalogueName();
    void misspelledAccelerationIsTheName();
    void mapsHaveTheRowsInAscendingOrder();
    void mapsAreCompleteWhenTheLibraryIsLoaded();
    void mapsAreTypedAsDeclared();
    void integerRange_data();
    void integerRange();
    void floatingPointRange_data();
    void floatingPointRange();
    void noRangeIsANullString_data();
    void noRangeIsANullString();
    void classIsNeverInstantiated();
    void lookupsInSeveralThreads();
};

void tst_type_catalogue::tagIsASigned32BitEnumeration()
{
    using Underlying = std::underlying_type<NTypes::eTypes_t>::type;
    QCOMPARE(sizeof(NTypes::eTypes_t), std::size_t(4));
    QVERIFY(std::is_signed<Underlying>::value);
    QVERIFY((std::is_convertible<NTypes::eTypes_t, int>::value)); // a plain enumeration, not a scoped one
}

void tst_type_catalogue::everyTagHasItsNumber_data()
{
    QTest::addColumn<int>("tag");
    QTest::addColumn<int>("number");
    for (const CatalogueRow &row : catalogue())
        QTest::newRow(row.enumeratorName) << int(row.type) << row.number;
}

void tst_type_catalogue::everyTagHasItsNumber()
{
    QFETCH(int, tag);
    QFETCH(int, number);
    QCOMPARE(tag, number);
}

void tst_type_catalogue::typeToStr_data()
{
    QTest::addColumn<int>("number");
    QTest::addColumn<QString>("name");
    for (const CatalogueRow &row : catalogue())
        QTest::newRow(row.enumeratorName) << row.number << QString::fromLatin1(row.catalogueName);
}

void tst_type_catalogue::typeToStr()
{
    QFETCH(int, number);
    QFETCH(QString, name);
    QCOMPARE(CDataTypeParser::typeToStr(typeOf(number)), name);
}

void tst_type_catalogue::typeToEnum_data()
{
    QTest::addColumn<int>("number");
    QTest::addColumn<QString>("name");
    for (const CatalogueRow &row : catalogue())
        QTest::newRow(row.enumeratorName) << row.number << QString::fromLatin1(row.enumeratorName);
}

void tst_type_catalogue::typeToEnum()
{
    QFETCH(int, number);
    QFETCH(QString, name);
    QCOMPARE(CDataTypeParser::typeToEnum(typeOf(number)), name);
}

void tst_type_catalogue::typeSizeOfTag_data()
{
    QTest::addColumn<int>("number");
    QTest::addColumn<unsigned int>("size");
    for (const CatalogueRow &row : catalogue())
        QTest::newRow(row.enumeratorName) << row.number << row.size;
}

void tst_type_catalogue::typeSizeOfTag()
{
    QFETCH(int, number);
    QFETCH(unsigned int, size);
    QCOMPARE(CDataTypeParser::typeSize(typeOf(number)), size);
}

void tst_type_catalogue::typeSizeOfName_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<unsigned int>("size");
    for (const CatalogueRow &row : catalogue())
        QTest::newRow(row.catalogueName) << QString::fromLatin1(row.catalogueName) << row.size;
}

void tst_type_catalogue::typeSizeOfName()
{
    QFETCH(QString, name);
    QFETCH(unsigned int, size);
    QCOMPARE(CDataTypeParser::typeSize(name), size);
}

void tst_type_catalogue::strToType_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<int>("number");
    for (const CatalogueRow &row : catalogue())
        QTest::newRow(row.catalogueName) << QString::fromLatin1(row.catalogueName) << row.number;
}

void tst_type_catalogue::strToType()
{
    QFETCH(QString, name);
    QFETCH(int, number);
    QCOMPARE(int(CDataTypeParser::strToType(name)), number);
}

void tst_type_catalogue::numbersWithoutARow_data()
{
    QTest::addColumn<int>("number");
    addRowsOutsideTheCatalogue();
}

void tst_type_catalogue::numbersWithoutARow()
{
    QFETCH(int, number);
    QCOMPARE(CDataTypeParser::typeToStr(typeOf(number)), QStringLiteral("UNKNOWN"));
    QCOMPARE(CDataTypeParser::typeToEnum(typeOf(number)), QStringLiteral("E_UNKNOWN"));
    QCOMPARE(CDataTypeParser::typeSize(typeOf(number)), 1U);
    QVERIFY(CDataTypeParser::minTypeValue(typeOf(number)).isNull());
    QVERIFY(CDataTypeParser::maxTypeValue(typeOf(number)).isNull());
    QVERIFY(!CDataTypeParser::mDataSizeMap.contains(typeOf(number)));
    QVERIFY(!CDataTypeParser::mTypeDataMap.contains(typeOf(number)));
    QVERIFY(!CDataTypeParser::mTypeEnumMap.contains(typeOf(number)));
}

void tst_type_catalogue::textsThatAreNoCatalogueName_data()
{
    QTest::addColumn<QString>("text");
    QTest::newRow("null") << QString();
    QTest::newRow("empty") << QString(QLatin1String(""));
    QTest::newRow("enumerator name") << QStringLiteral("E_U8");
    QTest::newRow("enumerator name of the pair") << QStringLiteral("E_2DF32F32");
    QTest::newRow("lower case") << QStringLiteral("unit_u8");
    QTest::newRow("one letter in lower case") << QStringLiteral("UNIT_u8");
    QTest::newRow("blank before") << QStringLiteral(" UNIT_U8");
    QTest::newRow("blank after") << QStringLiteral("UNIT_U8 ");
    QTest::newRow("beginning of a name") << QStringLiteral("UNIT_U");
    QTest::newRow("name and more") << QStringLiteral("UNIT_U88");
    QTest::newRow("terminating zero included") << QStringLiteral("UNIT_U8").append(QChar(0));
    QTest::newRow("pair spelled as its enumerator") << QStringLiteral("UNIT_2DF32F32");
    QTest::newRow("acceleration spelled right") << QStringLiteral("UNIT_DS402_ACCELERATION_REC");
    QTest::newRow("record spelled as its enumerator") << QStringLiteral("UNIT_DS402_ACC_REC");
    QTest::newRow("prefix alone") << QStringLiteral("UNIT_");
    QTest::newRow("unknown with the prefix") << QStringLiteral("UNIT_UNKNOWN");
    QTest::newRow("any text") << QStringLiteral("drehzahl");
}

void tst_type_catalogue::textsThatAreNoCatalogueName()
{
    QFETCH(QString, text);
    QCOMPARE(CDataTypeParser::strToType(text), NTypes::E_UNKNOWN);
    QCOMPARE(CDataTypeParser::typeSize(text), 1U); // that of E_UNKNOWN, not 0
}

void tst_type_catalogue::misspelledAccelerationIsTheName()
{
    QCOMPARE(CDataTypeParser::strToType(QStringLiteral("UNIT_DS402_ACCERLERATION_REC")),
             NTypes::E_DS402_ACC_REC);
}

void tst_type_catalogue::mapsHaveTheRowsInAscendingOrder()
{
    QList<NTypes::eTypes_t> types;
    QList<quint16> sizes;
    QList<QString> names;
    QList<QString> enumerators;
    for (const CatalogueRow &row : catalogue()) {
        types << row.type;
        sizes << static_cast<quint16>(row.size);
        names << QString::fromLatin1(row.catalogueName);
        enumerators << QString::fromLatin1(row.enumeratorName);
    }
    QCOMPARE(types.size(), 32);
    QVERIFY(types == CDataTypeParser::mDataSizeMap.keys());
    QVERIFY(types == CDataTypeParser::mTypeDataMap.keys());
    QVERIFY(types == CDataTypeParser::mTypeEnumMap.keys());
    QCOMPARE(CDataTypeParser::mDataSizeMap.values(), sizes);
    QCOMPARE(CDataTypeParser::mTypeDataMap.values(), names);
    QCOMPARE(CDataTypeParser::mTypeEnumMap.values(), enumerators);
}

void tst_type_catalogue::mapsAreCompleteWhenTheLibraryIsLoaded()
{
#ifdef J6CORE_STATIC_DEFINE
    QTest::qSkip("in a static library the program's own static objects may be built first", __FILE__,
                 __LINE__);
#else
    QCOMPARE(mapsAtStart.sizes, 32);
    QCOMPARE(mapsAtStart.names, 32);
    QCOMPARE(mapsAtStart.enumerators, 32);
    QVERIFY(mapsAtStart.namesAreThere);
#endif
}

void tst_type_catalogue::mapsAreTypedAsDeclared()
{
    QVERIFY((
        std::is_same<decltype(CDataTypeParser::mDataSizeMap), const QMap<NTypes::eTypes_t, quint16>>::value));
    QVERIFY((
        std::is_same<decltype(CDataTypeParser::mTypeDataMap), const QMap<NTypes::eTypes_t, QString>>::value));
    QVERIFY((
        std::is_same<decltype(CDataTypeParser::mTypeEnumMap), const QMap<NTypes::eTypes_t, QString>>::value));
}

void tst_type_catalogue::integerRange_data()
{
    QTest::addColumn<int>("number");
    QTest::addColumn<QString>("smallest");
    QTest::addColumn<QString>("largest");
    const QString zero = QStringLiteral("0");
    QTest::newRow("E_U8") << 1 << zero << QStringLiteral("255");
    QTest::newRow("E_I8") << 2 << QStringLiteral("-128") << QStringLiteral("127");
    QTest::newRow("E_U16") << 3 << zero << QStringLiteral("65535");
    QTest::newRow("E_I16") << 4 << QStringLiteral("-32768") << QStringLiteral("32767");
    QTest::newRow("E_U32") << 5 << zero << QStringLiteral("4294967295");
    QTest::newRow("E_I32") << 6 << QStringLiteral("-2147483648") << QStringLiteral("2147483647");
    QTest::newRow("E_U64") << 8 << zero << QStringLiteral("18446744073709551615");
    QTest::newRow("E_I64") << 9 << QStringLiteral("-9223372036854775808")
                           << QStringLiteral("9223372036854775807");
    QTest::newRow("E_BYTEARRAY, one element") << 25 << zero << QStringLiteral("255");
    QTest::newRow("E_DS402_I16_ARRAY, one element")
        << 27 << QStringLiteral("-32768") << QStringLiteral("32767");
    QTest::newRow("E_DS402_I32_ARRAY, one element")
        << 28 << QStringLiteral("-2147483648") << QStringLiteral("2147483647");
    QTest::newRow("E_DS402_DIO_ARRAY, one element") << 29 << zero << QStringLiteral("4294967295");
    QTest::newRow("E_DS402_U16_ARRAY, one element") << 30 << zero << QStringLiteral("65535");
    QTest::newRow("E_DS402_U32_ARRAY, one element") << 31 << zero << QStringLiteral("4294967295");
}

void tst_type_catalogue::integerRange()
{
    QFETCH(int, number);
    QFETCH(QString, smallest);
    QFETCH(QString, largest);
    QCOMPARE(CDataTypeParser::minTypeValue(typeOf(number)), smallest);
    QCOMPARE(CDataTypeParser::maxTypeValue(typeOf(number)), largest);
}

void tst_type_catalogue::floatingPointRange_data()
{
    QTest::addColumn<int>("number");
    QTest::addColumn<double>("limit");
    QTest::newRow("E_F32") << 7 << double(FLT_MAX);
    QTest::newRow("E_F64") << 10 << DBL_MAX;
    QTest::newRow("E_2DF32F32, one element") << 24 << double(FLT_MAX);
    QTest::newRow("E_DS402_ACC_REC") << 26 << double(FLT_MAX);
}

void tst_type_catalogue::floatingPointRange()
{
    QFETCH(int, number);
    QFETCH(double, limit);
    const QString smallest = CDataTypeParser::minTypeValue(typeOf(number));
    const QString largest = CDataTypeParser::maxTypeValue(typeOf(number));
    // The digits are Qt's; that they are the largest finite value in fixed notation is checked beside them.
    QCOMPARE(smallest, QString::number(-limit, 'f', 6));
    QCOMPARE(largest, QString::number(limit, 'f', 6));
    QCOMPARE(largest.toDouble(), limit);
    QCOMPARE(smallest, QLatin1Char('-') + largest);
    QVERIFY(largest.endsWith(QStringLiteral(".000000")));
    QVERIFY(!largest.contains(QLatin1Char('e')));
}

void tst_type_catalogue::noRangeIsANullString_data()
{
    QTest::addColumn<int>("number");
    const QVector<int> withoutRange = {0, 12, 13, 14, 15, 16, 17, 18, 19, 20, 21, 22, 23, 32};
    for (const int number : withoutRange)
        QTest::newRow(qPrintable(CDataTypeParser::typeToEnum(typeOf(number)))) << number;
    addRowsOutsideTheCatalogue();
}

void tst_type_catalogue::noRangeIsANullString()
{
    QFETCH(int, number);
    QVERIFY(CDataTypeParser::minTypeValue(typeOf(number)).isNull());
    QVERIFY(CDataTypeParser::maxTypeValue(typeOf(number)).isNull());
}

void tst_type_catalogue::classIsNeverInstantiated()
{
    QVERIFY(!std::is_default_constructible<CDataTypeParser>::value);
}

void tst_type_catalogue::lookupsInSeveralThreads()
{
    std::atomic<int> faults{0};
    std::vector<std::thread> threads;
    for (int i = 0; i < 4; ++i) {
        threads.emplace_back([&faults] {
            for (const CatalogueRow &row : catalogue()) {
                const QString name = QString::fromLatin1(row.catalogueName);
                if (CDataTypeParser::typeToStr(row.type) != name
                    || CDataTypeParser::strToType(name) != row.type
                    || CDataTypeParser::mTypeDataMap.value(row.type) != name)
                    ++faults;
            }
        });
    }
    for (std::thread &thread : threads)
        thread.join();
    QCOMPARE(faults.load(), 0);
}

QTEST_GUILESS_MAIN(tst_type_catalogue)

#include "tst_type_catalogue.moc"
