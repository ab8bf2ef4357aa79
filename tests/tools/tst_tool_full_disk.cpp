// SPDX-License-Identifier: MIT
// The command on a disk that has room for less and less of what is to be written.
#include "FaultyCall.h"

#include <LoggedTest.h>
#include <OwnMounts.h>

#include <QTest>
#include <QTextCodec>

#include <algorithm>
#include <array>
#include <iterator>
#include <vector>

namespace {

constexpr qint64 diskSize = 262144; // 64 pages

// More than a file's buffer, so that the disk becomes full within a write. LONG is a text of this length.
constexpr int longTextSize = 17000;

constexpr std::array<FaultyCall, 2> longCalls = {{
    {"write a long setting", "settings file=DIR/tool.ini section=Drive key=note value=LONG", "tool.ini"},
    {"write a long first setting", "settings file=DIR/new.ini section=Drive key=note value=LONG", "new.ini"},
}};

std::vector<FaultyCall> writingCalls()
{
    std::vector<FaultyCall> calls(longCalls.begin(), longCalls.end());
    std::copy_if(faultyCalls.begin(), faultyCalls.end(), std::back_inserter(calls),
                 [](const FaultyCall &call) { return *call.output != '\0'; });
    return calls;
}

QStringList longWordsOf(const FaultyCall &call, const FileTree &tree)
{
    const QString longText(longTextSize, QLatin1Char('x'));
    QStringList words = wordsOf(call, tree);
    words.replaceInStrings(QStringLiteral("LONG"), longText);
    return words;
}

// The one line that says that the disk is full. What takes a lock does not learn why it cannot.
bool tellsOfFullDisk(const QByteArray &error, const FaultyCall &call, int pages)
{
    const bool hasNoLock = pages == 0 && QByteArray(call.words).startsWith("settings");
    return error.count('\n') == 1
           && error.endsWith(hasNoLock ? ": cannot be written\n"
                                       : ": cannot be written: No space left on device\n");
}

} // namespace

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
    const std::vector<FaultyCall> calls = writingCalls();
    for (std::size_t i = 0; i < calls.size(); ++i)
        QTest::newRow(calls[i].name) << int(i);
}

void tst_tool_full_disk::fileIsWholeOrWhatItWas()
{
    QFETCH(int, index);
    const FaultyCall call = writingCalls()[std::size_t(index)];
    const FileTree roomy;
    mInput.writeTo(roomy);
    QCOMPARE(ToolCall::callIn(roomy.path(), longWordsOf(call, roomy)).exitCode, 0);
    const Files expected = filesIn(roomy);
    int done = 0;
    constexpr int mostPages = 12;
    for (int pages = 0; pages <= mostPages; ++pages) {
        const FileTree tree;
        const faults::SmallDisk disk(tree.path(), diskSize);
        QVERIFY(disk.isMounted());
        mInput.writeTo(tree);
        QVERIFY(disk.leave(pages));
        const ToolCall::Outcome outcome = ToolCall::callIn(tree.path(), longWordsOf(call, tree));
        Files files = filesIn(tree);
        files.remove(QStringLiteral(".fill"));
        if (outcome.exitCode == 0) {
            ++done;
            QCOMPARE(outcome.error, QByteArray());
            QCOMPARE(files, expected);
        } else {
            QCOMPARE(outcome.exitCode, 2);
            QVERIFY2(tellsOfFullDisk(outcome.error, call, pages), outcome.error.constData());
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
