// SPDX-License-Identifier: MIT
// Any bytes as a stream, of every version that QDataStream has, of typed values and of the records and fixed
// strings that they hold.
#include "Traversals.h"

#include <CStr.h>
#include <CVariant.h>

#include <Properties.h>
#include <Streams.h>
#include <ValueChecks.h>

#include <algorithm>
#include <cmath>

namespace {

// Qt asks for this much at a time when a length field announces a text or bytes that are not there.
constexpr std::size_t steps = 4U << 20U;

// A value's stream form by Qt's own operators.
struct PlainForm
{
    QVariant held;
    qint32 tag;
};

QDataStream &operator>>(QDataStream &stream, PlainForm &form)
{
    return stream >> form.held >> form.tag;
}

QDataStream &operator<<(QDataStream &stream, const PlainForm &form)
{
    return stream << form.held << form.tag;
}

// Streams of Qt 4 name the types that Qt 5 added, and a name is taken for a type of ours only.
bool isNamed(const CVariant &value, const StreamForm &form)
{
    const int type = heldBy(value).userType();
    return form.version < QDataStream::Qt_5_0 && type > QMetaType::QEasingCurve && type < QMetaType::User;
}

// What was read whole can be written and is read again as it was.
void checkWriting(const CVariant &value, const StreamForm &form)
{
    const QByteArray bytes = written(value, form);
    require(bytes == written(PlainForm{heldBy(value), value.type()}, form), "Qt writes the same bytes");
    if (isNamed(value, form))
        return;
    const Reading<CVariant> again = readFrom(bytes, form, CVariant(5));
    require(again.status == QDataStream::Ok && again.rest.isEmpty(), "what was written is read to its end");
    require(isSame(again.value, value), "what was written is read as it was");
}

void checkStatus(const QByteArray &bytes, const StreamForm &form)
{
    QDataStream stream(bytes);
    form.applyTo(stream);
    CVariant value;
    stream >> value;
    QString message;
    const bool isOk = CStr::inStreamStatus(stream, QStringLiteral("value"), message);
    require(isOk == (stream.status() == QDataStream::Ok), "the status is told");
    require(isOk == message.isEmpty(), "a message tells of a failure only");
}

void checkValueIn(const QByteArray &bytes, const StreamForm &form)
{
    const Reading<CVariant> reading =
        bounded(steps + allowance(bytes.size()), "a value from a stream takes the stream's size",
                [&] { return readFrom(bytes, form, CVariant(5)); });
    const Reading<CVariant> sequential = readSequentially(bytes, form, CVariant(5));
    require(sequential.status == reading.status && isSame(sequential.value, reading.value),
            "a value is the same from a device without a position");
    if (reading.status != QDataStream::Ok) {
        require(isEmpty(reading.value), "a failed stream leaves an empty variant");
        return;
    }
    require(form.version >= QDataStream::Qt_4_0, "a stream without types is refused");
    const Reading<PlainForm> plain = readFrom(bytes, form, PlainForm{QVariant(5), 0});
    require(plain.status == QDataStream::Ok
                && isSame(reading.value, tagged(plain.value.held, tagOf(plain.value.tag))),
            "Qt reads the same value");
    checkWriting(reading.value, form);
    checkValue(reading.value);
}

// A value of the bytes comes back from every stream that can carry it; a float travels as a double, where a
// NaN may change its bits.
void checkValueOf(const QByteArray &bytes, NTypes::eTypes_t type, const StreamForm &form)
{
    const CVariant value = rawValue(bytes, type);
    const Reading<CVariant> reading = readFrom(written(value, form), form, CVariant(5));
    if (form.version < QDataStream::Qt_4_0) {
        require(reading.status != QDataStream::Ok && isEmpty(reading.value),
                "a stream without types is refused");
        return;
    }
    require(reading.status == QDataStream::Ok && reading.rest.isEmpty(),
            "a value that was written is read to its end");
    const bool isShortened = type == NTypes::E_F64 && form.precision == QDataStream::SinglePrecision;
    const bool isNaN = type == NTypes::E_F32 && std::isnan(value.toF32());
    if (isNaN)
        require(reading.value == value, "a NaN comes back as a NaN");
    else if (!isShortened)
        require(isSame(reading.value, value), "a value comes back from a stream");
}

template<typename Plain>
bool isSameRecord(const Plain &a, const Plain &b)
{
    return bytesOf(a) == bytesOf(b);
}

// Whether the stream form of a record is what the whole one begins with up to the end of a field, and zeros.
// The longest field that may be cut has eight bytes.
bool isCutAtAField(const QByteArray &form, const QByteArray &bytes)
{
    constexpr int longestField = 8;
    const auto isKept = [&](int kept) {
        return form == bytes.left(kept) + QByteArray(form.size() - kept, '\0');
    };
    for (int kept = bytes.size(); kept > bytes.size() - longestField && kept >= 0; --kept) {
        if (isKept(kept))
            return true;
    }
    return false;
}

// A record of which the stream has only the first bytes.
template<typename Record>
void checkCutRecord(const QByteArray &bytes, const StreamForm &form)
{
    const auto garbage = plainOf<Record>(QByteArray(int(sizeof(Record)), '\x55'));
    const Reading<Record> reading = readFrom(bytes, form, garbage);
    const Reading<Record> sequential = readSequentially(bytes, form, garbage);
    require(reading.status == QDataStream::ReadPastEnd && sequential.status == reading.status,
            "the status tells of bytes that are missing");
    require(isSameRecord(sequential.value, reading.value),
            "a record is cut alike on a device without a position");
    require(isCutAtAField(written(reading.value, form), bytes), "the fields that are missing are zero");
}

template<typename Record>
void checkRecord(const QByteArray &bytes, const StreamForm &form)
{
    const auto garbage = plainOf<Record>(QByteArray(int(sizeof(Record)), '\x55'));
    const Reading<Record> reading = readFrom(bytes, form, garbage);
    const Reading<Record> sequential = readSequentially(bytes, form, garbage);
    require(sequential.status == reading.status && isSameRecord(sequential.value, reading.value),
            "a record is the same from a device without a position");
    const bool isWhole = bytes.size() >= int(sizeof(Record));
    require(isWhole == (reading.status == QDataStream::Ok), "the status tells whether all bytes were there");
    const QByteArray again = written(reading.value, form);
    require(!isWhole || again == bytes.left(int(sizeof(Record))), "a record is written as it was read");
    require(bytes.isEmpty() ? isSameRecord(reading.value, Record{}) : true, "what is missing is zero");
    // At another place for every first byte: all of them for each input would take ten times as long.
    const int place = bytes.isEmpty() ? 0 : static_cast<quint8>(bytes.at(0)) % int(sizeof(Record));
    checkCutRecord<Record>(bytes.left(place), form);
    const auto other = plainOf<Record>(bytes.mid(1));
    require((other == reading.value) == isSameRecord(other, reading.value), "equality is that of all bytes");
    require((other != reading.value) == !(other == reading.value), "unequal is not equal");
    if (form.order == QDataStream::LittleEndian && isWhole)
        require(again == bytesOf(reading.value), "a little-endian stream has the raw bytes");
}

// The order is that of the record as a word.
template<typename Record, typename Word>
void checkOrder(const QByteArray &bytes)
{
    const QByteArray others = bytes.mid(1);
    require((plainOf<Record>(bytes) < plainOf<Record>(others))
                == (plainOf<Word>(bytes) < plainOf<Word>(others)),
            "the order is that of the word");
}

template<typename String>
void checkString(const QByteArray &bytes, const StreamForm &form)
{
    const String garbage(QStringLiteral("replaced"));
    const Reading<String> reading = readFrom(bytes, form, garbage);
    const Reading<String> sequential = readSequentially(bytes, form, garbage);
    require(sequential.status == reading.status && sequential.value == reading.value,
            "a string is the same from a device without a position");
    const bool isWhole = bytes.size() >= String::byteCount;
    require(isWhole == (reading.status == QDataStream::Ok), "the status tells whether all units were there");
    const QByteArray again = written(reading.value, form);
    const QByteArray whole = bytes.left(std::min(String::byteCount, bytes.size() & ~1));
    require(again == whole + QByteArray(String::byteCount - whole.size(), '\0'),
            "a string is written as it was read, and zeros");
    require(garbage.str() == QLatin1String("replaced"), "reading into a copy changes the copy alone");
}

} // namespace

void traverseValueStream(const QByteArray &input)
{
    InputReader reader(input);
    const StreamForm form = StreamForm::from(reader);
    const NTypes::eTypes_t type = takeTag(reader);
    const QByteArray bytes = reader.takeRest();

    checkValueIn(bytes, form);
    checkStatus(bytes, form);
    checkValueOf(bytes, type, form);
    checkRecord<NTypes::sVersion_t>(bytes, form);
    checkRecord<NTypes::sVersion4_t>(bytes, form);
    checkRecord<NTypes::sVersion4x8_t>(bytes, form);
    checkRecord<NTypes::uIPv4HAddr_t>(bytes, form);
    checkRecord<NTypes::sCommand_t>(bytes, form);
    checkRecord<NTypes::sTime_t>(bytes, form);
    checkRecord<NTypes::sDate_t>(bytes, form);
    checkRecord<NTypes::sDateTime_t>(bytes, form);
    checkRecord<NTypes::sDs402Record01_t>(bytes, form);
    checkRecord<NTypes::sDs402Array_t<short>>(bytes, form);
    checkRecord<NTypes::sDs402Array_t<int>>(bytes, form);
    checkRecord<NTypes::sDs402Array_t<unsigned short>>(bytes, form);
    checkRecord<NTypes::sDs402Array_t<unsigned int>>(bytes, form);
    checkOrder<NTypes::sVersion_t, quint32>(bytes);
    checkOrder<NTypes::sVersion4_t, quint64>(bytes);
    checkOrder<NTypes::uIPv4HAddr_t, quint32>(bytes);
    checkOrder<NTypes::sCommand_t, quint32>(bytes);
    checkOrder<NTypes::sDateTime_t, qint64>(bytes);
    checkString<CString32>(bytes, form);
    checkString<CString64>(bytes, form);
    checkString<CString128>(bytes, form);
}
