// SPDX-License-Identifier: MIT
// The points in which the three fixed strings differ on purpose.
#include "FixedStringClasses.h"

#include <LoggedTest.h>

#include <QTest>
#include <QVariant>

namespace {

QString kept()
{
    return QStringLiteral("abcdef");
}

QString taken()
{
    return QStringLiteral("xyz");
}

// The whole field made from a device's bytes.
template<typename String>
QByteArray fieldFromBytes(const QByteArray &bytes)
{
    bool ok = false;
    const QByteArray field = String::fromByteArray(bytes, &ok).byteArray();
    return ok ? field : QByteArray("not UTF-16");
}

template<typename Target, typename Source>
QString textTaken(const Source &source)
{
    Target target(kept());
    target = QVariant::fromValue(source);
    return target.str();
}

} // namespace

class tst_fixed_string_differences : public LoggedTest
{
    Q_OBJECT

private Q_SLOTS:
    void emptyFieldOf32And64GivesANullText();
    void emptyFieldOf128GivesAnEmptyText();
    void pairsFFFFAreRemovedBy32And64KeptBy128_data();
    void pairsFFFFAreRemovedBy32And64KeptBy128();
    void fieldOfFFIsAnEmptyTextOf32And64();
    void fieldOfFFIsATextOf128();
    void pairsAreRemovedBeforeTheCut();
    void pairsAreRemovedFromBytesBeyondTheFieldToo();
    void string32TakesNoOtherClass();
    void string64TakesString32();
    void string128TakesString64AndString32();
    void otherClassIsTakenAsItsText();
    void fullShorterStringIsTerminated();
    void emptyShorterStringEmptiesTheText();
    void converterWinsOverTheShorterString(); // last: it registers a converter that stays
};

void tst_fixed_string_differences::emptyFieldOf32And64GivesANullText()
{
    QVERIFY(CString32().str().isNull());
    QVERIFY(CString64().str().isNull());
    const QByteArray tailOnly = fromHex("000041004200");
    QVERIFY(CString32(tailOnly).str().isNull());
    QVERIFY(CString64(tailOnly).str().isNull());
    QVERIFY(CString32(tailOnly).isNull());
    QVERIFY(CString64(tailOnly).isNull());
}

void tst_fixed_string_differences::emptyFieldOf128GivesAnEmptyText()
{
    for (const CString128 &string : {CString128(), CString128(fromHex("000041004200"))}) {
        QVERIFY(string.str().isEmpty());
        QVERIFY(!string.str().isNull());
        QVERIFY(string.isNull());
    }
}

void tst_fixed_string_differences::pairsFFFFAreRemovedBy32And64KeptBy128_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QByteArray>("without");
    const auto row = [](const char *name, const char *bytes, const char *without) {
        QTest::newRow(name) << fromHex(bytes) << fromHex(without);
    };
    row("no pair", "41004200", "41004200");
    row("one FF", "FF00FF00", "FF00FF00");
    row("pair alone", "FFFF", "");
    row("pair at the start", "FFFF4100", "4100");
    row("pair in the middle", "4100FFFF4200", "41004200");
    row("pair at the end", "41004200FFFF", "41004200");
    row("pair at an odd position", "41FFFF00", "4100");
    row("pair across two units", "41FFFF42", "4142");
    row("three FF between other units", "4100FFFFFF004200", "4100FF004200");
    row("three FF leave one", "FFFFFF", "FF");
    row("three FF, then a unit", "FFFFFF4100", "FF4100");
    row("four FF", "FFFFFFFF", "");
    row("five FF leave one", "FFFFFFFFFF", "FF");
    row("two pairs apart", "FFFF4100FFFF4200FFFF", "41004200");
    row("the scan goes on behind a removed pair", "FF00FFFFFF00", "FF00FF00");
}

void tst_fixed_string_differences::pairsFFFFAreRemovedBy32And64KeptBy128()
{
    QFETCH(QByteArray, bytes);
    QFETCH(QByteArray, without);
    QCOMPARE(fieldFromBytes<CString32>(bytes), padded(without, 64));
    QCOMPARE(fieldFromBytes<CString64>(bytes), padded(without, 128));
    QCOMPARE(fieldFromBytes<CString128>(bytes), padded(bytes, 256));
}

void tst_fixed_string_differences::fieldOfFFIsAnEmptyTextOf32And64()
{
    bool ok = false;
    QVERIFY(CString32::fromByteArray(QByteArray(64, '\xFF'), &ok) == CString32());
    QVERIFY(ok);
    ok = false;
    QVERIFY(CString64::fromByteArray(QByteArray(128, '\xFF'), &ok) == CString64());
    QVERIFY(ok);
}

void tst_fixed_string_differences::fieldOfFFIsATextOf128()
{
    bool ok = false;
    const CString128 string = CString128::fromByteArray(QByteArray(256, '\xFF'), &ok);
    QVERIFY(ok);
    QCOMPARE(string.str(), QString(128, QChar(0xFFFF)));
}

void tst_fixed_string_differences::pairsAreRemovedBeforeTheCut()
{
    // Two bytes too many, but a pair less: all of the text fits.
    const auto removed = [](int size) { return fromHex("FFFF") + QByteArray(size, 'x'); };
    QCOMPARE(fieldFromBytes<CString32>(removed(64)), QByteArray(64, 'x'));
    QCOMPARE(fieldFromBytes<CString64>(removed(128)), QByteArray(128, 'x'));
    QCOMPARE(fieldFromBytes<CString128>(removed(256)), fromHex("FFFF") + QByteArray(254, 'x'));
}

void tst_fixed_string_differences::pairsAreRemovedFromBytesBeyondTheFieldToo()
{
    const auto longer = [](int size) { return QByteArray(size, 'x') + fromHex("FFFF4100"); };
    QCOMPARE(fieldFromBytes<CString32>(longer(60)), QByteArray(60, 'x') + fromHex("41000000"));
    QCOMPARE(fieldFromBytes<CString64>(longer(126)), QByteArray(126, 'x') + fromHex("4100"));
    QCOMPARE(fieldFromBytes<CString128>(longer(254)), QByteArray(254, 'x') + fromHex("FFFF"));
}

void tst_fixed_string_differences::string32TakesNoOtherClass()
{
    QCOMPARE(textTaken<CString32>(CString32(taken())), taken());
    QCOMPARE(textTaken<CString32>(CString64(taken())), kept());
    QCOMPARE(textTaken<CString32>(CString128(taken())), kept());
}

void tst_fixed_string_differences::string64TakesString32()
{
    QCOMPARE(textTaken<CString64>(CString32(taken())), taken());
    QCOMPARE(textTaken<CString64>(CString64(taken())), taken());
    QCOMPARE(textTaken<CString64>(CString128(taken())), kept());
}

void tst_fixed_string_differences::string128TakesString64AndString32()
{
    QCOMPARE(textTaken<CString128>(CString32(taken())), taken());
    QCOMPARE(textTaken<CString128>(CString64(taken())), taken());
    QCOMPARE(textTaken<CString128>(CString128(taken())), taken());
}

void tst_fixed_string_differences::otherClassIsTakenAsItsText()
{
    // As a text: what is behind the source's terminator does not come along, the target's own tail stays.
    CString32 source(QStringLiteral("uvwxyz"));
    source = QStringLiteral("uv");
    CString64 target64(kept());
    target64 = QVariant::fromValue(source);
    QCOMPARE(target64.byteArray(), padded(fromHex("75007600000064006500"
                                                  "6600"),
                                          128));
    CString128 target128(kept());
    target128 = QVariant::fromValue(CString64(source.byteArray()));
    QCOMPARE(target128.byteArray(), padded(fromHex("75007600000064006500"
                                                   "6600"),
                                           256));
}

void tst_fixed_string_differences::fullShorterStringIsTerminated()
{
    const QString full32 = textOfLength(32);
    const QString full64 = textOfLength(64);
    CString64 target64(textOfLength(64));
    target64 = QVariant::fromValue(CString32(full32));
    QCOMPARE(target64.str(), full32);
    CString128 target128(textOfLength(128));
    target128 = QVariant::fromValue(CString64(full64));
    QCOMPARE(target128.str(), full64);
    target128 = QVariant::fromValue(CString32(full32));
    QCOMPARE(target128.str(), full32);
}

void tst_fixed_string_differences::emptyShorterStringEmptiesTheText()
{
    QVERIFY(textTaken<CString64>(CString32()).isNull());
    QVERIFY(textTaken<CString128>(CString32()).isEmpty());
    QVERIFY(textTaken<CString128>(CString64()).isEmpty());
}

void tst_fixed_string_differences::converterWinsOverTheShorterString()
{
    const QString converted = QStringLiteral("converted");
    QVERIFY((QMetaType::registerConverter<CString32, CString64>(
        [converted](const CString32 &) { return CString64(converted); })));
    QCOMPARE(textTaken<CString64>(CString32(taken())), converted);
    QCOMPARE(textTaken<CString128>(CString32(taken())), taken());
}

QTEST_GUILESS_MAIN(tst_fixed_string_differences)

#include "tst_fixed_string_differences.moc"
