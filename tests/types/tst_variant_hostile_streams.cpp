// SPDX-License-Identifier: MIT
#include "VariantSamples.h"

#include <LoggedTest.h>
#include <MemoryLimit.h>

#include <QCborMap>
#include <QCborValue>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTest>

using namespace VariantSamples;

namespace {

constexpr int variantType = QMetaType::QVariant;
constexpr int listType = QMetaType::QVariantList;
constexpr int userType = QMetaType::User;
constexpr int qt4UserType = 127;

// The parts of a variant's stream form, written as hostile bytes may have them.
class Forgery
{
public:
    explicit Forgery(int version = QDataStream::Qt_5_15) : mStream(&mBytes, QIODevice::WriteOnly)
    {
        mStream.setVersion(version);
    }

    template<typename T>
    Forgery &add(const T &value)
    {
        mStream << value;
        return *this;
    }

    Forgery &type(int number) { return add(static_cast<quint32>(number)).add(static_cast<qint8>(0)); }
    Forgery &named(const char *name, int number = userType) { return type(number).add(name); }
    Forgery &raw(const QByteArray &bytes)
    {
        mStream.writeRawData(bytes.constData(), bytes.size());
        return *this;
    }
    Forgery &tag(int number) { return add(static_cast<qint32>(number)); }
    QByteArray bytes() const { return mBytes; }

private:
    QByteArray mBytes;
    QDataStream mStream;
};

struct Reading
{
    CVariant value;
    QDataStream::Status status;
};

Reading read(const QByteArray &bytes, int version = QDataStream::Qt_5_15)
{
    QDataStream stream(bytes);
    stream.setVersion(version);
    Reading reading = {CVariant(5), QDataStream::Ok};
    stream >> reading.value;
    reading.status = stream.status();
    return reading;
}

QByteArray writtenValue(const QVariant &value, int version = QDataStream::Qt_5_15)
{
    return Forgery(version).add(value).tag(NTypes::E_I32).bytes();
}

bool isEmpty(const CVariant &value)
{
    return value.type() == NTypes::E_UNKNOWN && !heldBy(value).isValid();
}

QVariant nested(const QVariant &inner)
{
    return QVariant(variantType, &inner);
}

// A user type of some program, whose loading is seen.
struct ForeignType
{
    static int loaded;
};
int ForeignType::loaded = 0;

QDataStream &operator<<(QDataStream &stream, const ForeignType &)
{
    return stream << 5;
}

QDataStream &operator>>(QDataStream &stream, ForeignType &)
{
    ++ForeignType::loaded;
    int number = 0;
    return stream >> number;
}

void addBytesColumn()
{
    QTest::addColumn<QByteArray>("bytes");
}

// Something of the value is asked for, so that a broken one would show.
void use(const CVariant &value)
{
    value.toStr();
    value.toByteArray();
    value.size();
    value.isValid();
    value.toHex(QString());
    value.toF64();
    value.toString128();
}

} // namespace

Q_DECLARE_METATYPE(ForeignType)

// Bytes that need not be trusted.
class tst_variant_hostile_streams : public LoggedTest
{
    Q_OBJECT

private Q_SLOTS:
    void containersAreRefused_data();
    void containersAreRefused();
    void containersUnderTheirNameAreRefused_data();
    void containersUnderTheirNameAreRefused();
    void foreignTypesAreRefusedBeforeLoading();
    void unknownTypesAreRefused_data();
    void unknownTypesAreRefused();
    void aNameLongerThanAnyIsCorrupt();
    void deepNestingIsRefused_data();
    void deepNestingIsRefused();
    void truncatedStreams_data();
    void truncatedStreams();
    void emptyStream();
    void hugeLengthsDoNotAllocate_data();
    void hugeLengthsDoNotAllocate();
    void failedStreamStaysFailed();
    void randomCorruptions();
    void randomBytesInEveryVersion();
};

void tst_variant_hostile_streams::containersAreRefused_data()
{
    QTest::addColumn<QVariant>("value");
    QTest::newRow("list") << QVariant(QVariantList{5});
    QTest::newRow("empty list") << QVariant(QVariantList());
    QTest::newRow("map") << QVariant(QVariantMap{{QStringLiteral("key"), 5}});
    QTest::newRow("hash") << QVariant(QVariantHash{{QStringLiteral("key"), 5}});
    QTest::newRow("texts") << QVariant(QStringList{QStringLiteral("text")});
    QTest::newRow("byte arrays") << QVariant::fromValue(QByteArrayList{"bytes"});
    QTest::newRow("variant") << nested(5);
    QTest::newRow("variant in variant") << nested(nested(5));
    QTest::newRow("variant of a list") << nested(QVariantList{5});
    QTest::newRow("list of lists") << QVariant(QVariantList{QVariant(QVariantList{5})});
    QTest::newRow("JSON value") << QVariant(QJsonValue(5));
    QTest::newRow("JSON array") << QVariant(QJsonArray{5});
    QTest::newRow("JSON object") << QVariant(QJsonObject{{QStringLiteral("key"), 5}});
    QTest::newRow("JSON document") << QVariant(QJsonDocument(QJsonArray{5}));
    QTest::newRow("CBOR value") << QVariant::fromValue(QCborValue(5));
    QTest::newRow("CBOR map") << QVariant::fromValue(QCborMap{{5, 6}});
}

void tst_variant_hostile_streams::containersAreRefused()
{
    QFETCH(const QVariant, value);
    for (const int version :
         {QDataStream::Qt_5_15, QDataStream::Qt_5_0, QDataStream::Qt_4_8, QDataStream::Qt_4_0}) {
        const Reading reading = read(writtenValue(value, version), version);
        takeLog(); // what Qt says of a type that such an old stream cannot carry
        QCOMPARE(reading.status, QDataStream::ReadCorruptData);
        QVERIFY(isEmpty(reading.value));
    }
}

// A user type's name may be that of a built-in type.
void tst_variant_hostile_streams::containersUnderTheirNameAreRefused_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<int>("version");
    const int qt5 = QDataStream::Qt_5_15;
    const QVariantList list = {QVariant(5)};
    for (const char *const name : {"QVariantList", "QList<QVariant>"}) {
        QTest::newRow(name) << Forgery().named(name).add(list).tag(6).bytes() << qt5;
        const QByteArray qt4Name = QByteArray(name) + ", Qt 4.8";
        QTest::newRow(qt4Name.constData())
            << Forgery(QDataStream::Qt_4_8).named(name, qt4UserType).add(list).tag(6).bytes()
            << int(QDataStream::Qt_4_8);
    }
    QTest::newRow("QVariant") << Forgery().named("QVariant").add(QVariant(5)).tag(6).bytes() << qt5;
    QTest::newRow("QVariantMap") << Forgery().named("QVariantMap").add(QVariantMap()).tag(6).bytes() << qt5;
    QTest::newRow("QVariantHash") << Forgery().named("QVariantHash").add(QVariantHash()).tag(6).bytes()
                                  << qt5;
    QTest::newRow("QStringList") << Forgery().named("QStringList").add(QStringList()).tag(6).bytes() << qt5;
    QTest::newRow("QJsonObject") << Forgery().named("QJsonObject").add(QJsonObject()).tag(6).bytes() << qt5;
}

void tst_variant_hostile_streams::containersUnderTheirNameAreRefused()
{
    QFETCH(const QByteArray, bytes);
    QFETCH(const int, version);
    const Reading reading = read(bytes, version);
    QCOMPARE(reading.status, QDataStream::ReadCorruptData);
    QVERIFY(isEmpty(reading.value));
}

void tst_variant_hostile_streams::foreignTypesAreRefusedBeforeLoading()
{
    qRegisterMetaTypeStreamOperators<ForeignType>("ForeignType");
    for (const int version : {QDataStream::Qt_5_15, QDataStream::Qt_4_8}) {
        const Reading reading = read(writtenValue(QVariant::fromValue(ForeignType()), version), version);
        QCOMPARE(reading.status, QDataStream::ReadCorruptData);
        QVERIFY(isEmpty(reading.value));
    }
    QCOMPARE(ForeignType::loaded, 0);
}

void tst_variant_hostile_streams::unknownTypesAreRefused_data()
{
    addBytesColumn();
    QTest::newRow("unknown name") << Forgery().named("NTypes::sNothing_t").tag(6).bytes();
    QTest::newRow("empty name") << Forgery().named("").tag(6).bytes();
    QTest::newRow("null name") << Forgery().type(userType).add(QByteArray()).tag(6).bytes();
    QTest::newRow("name without a terminator")
        << Forgery().type(userType).add(QByteArray("CString32")).tag(6).bytes();
    QTest::newRow("name with more behind a zero")
        << Forgery().type(userType).add(QByteArray("CString32\0x", 11)).tag(6).bytes();
    QTest::newRow("name of a record in other case") << Forgery().named("ntypes::sversion_t").tag(6).bytes();
    for (const int number : {52, 58, 64, 65, 78, 121, 126, 1023, 1025, 0x7FFFFFFF, -1})
        QTest::newRow(("type " + QByteArray::number(number)).constData())
            << Forgery().type(number).raw(QByteArray(300, '\0')).bytes();
    // Where Qt 4 had its user type, the integers and the characters.
    for (int number = qt4UserType; number <= 138; ++number)
        QTest::newRow(("number of Qt 4, " + QByteArray::number(number)).constData())
            << Forgery().type(number).raw(QByteArray(300, '\0')).bytes();
}

void tst_variant_hostile_streams::unknownTypesAreRefused()
{
    QFETCH(const QByteArray, bytes);
    const Reading reading = read(bytes);
    QVERIFY(reading.status != QDataStream::Ok);
    QVERIFY(isEmpty(reading.value));
}

// All of it is there: nothing was cut off.
void tst_variant_hostile_streams::aNameLongerThanAnyIsCorrupt()
{
    const QByteArray name(300, 'x');
    const Reading reading = read(Forgery().named(name.constData()).tag(6).bytes());
    QCOMPARE(reading.status, QDataStream::ReadCorruptData);
    QVERIFY(isEmpty(reading.value));
}

void tst_variant_hostile_streams::deepNestingIsRefused_data()
{
    addBytesColumn();
    constexpr int depth = 200000;
    QTest::newRow("variants") << Forgery().type(variantType).bytes().repeated(depth);
    QTest::newRow("lists") << Forgery().type(listType).add(quint32(1)).bytes().repeated(depth);
    QTest::newRow("maps")
        << Forgery().type(QMetaType::QVariantMap).add(quint32(1)).add(QString()).bytes().repeated(depth);
    QTest::newRow("variants by name") << Forgery().named("QVariant").bytes().repeated(depth);
}

void tst_variant_hostile_streams::deepNestingIsRefused()
{
    QFETCH(const QByteArray, bytes);
    const Reading reading = read(bytes);
    QCOMPARE(reading.status, QDataStream::ReadCorruptData);
    QVERIFY(isEmpty(reading.value));
}

void tst_variant_hostile_streams::truncatedStreams_data()
{
    QTest::addColumn<int>("tag");
    QTest::newRow("E_UNKNOWN") << 0;
    for (const int tag : valueTags)
        QTest::newRow(tagName(tag).constData()) << tag;
}

void tst_variant_hostile_streams::truncatedStreams()
{
    QFETCH(const int, tag);
    for (const int version : {QDataStream::Qt_5_15, QDataStream::Qt_4_8}) {
        const QByteArray bytes = Forgery(version).add(heldBy(typedSample(tag))).tag(tag).bytes();
        for (int length = 0; length < bytes.size(); ++length) {
            const Reading reading = read(bytes.left(length), version);
            QVERIFY2(reading.status != QDataStream::Ok, qPrintable(QString::number(length)));
            QVERIFY2(isEmpty(reading.value), qPrintable(QString::number(length)));
        }
        QCOMPARE(read(bytes, version).status, QDataStream::Ok);
    }
}

void tst_variant_hostile_streams::emptyStream()
{
    const Reading reading = read(QByteArray());
    QCOMPARE(reading.status, QDataStream::ReadPastEnd);
    QVERIFY(isEmpty(reading.value));
    QDataStream withoutDevice;
    CVariant value(5);
    withoutDevice >> value;
    QVERIFY(isEmpty(value));
}

void tst_variant_hostile_streams::hugeLengthsDoNotAllocate_data()
{
    addBytesColumn();
    const std::array<quint32, 4> lengths = {0x7FFFFFFF, 0x7FFFFFFE, 0xFFFFFFFE, 0x40000000};
    for (const quint32 length : lengths) {
        const auto name = [length](const char *what) {
            return QByteArray(what) + ' ' + QByteArray::number(length, 16);
        };
        QTest::newRow(name("text").constData())
            << Forgery().type(QMetaType::QString).add(length).add(5).bytes();
        QTest::newRow(name("bytes").constData())
            << Forgery().type(QMetaType::QByteArray).add(length).add(5).bytes();
        QTest::newRow(name("bits").constData())
            << Forgery().type(QMetaType::QBitArray).add(length).add(5).bytes();
        QTest::newRow(name("locator").constData())
            << Forgery().type(QMetaType::QUrl).add(length).add(5).bytes();
        QTest::newRow(name("locale").constData())
            << Forgery().type(QMetaType::QLocale).add(length).add(5).bytes();
        QTest::newRow(name("type name").constData()) << Forgery().type(userType).add(length).add(5).bytes();
        QTest::newRow(name("polygon").constData()) << Forgery().type(71).add(length).add(5).bytes();
        QTest::newRow(name("texts").constData())
            << Forgery().type(QMetaType::QStringList).add(length).add(5).bytes();
    }
}

void tst_variant_hostile_streams::hugeLengthsDoNotAllocate()
{
    QFETCH(const QByteArray, bytes);
    const MemoryLimit limit(64);
#ifdef Q_OS_LINUX
    QVERIFY(limit.isSet());
#endif
    const Reading reading = read(bytes);
    QVERIFY(reading.status != QDataStream::Ok);
    QVERIFY(isEmpty(reading.value));
}

void tst_variant_hostile_streams::failedStreamStaysFailed()
{
    QByteArray bytes = writtenValue(QVariantList{5});
    bytes.append(writtenValue(7));
    QDataStream stream(bytes);
    CVariant first;
    CVariant second(5);
    stream >> first;
    QCOMPARE(stream.status(), QDataStream::ReadCorruptData);
    stream >> second;
    QCOMPARE(stream.status(), QDataStream::ReadCorruptData);
    QVERIFY(isEmpty(second));
}

void tst_variant_hostile_streams::randomCorruptions()
{
    QRandomGenerator generator(815);
    QVector<QByteArray> originals;
    for (const int tag : valueTags)
        originals.append(Forgery().add(heldBy(typedSample(tag))).tag(tag).bytes());
    int refused = 0;
    const MemoryLimit limit(256);
    for (int round = 0; round < 20000; ++round) {
        QByteArray bytes = originals.at(generator.bounded(originals.size()));
        const int faults = generator.bounded(1, 5);
        for (int fault = 0; fault < faults; ++fault) {
            // Most faults hit the type and the lengths in front.
            const int reach = generator.bounded(2) == 0 ? qMin(bytes.size(), 12) : bytes.size();
            const int position = generator.bounded(qMax(reach, 1));
            switch (generator.bounded(4)) {
            case 0:
                bytes.remove(position, generator.bounded(1, 5));
                break;
            case 1:
                bytes.insert(position, randomBytes(generator.bounded(1, 5), generator));
                break;
            case 2:
                bytes.replace(position, 1, QByteArray(1, static_cast<char>(generator.bounded(64))));
                break;
            default:
                bytes.replace(position, 1, randomBytes(1, generator));
                break;
            }
        }
        const Reading reading = read(bytes);
        if (reading.status != QDataStream::Ok) {
            ++refused;
            QVERIFY2(isEmpty(reading.value), bytes.toHex().constData());
        }
        use(reading.value);
        takeLog();
    }
    QVERIFY(refused > 1000);
    QVERIFY(refused < 20000);
}

void tst_variant_hostile_streams::randomBytesInEveryVersion()
{
    QRandomGenerator generator(4711);
    const MemoryLimit limit(256);
    for (int version = QDataStream::Qt_1_0; version <= QDataStream::Qt_5_15; ++version) {
        for (int round = 0; round < 500; ++round) {
            // A small type number, so that every type of Qt has its turn.
            const QByteArray bytes =
                Forgery(version).add(static_cast<quint32>(generator.bounded(140))).bytes()
                + randomBytes(generator.bounded(80), generator);
            const Reading reading = read(bytes, version);
            QVERIFY(reading.status == QDataStream::Ok || isEmpty(reading.value));
            use(reading.value);
            takeLog();
        }
    }
}

QTEST_GUILESS_MAIN(tst_variant_hostile_streams)
#include "tst_variant_hostile_streams.moc"
