// SPDX-License-Identifier: MIT
// The command on a disk that has room for less and less of what is to be written.
#include "FaultyCall.h"

#include <LoggedTest.h>
#include <OwnMounts.h>

#include <QTest>
#include <QTextCodec>

constexpr qint64 diskSize = 262144; // 64 pages

class tst_tool_full_disk : public LoggedTest
{
    Q_OBJECT

public:
    explicit tst_tool_full_disk(bool mayMount) : mMayMount(mayMount) {}

private Q_SLOTS:
    void initTestCase();
    void fileIsWholeOrWhatItWas_data();
    void fileIsWholeOrWhatItWas();

private:
    InputFiles mInput;
    bool mMayMount;
};

void tst_tool_full_disk::initTestCase()
{
    QTextCodec::setCodecForLocale(QTextCodec::codecForName("UTF-8"));
    if (!mMayMount)
        QSKIP("the system does not allow the test a file system of its own");
}

void tst_tool_full_disk::fileIsWholeOrWhatItWas_data()
{
    QTest::addColumn<int>("index");
    for (std::size_t i = 0; i < faultyCalls.size(); ++i) {
        if (*faultyCalls[i].output != '\0')
            QTest::newRow(faultyCalls[i].name) << int(i);
    }
}

void tst_tool_full_disk::fileIsWholeOrWhatItWas()
{
    QFETCH(int, index);
    const FaultyCall &call = faultyCalls[std::size_t(index)];
    const FileTree roomy;
    mInput.writeTo(roomy);
    QCOMPARE(ToolCall::callIn(roomy.path(), wordsOf(call, roomy)).exitCode, 0);
    const Files expected = filesIn(roomy);
    int done = 0;
    constexpr int mostPages = 12;
    for (int pages = 0; pages <= mostPages; ++pages) {
        const FileTree tree;
        const faults::SmallDisk disk(tree.path(), diskSize);
        QVERIFY(disk.isMounted());
        mInput.writeTo(tree);
        QVERIFY(disk.leave(pages));
        const ToolCall::Outcome outcome = ToolCall::callIn(tree.path(), wordsOf(call, tree));
        Files files = filesIn(tree);
        files.remove(QStringLiteral(".fill"));
        if (outcome.exitCode == 0) {
            ++done;
            QCOMPARE(outcome.error, QByteArray());
            QCOMPARE(files, expected);
        } else {
            QCOMPARE(outcome.exitCode, 2);
            QCOMPARE(outcome.error.count('\n'), 1);
            QVERIFY(outcome.error.contains("cannot be written"));
            QCOMPARE(files, mInput.files());
        }
    }
    QVERIFY(done > 0);
    QVERIFY(done <= mostPages);
}

int main(int argc, char *argv[])
{
    tst_tool_full_disk test(faults::enterOwnMounts());
    return QTest::qExec(&test, argc, argv);
}
#include "tst_tool_full_disk.moc"
