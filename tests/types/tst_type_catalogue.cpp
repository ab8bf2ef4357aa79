// SPDX-License-Identifier: MIT
#include <CDataTypeParser.h>
#include <LoggedTest.h>
#include <QTest>
class tst_type_catalogue : public LoggedTest
{
    Q_OBJECT
private Q_SLOTS:
    void x() { QCOMPARE(CDataTypeParser::typeToStr(NTypes::E_U8), QStringLiteral("UNIT_U8")); }
};
QTEST_GUILESS_MAIN(tst_type_catalogue)
#include "tst_type_catalogue.moc"
