// SPDX-License-Identifier: MIT
// The search for a code beside the same rules in their plainest form: for every step a MAC, a text of it and
// a comparison of texts.
#include <CHmac.h>

#include "auth/OneTimeCode.h"

#include <LoggedTest.h>

#include <QTest>
#include <QtEndian>

#include <random>

namespace {

using OneTimeCode::Agreement;

constexpr qint64 moment = 1700000000123;

// Every look takes as long as this.
constexpr qint64 timePerLook = 700;
int looks = 0;

qint64 testClock()
{
    return moment + timePerLook * looks++;
}

QString plainTextOfCode(quint32 code, int digits)
{
    if (digits < 0 || digits > 18)
        return {};
    return QString::number(code).rightJustified(digits, QLatin1Char('0')).right(digits);
}

quint32 plainCodeAt(qint64 milliseconds, const Agreement &agreement)
{
    QByteArray message(8, '\0');
    qToLittleEndian(OneTimeCode::counterAt(milliseconds, agreement.t0, agreement.step), message.data());
    return CHmac::hotp(CHmac::hmacSha1(message, agreement.key), agreement.digits);
}

// The text that is tried in step i of a search.
QString plainTextOfStep(const Agreement &agreement, qint64 i, qint64 milliseconds)
{
    Agreement shifted = agreement;
    shifted.t0 = OneTimeCode::shiftedStart(agreement.t0, agreement.step, i);
    return plainTextOfCode(plainCodeAt(milliseconds, shifted), shifted.digits);
}

int plainlyValidate(const QString &code, const Agreement &agreement, int tolerance)
{
    if (code.length() != agreement.digits)
        return OneTimeCode::WrongLength;
    for (int i = tolerance; i >= -tolerance; --i) {
        if (plainTextOfStep(agreement, i, testClock()) == code)
            return OneTimeCode::Accepted;
    }
    return OneTimeCode::Refused;
}

// Agreements and codes of all kinds, the same in every run.
class Cases
{
public:
    Agreement agreement()
    {
        static const QVector<quint32> steps = {0, 1, 30, 60, 3600, 0x80000000, 0xFFFFFFFF};
        static const QVector<quint64> starts = {0, 1, 1699999990, 1700000000, 1700000031, ~quint64(0)};
        QByteArray key(upTo(140), '\0');
        for (char &byte : key)
            byte = static_cast<char>(mRandom());
        return {key, starts.at(upTo(starts.size())), steps.at(upTo(steps.size())), upTo(20)};
    }

    QString code(const Agreement &agreement, int tolerance)
    {
        const int step = tolerance - upTo(2 * tolerance + 1);
        QString text = plainTextOfStep(agreement, step, moment);
        if (text.size() != agreement.digits)
            text = QString(agreement.digits, QLatin1Char('0'));
        if (!text.isEmpty() && upTo(3) == 0)
            text[upTo(text.size())] = otherCharacter();
        if (upTo(20) == 0)
            text.append(QLatin1Char('0'));
        return text;
    }

    int upTo(int limit) { return static_cast<int>(mRandom() % static_cast<unsigned int>(limit)); }

    quint32 number() { return static_cast<quint32>(mRandom()) >> upTo(32); }

private:
    // Digits, what stands beside them, and what is one only in its low byte or in another script.
    QChar otherCharacter()
    {
        static const QString characters = QStringLiteral("0123456789/: -+aA\u0130\u0139\u0660\u0669\uff10");
        return characters.at(upTo(characters.size()));
    }

    std::mt19937 mRandom{20260301};
};

} // namespace

class tst_one_time_code_search : public LoggedTest
{
    Q_OBJECT

private Q_SLOTS:
    void textsOfCodes();
    void codesOfAgreements();
    void searches();
};

void tst_one_time_code_search::textsOfCodes()
{
    Cases cases;
    for (int i = 0; i < 20000; ++i) {
        const quint32 code = cases.number();
        const int digits = cases.upTo(24) - 2;
        const QString text = OneTimeCode::textOfCode(code, digits);
        QCOMPARE(text, plainTextOfCode(code, digits));
        QCOMPARE(text.isNull(), plainTextOfCode(code, digits).isNull());
    }
}

void tst_one_time_code_search::codesOfAgreements()
{
    Cases cases;
    for (int i = 0; i < 3000; ++i) {
        const Agreement agreement = cases.agreement();
        const qint64 milliseconds = qint64(cases.number()) * cases.number();
        QCOMPARE(OneTimeCode::codeAt(milliseconds, agreement), plainCodeAt(milliseconds, agreement));
    }
}

void tst_one_time_code_search::searches()
{
    Cases cases;
    QMap<int, int> verdicts;
    for (int i = 0; i < 6000; ++i) {
        const Agreement agreement = cases.agreement();
        const int tolerance = cases.upTo(4);
        const QString code = cases.code(agreement, tolerance);
        looks = 0;
        const int expected = plainlyValidate(code, agreement, tolerance);
        const int expectedLooks = looks;
        looks = 0;
        const int verdict = OneTimeCode::validate(code, agreement, quint32(tolerance), testClock);
        QCOMPARE(verdict, expected);
        QCOMPARE(looks, expectedLooks);
        ++verdicts[verdict];
    }
    // Each verdict was given often.
    for (const int verdict : {OneTimeCode::Accepted, OneTimeCode::Refused, OneTimeCode::WrongLength})
        QVERIFY2(verdicts.value(verdict) > 100, qPrintable(QString::number(verdicts.value(verdict))));
}

QTEST_GUILESS_MAIN(tst_one_time_code_search)
#include "tst_one_time_code_search.moc"
