// SPDX-License-Identifier: MIT
// Any bytes as fixed strings of the three classes: fields of devices, streams, texts and QVariants, over what
// was there before; all of it beside the plainest way to do the same.
#include "Traversals.h"

#include <CString128.h>
#include <CString32.h>
#include <CString64.h>
#include <CVariant.h>

#include <Properties.h>
#include <Streams.h>
#include <ValueChecks.h>

#include <QTextCodec>

#include <algorithm>

namespace {

// How the classes differ, as their manual tells it.
template<typename String>
constexpr bool isShortest = String::unitCount == 32;
template<typename String>
constexpr bool isLongest = String::unitCount == 128;

bool decodes(const QByteArray &bytes)
{
    static const QTextCodec *const codec = QTextCodec::codecForName("UTF-16");
    QTextCodec::ConverterState state;
    codec->toUnicode(bytes.constData(), bytes.size(), &state);
    return state.invalidChars == 0;
}

// The field's bytes after the first of them were replaced.
QByteArray overwritten(const QByteArray &field, const QByteArray &bytes)
{
    return (bytes + field.mid(bytes.size())).left(field.size());
}

QByteArray unitsOfText(const QString &text)
{
    return QByteArray(reinterpret_cast<const char *>(text.utf16()), 2 * text.size());
}

// A text over a field: its units, and a zero behind them if there is room.
QByteArray overwritten(const QByteArray &field, const QString &text)
{
    const QByteArray units = unitsOfText(text);
    return overwritten(field, units.size() < field.size() ? units + QByteArray(2, '\0') : units);
}

template<typename String>
String stringOf(const QByteArray &field)
{
    return String(overwritten(QByteArray(String::byteCount, '\0'), field));
}

bool readUnits(const CString32 &string, unsigned short *units)
{
    return string.string32(units);
}

bool readUnits(const CString64 &string, unsigned short *units)
{
    return string.string64(units);
}

bool readUnits(const CString128 &string, unsigned short *units)
{
    return string.string128(units);
}

// What a string says of itself follows from its bytes.
template<typename String>
void checkQueries(const String &string, const QByteArray &field)
{
    require(string.byteArray() == field && string.operator QByteArray() == field,
            "the bytes are the field's");
    QString text = textOfUnits(field);
    const int end = text.indexOf(QChar(u'\0'));
    text.truncate(end < 0 ? text.size() : end);
    require(string.str() == text && string.operator QString() == text, "the text ends before the first zero");
    require(string.str().isNull() == (text.isEmpty() && !isLongest<String>), "an empty text is null or not");
    require(string.isNull() == text.isEmpty(), "a string is null when its text is empty");
    require(string.isValid() == decodes(field), "a string is valid when the codec finds no fault");
    QString shown;
    QString plain;
    QDebug(&shown) << string;
    QDebug(&plain) << text;
    require(shown.trimmed() == plain.trimmed(), "the debug form is that of the text");
}

template<typename String>
void checkUnits(const String &string, const QByteArray &field)
{
    unsigned short units[String::unitCount];
    require(readUnits(string, units), "the units can be copied");
    require(std::memcmp(units, field.constData(), sizeof units) == 0, "the units are the field's");
    require(!readUnits(string, nullptr), "without a place there are no units");
    require(String(units) == string, "a string comes back from its units");
    String assigned(QStringLiteral("replaced"));
    require((assigned = units) == string, "assigning units replaces all of them");
}

// Assignment over what was there, which a copy taken before keeps.
template<typename String>
void checkAssignment(const QByteArray &former, const QByteArray &bytes)
{
    const auto before = stringOf<String>(former);
    const QByteArray field = before.byteArray();
    String string(before);
    string = bytes;
    checkQueries(string, overwritten(field, bytes));
    // cppcheck-suppress knownConditionTrueFalse ; that it is always true is what is checked
    require(before.byteArray() == field, "a copy does not change with the other");
    const QString text = textOfUnits(bytes);
    string = before;
    string = text;
    checkQueries(string, overwritten(field, text));
    const QByteArray zeros(String::byteCount, '\0');
    require(String(text).byteArray() == overwritten(zeros, text), "a text begins in an empty field");
    require(String(bytes).byteArray() == overwritten(zeros, bytes), "bytes begin in an empty field");
}

// Bytes of a device: what is not UTF-16, and pairs of FF, are treated as the class table says.
template<typename String>
void checkFromBytes(const QByteArray &bytes)
{
    require(String::isUTF16(bytes) == decodes(bytes), "UTF-16 is what the codec takes for it");
    bool ok = !decodes(bytes);
    const String string = bounded(allowance(bytes.size()), "a string takes the size of its bytes",
                                  [&] { return String::fromByteArray(bytes, &ok); });
    require(ok == decodes(bytes), "the flag tells whether the bytes are UTF-16");
    require(String::fromByteArray(bytes) == string, "the flag may be null");
    QByteArray content = bytes;
    if (ok && !isLongest<String>)
        content.replace(QByteArrayLiteral("\xff\xff"), QByteArray());
    if (!ok && !isShortest<String>)
        content.clear();
    require(string == String(content), "a string of bytes is as the class table says");
}

template<typename String>
void checkComparison(const String &a, const String &b)
{
    const bool isEqual = a.byteArray() == b.byteArray();
    require((a == b) == isEqual, "equality is that of all bytes");
    require((b == a) == isEqual, "equality is symmetric");
    require((a != b) == !isEqual, "unequal is not equal");
    const auto sign = [](int order) { return (order > 0) - (order < 0); };
    require(sign(a.compareText(b)) == sign(a.str().compare(b.str())), "texts are compared as QString does");
    require(sign(a.compareText(b)) == -sign(b.compareText(a)), "the order has two sides");
    require(a == String(a) && a.compareText(a) == 0, "a string equals its copy");
}

// The field after assigning a QVariant; unsuitable ones change nothing.
template<typename String>
void checkVariant(const String &before, const QVariant &variant, const QByteArray &expected)
{
    String string(before);
    string = variant;
    require(string.byteArray() == expected, "a QVariant is taken as its type says",
            QString::fromLatin1(variant.typeName()));
}

template<typename String, typename Other>
QByteArray afterOther(const String &before, const Other &other)
{
    if constexpr (Other::unitCount == String::unitCount)
        return other.byteArray();
    const bool isTaken = Other::unitCount < String::unitCount;
    return isTaken ? overwritten(before.byteArray(), other.str()) : before.byteArray();
}

template<typename String>
void checkVariants(const String &before, const QByteArray &bytes)
{
    const QByteArray field = before.byteArray();
    const bool areTaken = bytes.size() <= String::byteCount && decodes(bytes);
    checkVariant(before, bytes, areTaken ? overwritten(field, bytes) : field);
    const QString text = textOfUnits(bytes);
    checkVariant(before, text, overwritten(field, text));
    const auto shortest = stringOf<CString32>(bytes);
    const auto middle = stringOf<CString64>(bytes);
    const auto longest = stringOf<CString128>(bytes);
    checkVariant(before, shortest.operator QVariant(), afterOther(before, shortest));
    checkVariant(before, middle.operator QVariant(), afterOther(before, middle));
    checkVariant(before, longest.operator QVariant(), afterOther(before, longest));
    checkVariant(before, QVariant(bytes.size()), field);
    checkVariant(before, QVariant(), field);
    require(String(before.operator QVariant()) == before, "a string comes back from its QVariant");
    require(isSame(CVariant(before), CVariant(before.operator QVariant())), "its typed value holds the same");
}

template<typename String>
void checkStream(const String &string, const StreamForm &form)
{
    const QByteArray bytes = written(string, form);
    require(bytes.size() == String::byteCount, "the stream form has the size of the field");
    const Reading<String> again = readFrom(bytes, form, String(QStringLiteral("replaced")));
    require(again.value == string && again.status == QDataStream::Ok && again.rest.isEmpty(),
            "a string comes back from a stream");
    const Reading<String> sequential = readSequentially(bytes, form, String());
    require(sequential.value == string && sequential.rest.isEmpty(), "a string comes back unit by unit");
}

// What all that takes an input, and all that gives the string, may ask for; the results are checked one by
// one.
template<typename String>
void checkMemory(const QByteArray &bytes, const StreamForm &form)
{
    const QString text = textOfUnits(bytes);
    const QVariant variants[] = {bytes, text, QVariant(stringOf<CString128>(bytes))};
    bounded(allowance(bytes.size()), "a string costs memory in proportion to its input", [&] {
        String string(text);
        string = bytes;
        string = text;
        for (const QVariant &variant : variants)
            string = variant;
        return readFrom(bytes, form, string).status == QDataStream::Ok;
    });
    const auto string = stringOf<String>(bytes);
    bounded(allowance(String::byteCount), "what a string gives takes its size", [&] {
        QString shown;
        QDebug(&shown) << string << string.str() << string.byteArray() << string.operator QVariant();
        return written(string, form).size() + string.compareText(String(bytes));
    });
}

template<typename String>
void traverse(const QByteArray &former, const QByteArray &bytes, const StreamForm &form)
{
    const auto string = stringOf<String>(bytes);
    const auto before = stringOf<String>(former);
    checkMemory<String>(bytes, form);
    checkQueries(string, overwritten(QByteArray(String::byteCount, '\0'), bytes));
    checkUnits(string, string.byteArray());
    checkAssignment<String>(former, bytes);
    checkFromBytes<String>(bytes);
    checkComparison(string, before);
    // Equal but for what the front of the other field holds.
    checkComparison(string, stringOf<String>(overwritten(string.byteArray(), former)));
    checkVariants(before, bytes);
    checkStream(string, form);
}

} // namespace

void traverseFixedStrings(const QByteArray &input)
{
    InputReader reader(input);
    const StreamForm form = StreamForm::from(reader);
    const QByteArray former = reader.takeBlock();
    const QByteArray bytes = reader.takeRest();
    traverse<CString32>(former, bytes, form);
    traverse<CString64>(former, bytes, form);
    traverse<CString128>(former, bytes, form);
}
