// SPDX-License-Identifier: MIT
#include <CTarFileInfo.h>
#include <LoggedTest.h>

#include <QDebug>
#include <QTest>

namespace {

CTarFileInfo sample()
{
    CTarFileInfo info;
    info.type = CTarFileInfo::E_TYPE_LINK;
    info.name = QStringLiteral("current");
    info.linkName = QStringLiteral("3.2.118");
    info.size = 7;
    info.offset = 1024;
    return info;
}

QString debugText(const CTarFileInfo &info)
{
    QString text;
    QDebug(&text) << info << 1;
    return text;
}

} // namespace

class tst_tar_file_info : public LoggedTest
{
    Q_OBJECT

private Q_SLOTS:
    void isClearedFirst();
    void clearMakesItSo();
    void isValidUnlessOfAnotherType();
    void typesHaveTheirNumbers();
    void isEqualInAllFields();
    void printsItself();
};

void tst_tar_file_info::isClearedFirst()
{
    const CTarFileInfo info;
    QCOMPARE(info.type, 0);
    QVERIFY(info.name.isEmpty());
    QVERIFY(info.linkName.isEmpty());
    QCOMPARE(info.size, qint64(0));
    QCOMPARE(info.offset, qint64(0));
    QVERIFY(!info.isValid());
}

void tst_tar_file_info::clearMakesItSo()
{
    CTarFileInfo info = sample();
    info.clear();
    QCOMPARE(info.type, 0);
    QVERIFY(info.name.isEmpty());
    QVERIFY(info.linkName.isEmpty());
    QCOMPARE(info.size, qint64(0));
    QCOMPARE(info.offset, qint64(0));
    QVERIFY(info == CTarFileInfo());
}

void tst_tar_file_info::isValidUnlessOfAnotherType()
{
    CTarFileInfo info;
    for (const int type : {1, 2, 3, 4, -1}) {
        info.type = type;
        QVERIFY(info.isValid());
    }
    info = sample();
    info.type = 0;
    QVERIFY(!info.isValid());
}

void tst_tar_file_info::typesHaveTheirNumbers()
{
    QCOMPARE(int(CTarFileInfo::E_TYPE_OTHER), 0);
    QCOMPARE(int(CTarFileInfo::E_TYPE_FILE), 1);
    QCOMPARE(int(CTarFileInfo::E_TYPE_LINK), 2);
    QCOMPARE(int(CTarFileInfo::E_TYPE_DIRECTORY), 3);
}

void tst_tar_file_info::isEqualInAllFields()
{
    QVERIFY(sample() == sample());
    QVERIFY(!(sample() != sample()));
    QVector<CTarFileInfo> others(5, sample());
    others[0].type = 1;
    others[1].name += QLatin1Char('x');
    others[2].linkName.clear();
    others[3].size = 8;
    others[4].offset = 512;
    for (const CTarFileInfo &other : qAsConst(others)) {
        QVERIFY(other != sample());
        QVERIFY(!(other == sample()));
    }
}

void tst_tar_file_info::printsItself()
{
    QCOMPARE(debugText(sample()), QStringLiteral("\"CTarFileInfo(2, current, 3.2.118, 7, 1024)\" 1 "));
    CTarFileInfo info = sample();
    info.name = QStringLiteral("%3");
    QCOMPARE(debugText(info), QStringLiteral("\"CTarFileInfo(2, %3, 3.2.118, 7, 1024)\" 1 "));
}

QTEST_GUILESS_MAIN(tst_tar_file_info)
#include "tst_tar_file_info.moc"
