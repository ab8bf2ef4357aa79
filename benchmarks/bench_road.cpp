// SPDX-License-Identifier: MIT
// The road of a parameter value: bytes -> value -> text -> value -> compare -> bytes, step by step and whole,
// beside the same work written by hand with Qt.
#include "PeerReport.h"
#include "QtPeer.h"

#include <CDataTypeParser.h>
#include <CUnitParser.h>
#include <CVariant.h>

#include <QHash>

#include <benchmark/benchmark.h>

#include <cstdio>
#include <cstring>
#include <random>
#include <vector>

namespace {

struct Sample
{
    NTypes::eTypes_t type;
    QByteArray bytes;
    QString text;
    CVariant ours;
    QtPeer peer;
};

using Samples = std::vector<Sample>;

template<typename T>
QByteArray bytesOf(T value)
{
    return QByteArray(reinterpret_cast<const char *>(&value), sizeof value);
}

// Values as a drive has them: mostly moderate, of every number type alike.
QByteArray numberBytes(NTypes::eTypes_t type, std::mt19937 &random)
{
    const qint32 number = std::uniform_int_distribution<qint32>(-1000000, 1000000)(random);
    switch (type) {
    case NTypes::E_F32:
        return bytesOf(static_cast<float>(number) / 1000.0F);
    case NTypes::E_F64:
        return bytesOf(number / 1000.0);
    case NTypes::E_U64:
    case NTypes::E_I64:
        return bytesOf(static_cast<qint64>(number < 0 && type == NTypes::E_U64 ? -number : number));
    default:
        return bytesOf(number < 0 && type == NTypes::E_U32 ? -number : number)
            .left(int(CVariant(type).typeSize()));
    }
}

QByteArray otherBytes(int kind, std::mt19937 &random)
{
    const auto byte = [&](int last) {
        return static_cast<char>(std::uniform_int_distribution<int>(1, last)(random));
    };
    switch (kind) {
    case 0: {
        QByteArray field(64, '\0');
        const QString text = QStringLiteral("Axis %1").arg(int(byte(100)));
        std::memcpy(field.data(), text.utf16(), 2 * static_cast<std::size_t>(text.size()));
        return field;
    }
    case 1:
        return QByteArray().append(byte(100)).append('\0').append(byte(9)).append(byte(9));
    case 2:
        return QByteArray().append(byte(100)).append(byte(100)).append(byte(100)).append(byte(100));
    default:
        return QByteArray()
            .append(byte(99))
            .append(byte(59))
            .append(byte(59))
            .append(byte(23))
            .append(byte(28))
            .append(byte(12))
            .append('\xE8')
            .append('\x07');
    }
}

Sample sampleOf(NTypes::eTypes_t type, const QByteArray &bytes)
{
    Sample sample{type, bytes, {}, CVariant::fromByteArray(bytes, type), QtPeer::fromBytes(bytes, type)};
    sample.text = sample.ours.toStr();
    return sample;
}

Samples makeSamples(double othersShare)
{
    constexpr NTypes::eTypes_t others[] = {NTypes::E_STRING32, NTypes::E_VERSION, NTypes::E_IPV4ADDR,
                                           NTypes::E_DATETIME};
    std::mt19937 random(1);
    std::uniform_int_distribution<int> number(NTypes::E_U8, NTypes::E_F64);
    std::uniform_int_distribution<int> other(0, 3);
    std::bernoulli_distribution isOther(othersShare);
    Samples samples;
    for (int i = 0; i < 1000; ++i) {
        if (isOther(random)) {
            const int kind = other(random);
            samples.push_back(sampleOf(others[kind], otherBytes(kind, random)));
        } else {
            const auto type = static_cast<NTypes::eTypes_t>(number(random));
            samples.push_back(sampleOf(type, numberBytes(type, random)));
        }
    }
    return samples;
}

// Timing different work would prove nothing: both sides give the same texts and bytes.
bool sidesAgree(const Samples &samples)
{
    for (const Sample &sample : samples) {
        const bool agree = sample.ours.toStr() == sample.peer.toText()
                           && sample.ours.toByteArray() == sample.peer.toBytes()
                           && CVariant::fromStr(sample.text, sample.type).compareValue(sample.ours)
                                  == QtPeer::fromText(sample.text, sample.type).equals(sample.peer);
        if (!agree) {
            std::fprintf(stderr, "the sides differ: type %d, bytes %s, ours %s, qt %s\n", int(sample.type),
                         sample.bytes.toHex().constData(), qPrintable(sample.ours.toStr()),
                         qPrintable(sample.peer.toText()));
            return false;
        }
    }
    return true;
}

template<typename Work>
std::function<void()> overAll(const Samples &samples, Work work)
{
    return [&samples, work] {
        for (const Sample &sample : samples)
            benchmark::DoNotOptimize(work(sample));
    };
}

bool roadOfOurs(const Sample &sample)
{
    const CVariant value = CVariant::fromByteArray(sample.bytes, sample.type);
    const CVariant edited = CVariant::fromStr(value.toStr(), sample.type);
    const bool same = edited.compareValue(value);
    return edited.toByteArray().size() == sample.bytes.size() && same;
}

bool roadOfQt(const Sample &sample)
{
    const QtPeer value = QtPeer::fromBytes(sample.bytes, sample.type);
    const QtPeer edited = QtPeer::fromText(value.toText(), sample.type);
    const bool same = edited.equals(value);
    return edited.toBytes().size() == sample.bytes.size() && same;
}

void addRoad(const std::string &name, const Samples &samples)
{
    const auto add = [&](const char *step, std::function<void()> ours, std::function<void()> peer) {
        addComparison({step + (" " + name), int(samples.size()), std::move(ours), std::move(peer)});
    };
    add("fromByteArray",
        overAll(samples, [](const Sample &s) { return CVariant::fromByteArray(s.bytes, s.type); }),
        overAll(samples, [](const Sample &s) { return QtPeer::fromBytes(s.bytes, s.type); }));
    add("toStr", overAll(samples, [](const Sample &s) { return s.ours.toStr(); }),
        overAll(samples, [](const Sample &s) { return s.peer.toText(); }));
    add("fromStr", overAll(samples, [](const Sample &s) { return CVariant::fromStr(s.text, s.type); }),
        overAll(samples, [](const Sample &s) { return QtPeer::fromText(s.text, s.type); }));
    add("compareValue", overAll(samples, [](const Sample &s) { return s.ours.compareValue(s.ours); }),
        overAll(samples, [](const Sample &s) { return s.peer.equals(s.peer); }));
    add("toByteArray", overAll(samples, [](const Sample &s) { return s.ours.toByteArray(); }),
        overAll(samples, [](const Sample &s) { return s.peer.toBytes(); }));
    add("copy", overAll(samples, [](const Sample &s) { return CVariant(s.ours); }),
        overAll(samples, [](const Sample &s) { return QtPeer(s.peer); }));
    add("whole road", overAll(samples, roadOfOurs), overAll(samples, roadOfQt));
}

// Copies of one text, and the look-ups that every shown value costs, beside Qt's hash of the same rows.
void addCopiesAndLookups(const Samples &samples)
{
    static const CVariant text(QStringLiteral("Axis 1"));
    static const QtPeer peerText{QVariant(QStringLiteral("Axis 1")), NTypes::E_STRING32};
    addComparison({"copy STRING32", int(samples.size()),
                   overAll(samples, [](const Sample &) { return CVariant(text); }),
                   overAll(samples, [](const Sample &) { return QtPeer(peerText); })});

    static const QHash<int, int> sizes = [] {
        QHash<int, int> hash;
        for (auto row = CDataTypeParser::mDataSizeMap.cbegin(); row != CDataTypeParser::mDataSizeMap.cend();
             ++row)
            hash.insert(row.key(), row.value());
        return hash;
    }();
    addComparison({"type size by tag", int(samples.size()),
                   overAll(samples, [](const Sample &s) { return CDataTypeParser::typeSize(s.type); }),
                   overAll(samples, [](const Sample &s) { return sizes.value(s.type); })});

    static const QHash<int, int> digits = [] {
        QHash<int, int> hash;
        for (auto row = CUnitParser::mDigitsMap.cbegin(); row != CUnitParser::mDigitsMap.cend(); ++row)
            hash.insert(row.key(), row.value());
        return hash;
    }();
    const auto unitOf = [](const Sample &s) { return static_cast<Nj6Units::eUnit_t>(10 * s.type); };
    addComparison({"digits by unit", int(samples.size()),
                   overAll(samples, [unitOf](const Sample &s) { return CUnitParser::digits(unitOf(s)); }),
                   overAll(samples, [unitOf](const Sample &s) { return digits.value(unitOf(s)); })});
}

} // namespace

int main(int argc, char **argv)
{
    static const Samples numbers = makeSamples(0.0);
    static const Samples mix = makeSamples(0.06);
    if (!sidesAgree(numbers) || !sidesAgree(mix))
        return 1;
    addRoad("numbers", numbers);
    addRoad("mix", mix);
    addCopiesAndLookups(numbers);
    std::printf("sizeof(CVariant) %zu, sizeof(QVariant) %zu\n", sizeof(CVariant), sizeof(QVariant));
    return runComparisons(argc, argv);
}
