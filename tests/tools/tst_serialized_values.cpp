// SPDX-License-Identifier: MIT
#include "SerializedValues.h"

#include <LoggedTest.h>

#include <QTest>

using namespace j6tool;

class tst_serialized_values : public LoggedTest
{
    Q_OBJECT

private Q_SLOTS:
    void areSeen_data();
    void areSeen();
};

void tst_serialized_values::areSeen_data()
{
    QTest::addColumn<QByteArray>("ini");
    QTest::addColumn<bool>("expected");

    const auto row = [](const char *name, const QByteArray &ini, bool expected) {
        QTest::newRow(name) << ini << expected;
    };
    row("empty", "", false);
    row("plain entries", "[S]\nk=1\nl=a, b\n", false);
    row("bytes", "k=@ByteArray(\\0\\xff)\n", false);
    row("harmless markers", "k=@Size(1 2)\nl=@Rect(1 2 3 4)\nm=@Point(1 2)\nn=@Invalid()\no=@String(x)\n",
        false);
    row("word alone", "k=Variant(\nl=@variant(\nm=@Variant\nn=DateTime(\no=@datetime(\np=@DateTime\n", false);
    row("variant", "k=@Variant(\\0\\0\\0\\x9\\xff\\xff\\xff\\xff)\n", true);
    row("date-time", "k=@DateTime(\\0\\0\\0\\x10)\n", true);
    row("in a list", "k=a, @Variant(x)\n", true);
    row("without its end", "k=@Variant(", true);
    row("hexadecimal escape", "k=\\x40Variant(x)\n", true);
    row("hexadecimal escape with zeros", "k=@V\\x000061riant(x)\n", true);
    row("hexadecimal escape beyond 16 bits", "k=\\x10040Variant(x)\n", true);
    row("hexadecimal escape in upper case", "k=@Var\\x69\"\"ant\\x28x)\n", true);
    row("escape of another character", "k=\\x140Variant(x)\n", false);
    row("hexadecimal escape that takes in a letter", "k=@V\\x61\\x72i\\x61nt(x)\n", true);
    row("longer number than meant",
        "k=@Vari\\x61"
        "ant(x)\n",
        false);
    row("octal escape", "k=\\100Variant(x)\n", true);
    row("octal escape ended by an 8", "k=\\1008Variant(x)\n", false);
    row("escape that is dropped", "k=@Var\\qiant(x)\n", true);
    row("escape of 8 is dropped", "k=@Var\\8iant(x)\n", true);
    row("escape x without digits is dropped", "k=@Var\\xiant(x)\n", true);
    row("escaped escape", "k=\\\\x40Variant(x)\n", false);
    row("escaped escape in between", "k=@Var\\\\iant(x)\n", false);
    row("named escape", "k=@Var\\tiant(x)\n", false);
    row("escaped line end", "k=@Var\\\niant(x)\n", true);
    row("escaped pair of line ends", "k=@Var\\\r\niant(x)\n", true);
    row("escaped pair of line ends the other way round", "k=@Var\\\n\riant(x)\n", true);
    row("quotes", "k=\"@Var\"iant(x)\n", true);
    row("blanks behind a quote", "k=\"@Var\" \tiant(x)\n", true);
    row("UTF-8 mark in between", "k=\"@Var\"\xEF\xBB\xBFiant(x)\n", true);
    row("zero byte in between", QByteArray("k=@Var\0iant(x)\n", 15), false);
    row("escape at the end", "k=@Variant\\", false);
    row("escape x at the end", "k=@Variant\\x", false);
}

void tst_serialized_values::areSeen()
{
    QFETCH(QByteArray, ini);
    QTEST(mayHoldSerializedValue(ini), "expected");
}

QTEST_GUILESS_MAIN(tst_serialized_values)
#include "tst_serialized_values.moc"
