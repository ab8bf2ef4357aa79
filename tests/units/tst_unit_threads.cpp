// SPDX-License-Identifier: MIT
#include <CUnitParser.h>

#include <LoggedTest.h>
#include <Threads.h>

#include <QCoreApplication>
#include <QTest>
#include <QTranslator>

#include <atomic>
#include <vector>

using Nj6Units::eUnit_t;

namespace {

// All that the catalogue says about the codes from -10 to 199, one line for each.
QStringList wholeCatalogue()
{
    const QMap<eUnit_t, QString> texts = CUnitParser::initUnitMap();
    const QMap<eUnit_t, QString> descriptions = CUnitParser::initDescriptionMap();
    QStringList lines;
    for (int code = -10; code < 200; ++code) {
        const auto unit = static_cast<eUnit_t>(code);
        lines += QStringLiteral("%1|%2|%3|%4|%5|%6|%7|%8")
                     .arg(code)
                     .arg(CUnitParser::unitStr(unit), CUnitParser::unitDescription(unit))
                     .arg(CUnitParser::digits(unit))
                     .arg(CUnitParser::toLinear(unit))
                     .arg(CUnitParser::hasLinear(unit))
                     .arg(texts.value(unit), descriptions.value(unit));
    }
    return lines;
}

// Knows one text and counts the questions.
class CountingTranslator : public QTranslator
{
public:
    CountingTranslator() { QCoreApplication::installTranslator(this); }
    ~CountingTranslator() override { QCoreApplication::removeTranslator(this); }

    bool isEmpty() const override { return false; }

    QString translate(const char * /*context*/, const char *source, const char * /*disambiguation*/,
                      int /*n*/) const override
    {
        ++mQuestionCount;
        return qstrcmp(source, "rpm") == 0 ? QStringLiteral("U/min") : QString();
    }

    int questionCount() const { return mQuestionCount; }

private:
    mutable std::atomic<int> mQuestionCount{0};
};

} // namespace

// A program of its own: nothing has looked up a unit before the threads do.
class tst_unit_threads : public LoggedTest
{
    Q_OBJECT

private Q_SLOTS:
    void firstLookupsMayComeFromSeveralThreads();
    void translatedLookupsMayComeFromSeveralThreads();
};

void tst_unit_threads::firstLookupsMayComeFromSeveralThreads()
{
    std::vector<QStringList> seen(threadCount);
    inThreads([&seen](int thread) { seen[static_cast<std::size_t>(thread)] = wholeCatalogue(); });

    const QStringList expected = wholeCatalogue();
    QCOMPARE(expected.size(), 210);
    QVERIFY(expected.contains(QStringLiteral("40|rpm|Speed [RPM]|3|42|1|rpm|Speed [RPM]")));
    QVERIFY(expected.contains(QStringLiteral("3|unknown|Unknown unit|0|3|0||")));
    for (const QStringList &lines : seen)
        QCOMPARE(lines, expected);
}

void tst_unit_threads::translatedLookupsMayComeFromSeveralThreads()
{
    constexpr int rounds = 200;
    const CountingTranslator translator;
    std::atomic<int> right{0};
    inThreads([&right](int) {
        for (int i = 0; i < rounds; ++i) {
            right += CUnitParser::unitStr(Nj6Units::E_UNIT_SPEED_RPM) == QLatin1String("U/min") ? 1 : 0;
            right += CUnitParser::unitStr(static_cast<eUnit_t>(3)) == QLatin1String("unknown") ? 1 : 0;
        }
    });
    QCOMPARE(right.load(), threadCount * rounds * 2);
    QCOMPARE(translator.questionCount(), threadCount * rounds * (1 + 2));
}

QTEST_GUILESS_MAIN(tst_unit_threads)
#include "tst_unit_threads.moc"
