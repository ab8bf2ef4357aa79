// SPDX-License-Identifier: MIT
#include <CUnitParser.h>

#include <LoggedTest.h>

#include <QCoreApplication>
#include <QHash>
#include <QTest>
#include <QTextCodec>
#include <QTranslator>
#include <QVector>

#include <climits>
#include <set>
#include <type_traits>

using Nj6Units::eUnit_t;

static_assert(sizeof(eUnit_t) == 4 && std::is_signed<std::underlying_type<eUnit_t>::type>::value,
              "signed 32-bit");
static_assert(std::is_same<decltype(CUnitParser::mDigitsMap), const QMap<eUnit_t, int>>::value, "read-only");
static_assert(!std::is_default_constructible<CUnitParser>::value, "static members only");

namespace {

struct Unit
{
    int code;
    eUnit_t unit;
    const char *text;
    const char *description;
    int digits;
    int linear;
};

// clang-format off
constexpr Unit units[] = {
    {0, Nj6Units::E_UNIT_NONE, "", "No unit", 3, 0},
    {1, Nj6Units::E_UNIT_UNKNOWN, "unknown", "Unknown unit", 3, 1},
    {2, Nj6Units::E_UNIT_COUNT, "", "Count", 0, 2},
    {10, Nj6Units::E_UNIT_TIME_MS, "ms", "Time [ms]", 0, 10},
    {11, Nj6Units::E_UNIT_TIME_S, "s", "Time [s]", 1, 11},
    {12, Nj6Units::E_UNIT_TIME_MIN, "min", "Time [min]", 0, 12},
    {13, Nj6Units::E_UNIT_TIME_US, "microns", "Time [microns]", 3, 13},
    {14, Nj6Units::E_UNIT_TIME_NS, "nanos", "Time [nanos]", 0, 14},
    {15, Nj6Units::E_UNIT_TIME_100US, "100microns", "Time [100microns]", 0, 15},
    {20, Nj6Units::E_UNIT_CURRENT_A, "A", "Current [A]", 2, 20},
    {21, Nj6Units::E_UNIT_CURRENT_MA, "mA", "Current [mA]", 0, 21},
    {22, Nj6Units::E_UNIT_CURRENT_0_1A, "0.1 A", "Current [0.1 A]", 0, 22},
    {30, Nj6Units::E_UNIT_VOLTAGE_V, "V", "Voltage [V]", 1, 30},
    {31, Nj6Units::E_UNIT_VOLTAGE_MV, "mV", "Voltage [mV]", 0, 31},
    {32, Nj6Units::E_UNIT_VOLTAGE_0_1V, "0.1 V", "Voltage [0.1 V]", 0, 32},
    {40, Nj6Units::E_UNIT_SPEED_RPM, "rpm", "Speed [RPM]", 3, 42},
    {41, Nj6Units::E_UNIT_SPEED_HZ, "Hz", "Speed [Hz]", 2, 41},
    {42, Nj6Units::E_UNIT_SPEED_MM_PER_S, "mm_per_s", "Speed [mm_per_s]", 3, 42},
    {43, Nj6Units::E_UNIT_SPEED_INC_PER_S, "inc_per_s", "Speed [inc_per_s]", 0, 43},
    {50, Nj6Units::E_UNIT_POWER_W, "W", "Power [W]", 1, 50},
    {51, Nj6Units::E_UNIT_POWER_KW, "kW", "Power [kW]", 3, 51},
    {52, Nj6Units::E_UNIT_APPARENT_POWER_VA, "VA", "Apparent Power [VA]", 1, 52},
    {53, Nj6Units::E_UNIT_APPARENT_POWER_KVA, "kVA", "Apparent Power [kVA]", 3, 53},
    {54, Nj6Units::E_UNIT_ENERGY_WS, "Ws", "Electrical Power [Ws]", 1, 54},
    {55, Nj6Units::E_UNIT_POWER_0_1KW, "0.1 kW", "Power [0.1 kW]", 0, 55},
    {60, Nj6Units::E_UNIT_FREQ_HZ, "Hz", "Frequency [Hz]", 0, 60},
    {61, Nj6Units::E_UNIT_FREQ_KHZ, "kHz", "Frequency [kHz]", 0, 61},
    {62, Nj6Units::E_UNIT_FREQ_MHZ, "MHz", "Frequency [MHz]", 0, 62},
    {63, Nj6Units::E_UNIT_FREQ_0_1HZ, "0.1 Hz", "Frequency [0.1 Hz]", 0, 63},
    {70, Nj6Units::E_UNIT_POS_UM, "micronm", "Position [micronm]", 3, 70},
    {71, Nj6Units::E_UNIT_POS_MM, "mm", "Position [mm]", 3, 71},
    {72, Nj6Units::E_UNIT_POS_REV, "Revolution", "Position [Revolution]", 0, 72},
    {73, Nj6Units::E_UNIT_POS_COUNTS, "Counts", "Position [Counts]", 0, 73},
    {80, Nj6Units::E_UNIT_TEMP_DEGREE, "degree", "Temperature [degree]", 1, 80},
    {81, Nj6Units::E_UNIT_INDUCTANCE_MH, "mH", "Inductance [mH]", 3, 81},
    {82, Nj6Units::E_UNIT_CAPACITY_UF, "micronF", "Capacity [micronF]", 3, 82},
    {83, Nj6Units::E_UNIT_RESISTOR_OHM, "Ohm", "Resistor [Ohm]", 3, 83},
    {84, Nj6Units::E_UNIT_TORQUE_NM, "Nm", "Torque [Nm]", 3, 96},
    {85, Nj6Units::E_UNIT_ACCEL_1S2, "1s2", "Acceleration [1s2]", 3, 93},
    {86, Nj6Units::E_UNIT_AMP_V_PER_A, "v_per_a", "Amplification [v_per_a]", 3, 86},
    {87, Nj6Units::E_UNIT_AMP_MNM_PER_RPM, "mnm_per_rpm", "Amplification [mnm_per_rpm]", 3, 98},
    {88, Nj6Units::E_UNIT_ANGLE_DEGREE, "angle_degree", "Angle [angle_degree]", 1, 88},
    {89, Nj6Units::E_UNIT_TORQUE_CONST_NM_PER_A, "Nm/A", "Torque constant [Nm/A]", 3, 95},
    {90, Nj6Units::E_UNIT_INERTIA_KG_CM2, "kg_cm2", "Mass moment of inertia [kg_cm2]", 3, 94},
    {91, Nj6Units::E_UNIT_VOLTAGE_CONST_V_KRPM, "V_krpm", "Voltage constant [V_krpm]", 2, 97},
    {92, Nj6Units::E_UNIT_TORQUE_MNM, "mNm", "Torque [mNm]", 0, 99},
    {93, Nj6Units::E_UNIT_ACCEL_MMS2, "mms2", "Acceleration [mms2]", 3, 93},
    {94, Nj6Units::E_UNIT_MASS_KG, "kg", "Mass [kg]", 3, 94},
    {95, Nj6Units::E_UNIT_FORCE_N_PER_A, "n_per_a", "Force [n_per_a]", 3, 95},
    {96, Nj6Units::E_UNIT_FORCE_N, "N", "Force [N]", 4, 96},
    {97, Nj6Units::E_UNIT_VOLTAGE_CONST_V_PER_M_PER_S, "v_per_m_per_s",
     "Voltage constant [v_per_m_per_s]", 2, 97},
    {98, Nj6Units::E_UNIT_AMP_MN_PER_MM_PER_S, "mn_per_mm_per_s", "Amplification [mn_per_mm_per_s]", 3, 98},
    {99, Nj6Units::E_UNIT_FORCE_MN, "mN", "Force [mN]", 3, 99},
    {100, Nj6Units::E_UNIT_PERCENT, "percent", "Percent [percent]", 1, 100},
    {101, Nj6Units::E_UNIT_PERMILL, "permill", "Permill [permill]", 0, 101},
    {102, Nj6Units::E_UNIT_PERCENT_S, "percent_s", "Percent per second [percent_s]", 1, 102},
    {103, Nj6Units::E_UNIT_PERMILL_S, "permill_s", "Permill per second [permill_s]", 0, 103},
    {110, Nj6Units::E_UNIT_ACCEL_INC_S2, "inc_s2", "Acceleration [inc_s2]", 3, 110},
    {111, Nj6Units::E_UNIT_TEMP_0_1DEGREE, "0.1 degree", "Temperature [0.1 degree]", 0, 111},
    {120, Nj6Units::E_UNIT_AMP_HZ_PER_A, "hz_per_a", "Amplification [hz_per_a]", 2, 120},
    {121, Nj6Units::E_UNIT_DEGREE_PER_KHZ, "degree_per_khz", "Degree per kHz [degree_per_khz]", 1, 121},
    {130, Nj6Units::E_UNIT_DS402_RECORD_01, "", "DS402 Record Type 01", 0, 130},
    {141, Nj6Units::E_UNIT_DS402_I16_FACTOR_ARRAY_01, "", "DS402 I16 Factor Array Type 01", 0, 141},
    {142, Nj6Units::E_UNIT_DS402_I32_FACTOR_ARRAY_02, "", "DS402 I32 Factor Array Type 02", 0, 142},
    {143, Nj6Units::E_UNIT_DS402_I32_POS_LIMIT_ARRAY_03, "",
     "DS402 I32 Position Limit Array Type 03", 0, 143},
    {144, Nj6Units::E_UNIT_DS402_U32_POS_ENCODER_ARRAY_04, "",
     "DS402 U32 Position Encoder Array Type 04", 0, 144},
    {145, Nj6Units::E_UNIT_DS402_U32_VEL_ENCODER_ARRAY_05, "",
     "DS402 U32 Velocity Encoder Array Type 05", 0, 145},
    {146, Nj6Units::E_UNIT_DS402_U32_GEAR_RATIO_ARRAY_06, "", "DS402 U32 Gear Ratio Array Type 06", 0, 146},
    {147, Nj6Units::E_UNIT_DS402_U32_FEED_CONST_ARRAY_07, "",
     "DS402 U32 Feed Constant Array Type 07", 0, 147},
    {148, Nj6Units::E_UNIT_DS402_U32_FACTOR_ARRAY_08, "", "DS402 U32 Factor Array Type 08", 0, 148},
    {149, Nj6Units::E_UNIT_DS402_U32_HOMING_SPEED_ARRAY_09, "",
     "DS402 U32 Homing Speed Array Type 09", 0, 149},
    {150, Nj6Units::E_UNIT_DS402_U32_DIGITAL_IO_ARRAY_10, "", "DS402 U32 Digital IO Array Type 10", 0, 150},
};
// clang-format on

constexpr int unitCount = 72;
static_assert(sizeof units / sizeof *units == unitCount, "72 units");

// Codes that no row has: between the rows, beside them, and as far away as 32 bits go.
const QVector<int> &unknownCodes()
{
    static const QVector<int> codes = {3,   5,   9,   16,   19,      29,         39,      44,     49,
                                       56,  64,  74,  79,   104,     109,        112,     119,    122,
                                       129, 131, 140, 151,  152,     255,        256,     266,    -1,
                                       -10, 306, 406, 1000, 0x10000, 0x1000000A, INT_MAX, INT_MIN};
    return codes;
}

eUnit_t unitOf(int code)
{
    return static_cast<eUnit_t>(code);
}

using Question = QPair<QByteArray, QByteArray>; // context, source

QVector<Question> questionsFor(std::initializer_list<const char *> sources)
{
    QVector<Question> questions;
    for (const char *source : sources)
        questions += Question("CUnitParser", source);
    return questions;
}

// Answers from a dictionary and keeps every question.
class RecordingTranslator : public QTranslator
{
public:
    explicit RecordingTranslator(const QHash<QByteArray, QString> &answers = {}) : mAnswers(answers)
    {
        QCoreApplication::installTranslator(this);
    }
    ~RecordingTranslator() override { QCoreApplication::removeTranslator(this); }

    bool isEmpty() const override { return false; }

    QString translate(const char *context, const char *source, const char *disambiguation,
                      int n) const override
    {
        mQuestions += Question(context, source);
        if (disambiguation || n != -1)
            mQuestions += Question("disambiguation", disambiguation);
        return mAnswers.value(source);
    }

    QVector<Question> takeQuestions()
    {
        QVector<Question> questions;
        questions.swap(mQuestions);
        return questions;
    }

private:
    QHash<QByteArray, QString> mAnswers;
    mutable QVector<Question> mQuestions;
};

// The local 8-bit encoding while this object lives.
class ScopedLocalCodec
{
public:
    explicit ScopedLocalCodec(const char *name)
    {
        QTextCodec::setCodecForLocale(QTextCodec::codecForName(name));
    }
    ~ScopedLocalCodec() { QTextCodec::setCodecForLocale(nullptr); }
    ScopedLocalCodec(const ScopedLocalCodec &) = delete;
    ScopedLocalCodec &operator=(const ScopedLocalCodec &) = delete;
};

// Lookups in a static initialiser, before there is an application.
bool wereRightAtLoad = false;
void lookUpAtLoad()
{
    wereRightAtLoad = CUnitParser::unitStr(Nj6Units::E_UNIT_TIME_MS) == QLatin1String("ms")
                      && CUnitParser::unitStr(unitOf(3)) == QLatin1String("unknown")
                      && CUnitParser::unitDescription(Nj6Units::E_UNIT_FORCE_N) == QLatin1String("Force [N]")
                      && CUnitParser::digits(Nj6Units::E_UNIT_FORCE_N) == 4
                      && CUnitParser::toLinear(Nj6Units::E_UNIT_TORQUE_NM) == Nj6Units::E_UNIT_FORCE_N;
}
Q_CONSTRUCTOR_FUNCTION(lookUpAtLoad)

} // namespace

class tst_unit_catalogue : public LoggedTest
{
    Q_OBJECT

private Q_SLOTS:
    void lookupsWorkInStaticInitialisers();

    void catalogue_data();
    void catalogue();
    void unknownCodes_data();
    void unknownCodes();
    void everyNumberNearTheCatalogueIsARowOrUnknown();
    void exactlyEightUnitsHaveALinearCounterpart();
    void numbersBehaveAsCodes_data();
    void numbersBehaveAsCodes();

    void mapsHoldTheCatalogue();
    void mapsAreNewEachTime();
    void digitsOfAnUnknownCodeInsertNothing();

    void asksForACatalogueTextOnce_data();
    void asksForACatalogueTextOnce();
    void unknownDefaultIsTranslatedTwice_data();
    void unknownDefaultIsTranslatedTwice();
    void secondKeyIsInTheLocalEncoding();
    void emptyAnswerForTheDefaultIsNotAskedAgain();
    void unitUnknownIsACatalogueText();
    void translationsAreNeverCached();
    void onlyTextsAreTranslated();

    void lookupsAreThoseOfTheMaps();

    void exampleOfTheClassComment();
};

void tst_unit_catalogue::lookupsWorkInStaticInitialisers()
{
    QVERIFY(wereRightAtLoad);
}

void tst_unit_catalogue::catalogue_data()
{
    QTest::addColumn<int>("row");
    for (int row = 0; row < unitCount; ++row)
        QTest::addRow("%d", units[row].code) << row;
}

void tst_unit_catalogue::catalogue()
{
    QFETCH(int, row);
    const Unit &unit = units[row];

    QCOMPARE(static_cast<int>(unit.unit), unit.code);
    QCOMPARE(CUnitParser::unitStr(unit.unit), QString::fromLatin1(unit.text));
    QCOMPARE(CUnitParser::unitDescription(unit.unit), QString::fromLatin1(unit.description));
    QCOMPARE(CUnitParser::digits(unit.unit), unit.digits);
    QCOMPARE(static_cast<int>(CUnitParser::toLinear(unit.unit)), unit.linear);
    QCOMPARE(CUnitParser::hasLinear(unit.unit), unit.linear != unit.code);
    QCOMPARE(CUnitParser::mDigitsMap.value(unit.unit, -1), unit.digits);
    QCOMPARE(CUnitParser::initUnitMap().value(unit.unit, QStringLiteral("-")),
             QString::fromLatin1(unit.text));
    QCOMPARE(CUnitParser::initDescriptionMap().value(unit.unit), QString::fromLatin1(unit.description));
}

void tst_unit_catalogue::unknownCodes_data()
{
    QTest::addColumn<int>("code");
    for (const int code : ::unknownCodes())
        QTest::addRow("%d", code) << code;
}

void tst_unit_catalogue::unknownCodes()
{
    QFETCH(int, code);
    const eUnit_t unit = unitOf(code);

    QCOMPARE(CUnitParser::unitStr(unit), QStringLiteral("unknown"));
    QCOMPARE(CUnitParser::unitDescription(unit), QStringLiteral("Unknown unit"));
    QCOMPARE(CUnitParser::digits(unit), 0);
    QCOMPARE(static_cast<int>(CUnitParser::toLinear(unit)), code);
    QVERIFY(!CUnitParser::hasLinear(unit));
    QVERIFY(!CUnitParser::mDigitsMap.contains(unit));
    QVERIFY(!CUnitParser::initUnitMap().contains(unit));
    QVERIFY(!CUnitParser::initDescriptionMap().contains(unit));
}

void tst_unit_catalogue::everyNumberNearTheCatalogueIsARowOrUnknown()
{
    std::set<int> codes;
    for (const Unit &row : units)
        codes.insert(row.code);
    int found = 0;
    for (int code = -300; code <= 600; ++code) {
        const bool isRow = codes.count(code) != 0;
        const QString description = CUnitParser::unitDescription(unitOf(code));
        QCOMPARE(description == QLatin1String("Unknown unit"), !isRow || code == Nj6Units::E_UNIT_UNKNOWN);
        found += isRow ? 1 : 0;
    }
    QCOMPARE(found, unitCount);
}

void tst_unit_catalogue::exactlyEightUnitsHaveALinearCounterpart()
{
    QVector<int> rotary;
    for (int code = -300; code <= 600; ++code) {
        if (CUnitParser::hasLinear(unitOf(code)))
            rotary += code;
    }
    QCOMPARE(rotary, (QVector<int>{40, 84, 85, 87, 89, 90, 91, 92}));
    // There is no way back.
    for (const int code : {42, 96, 93, 98, 95, 94, 97, 99})
        QCOMPARE(static_cast<int>(CUnitParser::toLinear(unitOf(code))), code);
}

void tst_unit_catalogue::numbersBehaveAsCodes_data()
{
    QTest::addColumn<uint>("number");
    QTest::addColumn<int>("linear");

    for (const Unit &row : units)
        QTest::addRow("%d", row.code) << static_cast<uint>(row.code) << row.linear;
    QTest::newRow("no row") << 3u << 3;
    QTest::newRow("behind the last row") << 151u << 151;
    QTest::newRow("2^31 - 1") << 0x7FFFFFFFu << INT_MAX;
    QTest::newRow("2^31") << 0x80000000u << INT_MIN;
    QTest::newRow("2^32 - 1") << 0xFFFFFFFFu << -1;
    QTest::newRow("40 in the low byte only") << 0x100u + 40u << 0x100 + 40;
}

void tst_unit_catalogue::numbersBehaveAsCodes()
{
    QFETCH(uint, number);
    QFETCH(int, linear);

    QCOMPARE(static_cast<int>(CUnitParser::toLinear(number)), linear);
    QCOMPARE(static_cast<int>(CUnitParser::toLinear(static_cast<eUnit_t>(number))), linear);
    QCOMPARE(CUnitParser::hasLinear(number), static_cast<uint>(linear) != number);
    QCOMPARE(CUnitParser::hasLinear(number), CUnitParser::hasLinear(static_cast<eUnit_t>(number)));
}

void tst_unit_catalogue::mapsHoldTheCatalogue()
{
    QMap<eUnit_t, QString> texts;
    QMap<eUnit_t, QString> descriptions;
    QMap<eUnit_t, int> digits;
    for (const Unit &row : units) {
        texts.insert(unitOf(row.code), QString::fromLatin1(row.text));
        descriptions.insert(unitOf(row.code), QString::fromLatin1(row.description));
        digits.insert(unitOf(row.code), row.digits);
    }
    QCOMPARE(CUnitParser::initUnitMap(), texts);
    QCOMPARE(CUnitParser::initDescriptionMap(), descriptions);
    QCOMPARE(CUnitParser::mDigitsMap, digits);
    QCOMPARE(CUnitParser::mDigitsMap.size(), unitCount);
    QCOMPARE(CUnitParser::mDigitsMap.keys(4), QList<eUnit_t>{Nj6Units::E_UNIT_FORCE_N});
}

void tst_unit_catalogue::mapsAreNewEachTime()
{
    QMap<eUnit_t, QString> texts = CUnitParser::initUnitMap();
    QMap<eUnit_t, QString> descriptions = CUnitParser::initDescriptionMap();
    texts[Nj6Units::E_UNIT_TIME_MS] = QStringLiteral("changed");
    descriptions.clear();
    QCOMPARE(CUnitParser::initUnitMap().value(Nj6Units::E_UNIT_TIME_MS), QStringLiteral("ms"));
    QCOMPARE(CUnitParser::initDescriptionMap().size(), unitCount);
    QCOMPARE(CUnitParser::unitStr(Nj6Units::E_UNIT_TIME_MS), QStringLiteral("ms"));
    QCOMPARE(CUnitParser::unitDescription(Nj6Units::E_UNIT_TIME_MS), QStringLiteral("Time [ms]"));
}

void tst_unit_catalogue::digitsOfAnUnknownCodeInsertNothing()
{
    for (const int code : ::unknownCodes())
        QCOMPARE(CUnitParser::digits(unitOf(code)), 0);
    QCOMPARE(CUnitParser::mDigitsMap.size(), unitCount);
    QVERIFY(!CUnitParser::mDigitsMap.contains(unitOf(5)));
}

void tst_unit_catalogue::asksForACatalogueTextOnce_data()
{
    catalogue_data();
}

void tst_unit_catalogue::asksForACatalogueTextOnce()
{
    QFETCH(int, row);
    const Unit &unit = units[row];
    const bool emptyText = *unit.text == '\0';

    RecordingTranslator silent;
    QCOMPARE(CUnitParser::unitStr(unit.unit), QString::fromLatin1(unit.text));
    QCOMPARE(silent.takeQuestions(), emptyText ? QVector<Question>() : questionsFor({unit.text}));
    QCOMPARE(CUnitParser::unitDescription(unit.unit), QString::fromLatin1(unit.description));
    QCOMPARE(silent.takeQuestions(), questionsFor({unit.description}));

    // An answer to the empty text would be a translation file's heading.
    RecordingTranslator answering({{"", QStringLiteral("heading")},
                                   {unit.text, QString::fromUtf8(emptyText ? "heading" : "Ω→")},
                                   {unit.description, QStringLiteral("Beschreibung für µ")}});
    QCOMPARE(CUnitParser::unitStr(unit.unit), emptyText ? QString() : QStringLiteral("Ω→"));
    QCOMPARE(CUnitParser::unitDescription(unit.unit), QStringLiteral("Beschreibung für µ"));
    QCOMPARE(answering.takeQuestions().size(), emptyText ? 1 : 2);
    QCOMPARE(silent.takeQuestions(), QVector<Question>());
}

void tst_unit_catalogue::unknownDefaultIsTranslatedTwice_data()
{
    QTest::addColumn<QString>("first");
    QTest::addColumn<QByteArray>("secondKey");
    QTest::addColumn<QString>("second");
    QTest::addColumn<QString>("result");

    // For the text; the description goes the same way with its own default.
    QTest::newRow("not translated") << QString() << QByteArray("*") << QString() << QStringLiteral("*");
    QTest::newRow("translated, its translation is no key")
        << QStringLiteral("unbekannt") << QByteArray("unbekannt") << QString() << QStringLiteral("unbekannt");
    QTest::newRow("translated, its translation is a key")
        << QStringLiteral("unbekannt") << QByteArray("unbekannt") << QStringLiteral("?!")
        << QStringLiteral("?!");
    QTest::newRow("translated into a catalogue text")
        << QStringLiteral("rpm") << QByteArray("rpm") << QStringLiteral("U/min") << QStringLiteral("U/min");
    QTest::newRow("not ASCII") << QStringLiteral("λάθος") << QByteArray("λάθος") << QString()
                               << QStringLiteral("λάθος");
}

void tst_unit_catalogue::unknownDefaultIsTranslatedTwice()
{
    QFETCH(QString, first);
    QFETCH(QByteArray, secondKey);
    QFETCH(QString, second);
    QFETCH(QString, result);

    const ScopedLocalCodec utf8("UTF-8");
    using Lookup = QString (*)(eUnit_t);
    const QVector<QPair<const char *, Lookup>> lookups = {{"unknown", &CUnitParser::unitStr},
                                                          {"Unknown unit", &CUnitParser::unitDescription}};
    for (const auto &[source, lookup] : lookups) {
        const QByteArray key = secondKey == "*" ? QByteArray(source) : secondKey;
        const QString expected = result == QLatin1String("*") ? QString::fromLatin1(source) : result;
        QHash<QByteArray, QString> answers = {{source, first}};
        if (!second.isNull())
            answers.insert(key, second);
        for (const int code : ::unknownCodes()) {
            RecordingTranslator translator(answers);
            QCOMPARE(lookup(unitOf(code)), expected);
            QCOMPARE(translator.takeQuestions(), questionsFor({source, key.constData()}));
        }
    }
}

void tst_unit_catalogue::secondKeyIsInTheLocalEncoding()
{
    const ScopedLocalCodec latin1("ISO-8859-1");
    RecordingTranslator translator(
        {{"unknown", QStringLiteral("ungültig")}, {"ung\xFCltig", QStringLiteral("gefunden")}});
    QCOMPARE(CUnitParser::unitStr(unitOf(3)), QStringLiteral("gefunden"));
    QCOMPARE(translator.takeQuestions(), questionsFor({"unknown", "ung\xFCltig"}));
}

void tst_unit_catalogue::emptyAnswerForTheDefaultIsNotAskedAgain()
{
    RecordingTranslator translator({{"unknown", QString::fromLatin1("")},
                                    {"Unknown unit", QString::fromLatin1("")},
                                    {"", QStringLiteral("heading")}});
    QCOMPARE(CUnitParser::unitStr(unitOf(3)), QString());
    QCOMPARE(CUnitParser::unitDescription(unitOf(3)), QString());
    QCOMPARE(translator.takeQuestions(), questionsFor({"unknown", "Unknown unit"}));
}

void tst_unit_catalogue::unitUnknownIsACatalogueText()
{
    RecordingTranslator translator({{"unknown", QStringLiteral("rpm")}, {"rpm", QStringLiteral("U/min")}});
    QCOMPARE(CUnitParser::unitStr(Nj6Units::E_UNIT_UNKNOWN), QStringLiteral("rpm"));
    QCOMPARE(translator.takeQuestions(), questionsFor({"unknown"}));
    QCOMPARE(CUnitParser::unitStr(unitOf(1000)), QStringLiteral("U/min"));
    QCOMPARE(translator.takeQuestions(), questionsFor({"unknown", "rpm"}));
}

void tst_unit_catalogue::translationsAreNeverCached()
{
    const eUnit_t unit = Nj6Units::E_UNIT_TIME_S;
    {
        RecordingTranslator german({{"s", QStringLiteral("Sek")}, {"Time [s]", QStringLiteral("Zeit")}});
        for (int i = 0; i < 3; ++i) {
            QCOMPARE(CUnitParser::unitStr(unit), QStringLiteral("Sek"));
            QCOMPARE(CUnitParser::unitDescription(unit), QStringLiteral("Zeit"));
            QCOMPARE(german.takeQuestions(), questionsFor({"s", "Time [s]"}));
        }
        const RecordingTranslator french(
            {{"s", QStringLiteral("sec")}, {"Time [s]", QStringLiteral("Temps")}});
        QCOMPARE(CUnitParser::unitStr(unit), QStringLiteral("sec"));
        QCOMPARE(CUnitParser::unitDescription(unit), QStringLiteral("Temps"));
    }
    QCOMPARE(CUnitParser::unitStr(unit), QStringLiteral("s"));
    QCOMPARE(CUnitParser::unitDescription(unit), QStringLiteral("Time [s]"));
}

void tst_unit_catalogue::onlyTextsAreTranslated()
{
    RecordingTranslator translator({{"ms", QStringLiteral("мс")}, {"Time [ms]", QStringLiteral("Час")}});
    QCOMPARE(CUnitParser::digits(Nj6Units::E_UNIT_TIME_MS), 0);
    QVERIFY(!CUnitParser::hasLinear(Nj6Units::E_UNIT_TIME_MS));
    QCOMPARE(CUnitParser::toLinear(40u), Nj6Units::E_UNIT_SPEED_MM_PER_S);
    QCOMPARE(CUnitParser::initUnitMap().value(Nj6Units::E_UNIT_TIME_MS), QStringLiteral("ms"));
    QCOMPARE(CUnitParser::initDescriptionMap().value(Nj6Units::E_UNIT_TIME_MS), QStringLiteral("Time [ms]"));
    QCOMPARE(translator.takeQuestions(), QVector<Question>());
}

// The lookups go to a table, the maps are the interface: one says what the others say.
void tst_unit_catalogue::lookupsAreThoseOfTheMaps()
{
    const QMap<eUnit_t, QString> texts = CUnitParser::initUnitMap();
    const QMap<eUnit_t, QString> descriptions = CUnitParser::initDescriptionMap();
    QVector<int> codes = {INT_MIN, INT_MIN + 1, INT_MAX - 1, INT_MAX, 1 << 16, 1 << 24, -(1 << 24)};
    for (int code = -1000; code <= 1000; ++code)
        codes += code;
    for (const int code : qAsConst(codes)) {
        const eUnit_t unit = unitOf(code);
        QCOMPARE(CUnitParser::unitStr(unit), texts.value(unit, QStringLiteral("unknown")));
        QCOMPARE(CUnitParser::unitDescription(unit),
                 descriptions.value(unit, QStringLiteral("Unknown unit")));
        QCOMPARE(CUnitParser::digits(unit), CUnitParser::mDigitsMap.value(unit));
    }
}

void tst_unit_catalogue::exampleOfTheClassComment()
{
    QCOMPARE(CUnitParser::unitStr(Nj6Units::E_UNIT_TORQUE_NM), QStringLiteral("Nm"));
    QCOMPARE(CUnitParser::unitDescription(Nj6Units::E_UNIT_TORQUE_NM), QStringLiteral("Torque [Nm]"));
    QCOMPARE(CUnitParser::digits(Nj6Units::E_UNIT_TORQUE_NM), 3);
    QCOMPARE(CUnitParser::toLinear(Nj6Units::E_UNIT_TORQUE_NM), Nj6Units::E_UNIT_FORCE_N);
}

QTEST_GUILESS_MAIN(tst_unit_catalogue)
#include "tst_unit_catalogue.moc"
