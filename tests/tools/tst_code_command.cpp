// SPDX-License-Identifier: MIT
// The codes are those of tst_one_time_codes, computed beside the library; the time is the test's.
#include <Arguments.h>
#include <CodeCommand.h>

#include "auth/OneTimeCode.h"

#include <LoggedTest.h>

#include <QBuffer>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

using j6tool::Arguments;
using j6tool::Output;
using j6tool::Result;

namespace {

// "12345678901234567890"
const QString keyHex = QStringLiteral("3132333435363738393031323334353637383930");

// The step of 30 s that is number 37037036 since 1970, in its last but one millisecond, and its code.
constexpr qint64 momentOfStep = 1111111109998;
const QString codeOfStep = QStringLiteral("497641");

qint64 shownTime = 0;

qint64 testClock()
{
    return shownTime;
}

QString codeNow(const QByteArray &key, quint64 t0, quint32 step, int digits)
{
    return OneTimeCode::textOfCode(OneTimeCode::codeAt(testClock(), {key, t0, step, digits}), digits);
}

int validateNow(const QString &code, const QByteArray &key, quint64 t0, quint32 step, int digits,
                quint32 tolerance)
{
    return OneTimeCode::validate(code, {key, t0, step, digits}, tolerance, testClock);
}

struct Outcome
{
    int exitCode = -1; // 2 with an error
    QString output;
    QString error;
};

Outcome call(const QString &options, qint64 time = momentOfStep)
{
    shownTime = time;
    const QStringList words = (QStringLiteral("code|") + options).split(QLatin1Char('|'));
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    Output output(buffer);
    const Result<Arguments> arguments = Arguments::fromWords(words);
    if (!arguments)
        return {j6tool::Failed, {}, arguments.error().text};
    const Result<j6tool::ExitCode> result = runCodeWith({codeNow, validateNow}, *arguments, output);
    output.flush();
    return {result ? *result : j6tool::Failed, QString::fromUtf8(buffer.data()),
            result ? QString() : result.error().text};
}

QString withKey(const QString &options)
{
    return QStringLiteral("key=") + keyHex + options;
}

bool write(const QString &fileName, const QByteArray &contents)
{
    QFile file(fileName);
    return file.open(QIODevice::WriteOnly) && file.write(contents) == contents.size();
}

} // namespace

class tst_code_command : public LoggedTest
{
    Q_OBJECT

private Q_SLOTS:
    void printsTheCode_data();
    void printsTheCode();
    void checksCodes_data();
    void checksCodes();
    void refusesBadValues_data();
    void refusesBadValues();
    void readsTheKeyFromAFile_data();
    void readsTheKeyFromAFile();
    void refusesBadKeyFiles_data();
    void refusesBadKeyFiles();
    void neverShowsTheKey_data();
    void neverShowsTheKey();
};

void tst_code_command::printsTheCode_data()
{
    QTest::addColumn<QString>("options");
    QTest::addColumn<qint64>("time");
    QTest::addColumn<QString>("code");

    const auto row = [](const char *name, const char *options, qint64 time, const char *code) {
        QTest::newRow(name) << QString::fromUtf8(options) << time << QString::fromUtf8(code);
    };
    row("defaults", "", momentOfStep, "497641");
    row("the same in words", "|step=30|digits=6|t0=0", momentOfStep, "497641");
    // Counter 0: the number behind the code is 673719613.
    row("first step", "", 0, "719613");
    row("last millisecond of the first step", "", 29999, "719613");
    row("1 digit", "|digits=1", 0, "3");
    row("9 digits", "|digits=9", 0, "673719613");
    row("largest step", "|step=4294967295", 4294967294999, "719613");
    row("step of a second", "|step=1", 999, "719613");
    row("other start", "|t0=1111111080", 1111111109999, "719613");
    row("at its start", "|t0=1111111109|step=4294967295", 1111111109000, "719613");
}

void tst_code_command::printsTheCode()
{
    QFETCH(QString, options);
    QFETCH(qint64, time);
    QFETCH(QString, code);
    const Outcome outcome = call(withKey(options), time);
    QCOMPARE(outcome.error, QString());
    QCOMPARE(outcome.output, code + QLatin1Char('\n'));
    QCOMPARE(outcome.exitCode, 0);
}

void tst_code_command::checksCodes_data()
{
    QTest::addColumn<QString>("options");
    QTest::addColumn<qint64>("time");
    QTest::addColumn<QString>("output");

    const auto row = [](const char *name, const QString &options, qint64 time, const char *output) {
        QTest::newRow(name) << options << time << QString::fromUtf8(output) + QLatin1Char('\n');
    };
    const QString check = QStringLiteral("|check=") + codeOfStep;
    const qint64 endOfStep = 1111111110000;
    row("in its last millisecond", check, endOfStep - 1, "accepted");
    row("one step old", check, endOfStep, "accepted");
    row("one step old, its last millisecond", check, endOfStep + 29999, "accepted");
    row("two steps old", check, endOfStep + 30000,
        "refused: the code is not that of the present step of 30 s, nor of the last 1 before it");
    row("no tolerance, in its step", check + QStringLiteral("|tolerance=0"), endOfStep - 30000, "accepted");
    row("no tolerance, one step old", check + QStringLiteral("|tolerance=0"), endOfStep,
        "refused: the code is not that of the present step of 30 s");
    row("largest tolerance", check + QStringLiteral("|tolerance=1000"), endOfStep + 30000000 - 1, "accepted");
    row("beyond the largest tolerance", check + QStringLiteral("|tolerance=1000"), endOfStep + 30000000,
        "refused: the code is not that of the present step of 30 s, nor of the last 1000 before it");
    row("of the next step", check, endOfStep - 30001,
        "refused: the code is not that of the present step of 30 s, nor of the last 1 before it");
    row("letters", QStringLiteral("|check=49764O"), endOfStep - 1,
        "refused: the code is not that of the present step of 30 s, nor of the last 1 before it");
    row("9 digits", QStringLiteral("|digits=9|check=673719613"), 0, "accepted");
    row("other terms", QStringLiteral("|t0=1000|step=60|check=719613"), 1060000, "accepted");
    row("longest way back", QStringLiteral("|step=4294967|tolerance=1000|check=719613"),
        qint64(4294967) * 1000 * 1000, "accepted");
}

void tst_code_command::checksCodes()
{
    QFETCH(QString, options);
    QFETCH(qint64, time);
    QFETCH(QString, output);
    const Outcome outcome = call(withKey(options), time);
    QCOMPARE(outcome.error, QString());
    QCOMPARE(outcome.output, output);
    QCOMPARE(outcome.exitCode, output == QLatin1String("accepted\n") ? 0 : 1);
}

void tst_code_command::refusesBadValues_data()
{
    QTest::addColumn<QString>("options");
    QTest::addColumn<QString>("error");

    const auto row = [](const char *options, const char *error) {
        QTest::newRow(options) << QString::fromUtf8(options)
                               << QStringLiteral("j6tool: ") + QString::fromUtf8(error);
    };
    row("step=30", "either key or keyfile must be given");
    row("key=31|keyfile=x", "either key or keyfile must be given");
    row("key=", "key: is empty");
    row("keyfile=", "keyfile: is empty");
    row("key=313", "key: is not an even number of hexadecimal digits");
    row("key=0x31", "key: is not an even number of hexadecimal digits");
    row("key= 31", "key: is not an even number of hexadecimal digits");
    row("key=31|step=0", "step: '0' is no number from 1 to 4294967295");
    row("key=31|step=-30", "step: '-30' is no number from 1 to 4294967295");
    row("key=31|step=4294967296", "step: '4294967296' is no number from 1 to 4294967295");
    row("key=31|step=30s", "step: '30s' is no number from 1 to 4294967295");
    row("key=31|step=", "step: '' is no number from 1 to 4294967295");
    row("key=31|digits=0", "digits: '0' is no number from 1 to 9");
    row("key=31|digits=10", "digits: '10' is no number from 1 to 9");
    row("key=31|digits=-1", "digits: '-1' is no number from 1 to 9");
    row("key=31|t0=-1", "t0: '-1' is no number from 0 to 18446744073709551615");
    row("key=31|t0=18446744073709551616",
        "t0: '18446744073709551616' is no number from 0 to 18446744073709551615");
    row("key=31|t0=2024-01-01", "t0: '2024-01-01' is no number from 0 to 18446744073709551615");
    row("key=31|tolerance=1", "tolerance: needs the option 'check'");
    row("key=31|check=123456|tolerance=1001", "tolerance: '1001' is no number from 0 to 1000");
    row("key=31|check=123456|tolerance=-1", "tolerance: '-1' is no number from 0 to 1000");
    row("key=31|check=123456|tolerance=2147483648", "tolerance: '2147483648' is no number from 0 to 1000");
    row("key=31|check=123456|tolerance=1000|step=4294968",
        "tolerance: 1000 steps of 4294968 s are more than 4294967295 s");
    row("key=31|check=123456|tolerance=2|step=2147483648",
        "tolerance: 2 steps of 2147483648 s are more than 4294967295 s");
    row("key=31|check=12345", "check: the code has 5 characters where 6 are agreed");
    row("key=31|check=1234567", "check: the code has 7 characters where 6 are agreed");
    row("key=31|check=", "check: the code has 0 characters where 6 are agreed");
    row("key=31|check=123456|digits=7", "check: the code has 6 characters where 7 are agreed");
    row("key=31|digits=x|step=0", "step: '0' is no number from 1 to 4294967295");
}

void tst_code_command::refusesBadValues()
{
    QFETCH(QString, options);
    const Outcome outcome = call(options);
    QTEST(outcome.error, "error");
    QCOMPARE(outcome.output, QString());
    QCOMPARE(outcome.exitCode, 2);
}

void tst_code_command::readsTheKeyFromAFile_data()
{
    QTest::addColumn<QByteArray>("contents");

    const QByteArray hex = keyHex.toLatin1();
    QTest::newRow("bare") << hex;
    QTest::newRow("line") << hex + '\n';
    QTest::newRow("line of another system") << hex + "\r\n";
    QTest::newRow("white space around") << " \t\r\n" + hex + "\n\n \v\f";
    QTest::newRow("most that a file may have") << hex + QByteArray(64 * 1024 - hex.size(), ' ');
}

void tst_code_command::readsTheKeyFromAFile()
{
    QFETCH(QByteArray, contents);
    const QTemporaryDir dir;
    QVERIFY(write(dir.filePath(QStringLiteral("key")), contents));
    const Outcome outcome = call(QStringLiteral("keyfile=") + dir.filePath(QStringLiteral("key")));
    QCOMPARE(outcome.error, QString());
    QCOMPARE(outcome.output, codeOfStep + QLatin1Char('\n'));
    QCOMPARE(call(QStringLiteral("key=3A3b")).output, call(QStringLiteral("key=3a3B")).output);
}

void tst_code_command::refusesBadKeyFiles_data()
{
    QTest::addColumn<QByteArray>("contents");
    QTest::addColumn<QString>("error"); // behind the file's name

    QTest::newRow("empty") << QByteArray() << ": is empty";
    QTest::newRow("white space only") << QByteArray(" \n") << ": is empty";
    const QString noHex = QStringLiteral(": is not an even number of hexadecimal digits");
    QTest::newRow("two lines") << QByteArray("3132\n3334\n") << noHex;
    QTest::newRow("odd") << QByteArray("313") << noHex;
    QTest::newRow("no hexadecimal digit") << QByteArray("secret") << noHex;
    QTest::newRow("raw bytes") << QByteArray("\x00\xFF\x31", 3) << noHex;
    QTest::newRow("zero byte behind the key") << QByteArray("3132\0", 5) << noHex;
    QTest::newRow("too large") << QByteArray(64 * 1024 + 1, ' ') << ": is larger than 65536 bytes";
}

void tst_code_command::refusesBadKeyFiles()
{
    QFETCH(QByteArray, contents);
    QFETCH(QString, error);
    const QTemporaryDir dir;
    const QString name = dir.filePath(QStringLiteral("key"));
    QCOMPARE(call(QStringLiteral("keyfile=") + name).error, name + QStringLiteral(": no such file"));
    QCOMPARE(call(QStringLiteral("keyfile=") + dir.path()).error,
             dir.path() + QStringLiteral(": is a directory"));
    QVERIFY(write(name, contents));
    const Outcome outcome = call(QStringLiteral("keyfile=") + name);
    QCOMPARE(outcome.error, name + error);
    QCOMPARE(outcome.output, QString());
    QCOMPARE(outcome.exitCode, 2);
}

void tst_code_command::neverShowsTheKey_data()
{
    QTest::addColumn<QString>("words");

    // "5EC2E7" is the key.
    QTest::newRow("odd") << "key=5EC2E7A";
    QTest::newRow("no hexadecimal digit") << "key=5EC2E7G";
    QTest::newRow("not UTF-8") << "key=5EC2E7\uFFFD";
    QTest::newRow("without the key's name") << "=5EC2E7";
    QTest::newRow("twice") << "key=5EC2E7|key=5EC2E7";
    QTest::newRow("and a file") << "key=5EC2E7|keyfile=none";
    QTest::newRow("with a bad step") << "key=5EC2E7|step=0";
    QTest::newRow("with a wrong code") << "key=5EC2E7|check=000000";
    QTest::newRow("with a short code") << "key=5EC2E7|check=0";
}

void tst_code_command::neverShowsTheKey()
{
    QFETCH(QString, words);
    const Outcome outcome = call(words);
    QVERIFY(outcome.exitCode != 0);
    QVERIFY(!outcome.error.isEmpty() || !outcome.output.isEmpty());
    QVERIFY2(!(outcome.error + outcome.output).contains(QLatin1String("5EC2E7"), Qt::CaseInsensitive),
             qPrintable(outcome.error + outcome.output));
}

QTEST_GUILESS_MAIN(tst_code_command)
#include "tst_code_command.moc"
