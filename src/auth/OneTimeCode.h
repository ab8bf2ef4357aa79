// SPDX-License-Identifier: MIT
#ifndef ONETIMECODE_H
#define ONETIMECODE_H

#include <QByteArray>
#include <QString>

// The one-time codes of CHmac with the time as a parameter: nothing here looks at a clock by itself.
namespace OneTimeCode {

// Gives milliseconds since 1970-01-01T00:00:00 UTC.
using Clock = qint64 (*)();

// What both sides have agreed on; see CHmac.
struct Agreement
{
    QByteArray key;
    quint64 t0;
    quint32 step;
    int digits;
};

enum Verdict : int { Accepted = 0, Refused = 1, WrongLength = 2 };

// The code of a MAC text; 0 for a number of digits that has no divisor.
quint32 codeOfMac(const QByteArray &mac, int digits);

// The number of the time step since t0; -2^63 where there is none.
qint64 counterAt(qint64 milliseconds, quint64 t0, quint32 step);

quint32 codeAt(qint64 milliseconds, const Agreement &agreement);

// The code as that many digits; empty for a number of digits that has no divisor.
QString textOfCode(quint32 code, int digits);

// The t0 from which the present step has the number of the one `stepsBack` before. In 32-bit arithmetic, by
// which steps ahead become a very large number of steps back.
quint64 shiftedStart(quint64 t0, quint32 step, qint64 stepsBack);

Verdict validate(const QString &code, const Agreement &agreement, quint32 tolerance, Clock clock);

} // namespace OneTimeCode

#endif // ONETIMECODE_H
