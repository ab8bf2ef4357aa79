// SPDX-License-Identifier: MIT
// Message authentication and one-time codes, beside the same rules written by hand with Qt. Both sides spend
// nearly all of the time in Qt's SHA-1.
#include "QtCodes.h"
#include "ValueSamples.h"

#include <CHmac.h>

namespace {

constexpr unsigned int hour = 3600; // so that both sides of a check nearly always look into the same step
constexpr int digits = 6;

std::vector<QByteArray> keys()
{
    std::vector<QByteArray> keys;
    for (int i = 0; i < 20; ++i)
        keys.push_back(QByteArrayLiteral("key of service level ") + QByteArray::number(i));
    return keys;
}

const QByteArray &message()
{
    static const QByteArray text = QByteArrayLiteral("unlock parameter group 4711 of axis 3");
    return text;
}

// No code, so that all five steps are computed.
const QString &refusedCode()
{
    static const QString code = QStringLiteral("abcdef");
    return code;
}

// The codes of the present step, of which each key accepts its own.
bool acceptsTheSame(const std::vector<QByteArray> &keys)
{
    return std::all_of(keys.begin(), keys.end(), [](const QByteArray &key) {
        const QString code = CHmac::totpStr(key, 0, hour, digits);
        return QtCodes::validate(code, key, 0, hour, digits, 2) == 0
               && CHmac::validateTotp(QtCodes::code(key, 0, hour, digits), key, 0, hour, digits, 2) == 0;
    });
}

} // namespace

int main(int argc, char **argv)
{
    const std::vector<QByteArray> samples = keys();
    addItem(
        "hmacSha1", samples, [](const QByteArray &key) { return CHmac::hmacSha1(message(), key); },
        [](const QByteArray &key) { return QtCodes::hmacSha1(message(), key); }, {1.06, 1.15});
    addItem(
        "totpStr", samples, [](const QByteArray &key) { return CHmac::totpStr(key, 0, hour, digits); },
        [](const QByteArray &key) { return QtCodes::code(key, 0, hour, digits); }, {0.98, 1.20});
    const auto ours = [](const QByteArray &key) {
        return CHmac::validateTotp(refusedCode(), key, 0, hour, digits, 2);
    };
    const auto peers = [](const QByteArray &key) {
        return QtCodes::validate(refusedCode(), key, 0, hour, digits, 2);
    };
    addComparison({"validateTotp within 2 steps",
                   static_cast<int>(samples.size()),
                   overAll(samples, ours),
                   overAll(samples, peers),
                   [&samples] { return acceptsTheSame(samples); },
                   {0.92, 1.25}});
    return runComparisons(argc, argv);
}
