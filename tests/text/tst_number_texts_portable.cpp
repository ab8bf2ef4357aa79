// SPDX-License-Identifier: MIT
// Numbers as texts where the compiler has no integers of 128 bits, as that of Windows: less is written by
// hand there, and the texts are the same. Here, too, the code is built as if there were none.
#include "NumberSamples.h"

#include "text/NumberText.h"

#include <LoggedTest.h>

#include <QTest>

using namespace NumberSamples;

Q_DECLARE_METATYPE(Source<double>)

namespace {

bool same(const QString &text, const QString &expected)
{
    if (text != expected)
        qWarning("is %s, should be %s", qUtf8Printable(text), qUtf8Printable(expected));
    return text == expected;
}

bool isWrittenAsQtDoes(double value)
{
    return same(textOfSignificant(value, 6), QString::number(value, 'g', 6))
           && same(textOfSignificant(value, 15), QString::number(value, 'g', 15))
           && same(textOfFixed(value, 3), QString::number(value, 'f', 3));
}

template<typename Integer>
void checkIntegers()
{
    for (const Integer value : integerEdges<Integer>())
        QVERIFY(same(textOfInteger(value), QString::number(value)));
}

} // namespace

class tst_number_texts_portable : public LoggedTest
{
    Q_OBJECT

private Q_SLOTS:
    void integers();
    void samples_data();
    void samples();
    void edges();
};

// Each width by itself: a CVariant writes most of them as the widest.
void tst_number_texts_portable::integers()
{
    checkIntegers<qint32>();
    checkIntegers<quint32>();
    checkIntegers<qint64>();
    checkIntegers<quint64>();
}

void tst_number_texts_portable::samples_data()
{
    QTest::addColumn<Source<double>>("source");
    QTest::newRow("decimal") << Source<double>(decimal<double>);
    QTest::newRow("near a tie") << Source<double>(nearTie<double>);
    QTest::newRow("moderate") << Source<double>(moderate<double>);
    QTest::newRow("near a whole tie") << Source<double>(nearWholeTie<double>);
    QTest::newRow("near 0.0001") << Source<double>(nearTenThousandth<double>);
}

void tst_number_texts_portable::samples()
{
    QFETCH(const Source<double>, source);
    std::mt19937_64 random(20260706);
    for (int left = sampleCount() / 4; left > 0; --left)
        QVERIFY(isWrittenAsQtDoes(source(random)));
}

void tst_number_texts_portable::edges()
{
    const QVector<double> values = floatEdges<double>();
    for (const double value : values)
        QVERIFY(isWrittenAsQtDoes(value));
}

QTEST_GUILESS_MAIN(tst_number_texts_portable)
#include "tst_number_texts_portable.moc"
