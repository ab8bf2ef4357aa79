// SPDX-License-Identifier: MIT
// Any text and any bytes as an IPv6 address, beside the rules in their plainest form and beside Qt's own
// addresses. With Qt they agree about eight groups of one to four hexadecimal digits. Qt also reads what here
// is none of an address: compressed groups ("::1", which here passes and changes nothing), an IPv4 tail, a
// scope behind a percent sign, brackets.
#include "Traversals.h"

#include <CIPv6Address.h>

#include <Equality.h>
#include <InputReader.h>
#include <Properties.h>
#include <StreamForm.h>

#include <QDebug>
#include <QHostAddress>
#include <QStringList>

#include <algorithm>

namespace {

constexpr int byteCount = 16;
constexpr int groupCount = 8;

bool isHexadecimal(const QString &text)
{
    return std::all_of(text.begin(), text.end(), [](QChar c) {
        return (c >= QLatin1Char('0') && c <= QLatin1Char('9'))
               || (c.toLatin1() >= 'a' && c.toLatin1() <= 'f')
               || (c.toLatin1() >= 'A' && c.toLatin1() <= 'F');
    });
}

bool isGroup(const QString &text)
{
    return text.size() <= 4 && isHexadecimal(text);
}

// The form that passes: a group of a digit at least or a colon, and up to seven times a colon and a group.
bool passes(const QString &text)
{
    const bool startsWithColon = text.startsWith(QLatin1Char(':'));
    const QStringList parts = (startsWithColon ? text.mid(1) : text).split(QLatin1Char(':'));
    return (parts.first().isEmpty() ? startsWithColon : !startsWithColon) && parts.size() <= groupCount
           && std::all_of(parts.begin(), parts.end(), isGroup);
}

// What the bytes become when they are given the text.
QByteArray addressAfter(const QString &text, const QByteArray &before)
{
    if (!passes(text))
        return QByteArray(byteCount, '\0');
    const QStringList groups = text.split(QLatin1Char(':'));
    QByteArray after = before;
    for (int i = 0; groups.size() == groupCount && i < groupCount; ++i) {
        const int number = groups[i].toInt(nullptr, 16);
        if (!groups[i].isEmpty())
            after.replace(2 * i, 2, QByteArray(1, char(number)) + QByteArray(1, char(number >> 8)));
    }
    return after;
}

QHostAddress inQt(const QByteArray &bytes)
{
    Q_IPV6ADDR networkOrder;
    for (int i = 0; i < byteCount; ++i)
        networkOrder[i] = static_cast<quint8>(bytes.at(i ^ 1));
    return QHostAddress(networkOrder);
}

void checkEquality(const CIPv6Address &a, const CIPv6Address &b)
{
    requireEquality(a, b);
    require((a == b) == (a.byteArray() == b.byteArray()), "equality is that of the bytes");
}

void checkMemory(const QByteArray &input, const QString &text)
{
    const std::size_t size = sizeof(QChar) * static_cast<std::size_t>(text.size());
    // What Qt makes of the expression at its first use, and for each match.
    bounded(131072 + 64 * size, "a text costs memory in proportion to it", [&text] {
        CIPv6Address address;
        address.setAddress(text);
        address = QVariant(text);
        return CIPv6Address(text) == address;
    });
    bounded(65536, "bytes and streams take no more memory than an address", [&input] {
        CIPv6Address address;
        address.setAddress(input);
        readFrom(input, address);
        QString debug;
        QDebug(&debug) << address << address.str() << QVariant(address);
        return streamed(address).size();
    });
}

void checkText(const QString &text)
{
    const QByteArray before = QByteArrayLiteral("0123456789abcdef");
    CIPv6Address address(before);
    const bool hasPassed = address.setAddress(text);
    require(hasPassed == passes(text), "only the form of an address passes");
    require(address.byteArray() == addressAfter(text, before), "a text changes what its groups say");
    require(CIPv6Address(text).byteArray() == addressAfter(text, QByteArray(byteCount, '\0')),
            "an address that is made from a text starts with zeros");
    const QStringList groups = text.split(QLatin1Char(':'));
    if (hasPassed && groups.size() == groupCount && !groups.contains(QString()))
        require(QHostAddress(text) == inQt(address.byteArray()),
                "eight groups are the address that Qt reads");
    checkEquality(address, CIPv6Address(before));

    address = CIPv6Address(before);
    address = QVariant(text);
    require(address == CIPv6Address(), "a variant of text clears");
}

// Bytes -> address -> text -> address.
void checkBytes(const QByteArray &bytes)
{
    CIPv6Address address(bytes);
    require(address.byteArray() == bytes, "bytes are kept as they are");
    require(QVariant(address) == QVariant(bytes) && CIPv6Address(QVariant(bytes)) == address,
            "a variant holds the bytes");
    const QString text = address.str();
    CIPv6Address again;
    require(again.setAddress(text) && again == address && again.str() == text,
            "the text of an address is read as that address", text);
    require(QHostAddress(text) == inQt(bytes), "Qt reads the text as the same address", text);
    require(text == text.toLower() && text.size() <= 39, "digits are lower case, without leading zeros",
            text);
    require(streamed(address) == bytes, "the stream form is the bytes");
    for (int i = 0; i < byteCount; ++i)
        address[i] = static_cast<unsigned char>(~address[i]);
    checkEquality(address, again);
    require(address != again, "an address with other bytes is another one");
}

void checkAnyBytes(const QByteArray &bytes)
{
    const QByteArray before = QByteArrayLiteral("0123456789abcdef");
    CIPv6Address address(before);
    address.setAddress(bytes);
    require(address.byteArray() == (bytes.size() == byteCount ? bytes : before),
            "an array of another size changes nothing");
    const QDataStream::Status status = readFrom(bytes, address);
    require(address.byteArray() == bytes.left(byteCount).leftJustified(byteCount, '\0'),
            "bytes that a stream lacks are zero");
    require((status == QDataStream::Ok) == (bytes.size() >= byteCount), "the stream tells what it lacks");
    QString debug;
    QDebug(&debug) << address;
    require(debug.contains(address.str()), "the debug form has the text");
}

} // namespace

void traverseIpv6Text(const QByteArray &input)
{
    const QString text = InputReader(input).takeText();
    checkMemory(input, text);
    checkAnyBytes(input);
    checkBytes(input.left(byteCount).leftJustified(byteCount, '\0'));
    checkText(text);
}
