// SPDX-License-Identifier: MIT
// A file that the command changes keeps its mode, whoever changes it.
#include "ToolCall.h"

#include <FileTree.h>
#include <LoggedTest.h>

#include <QTest>

#include <sys/stat.h>
#include <unistd.h>

namespace {

constexpr mode_t permissionBits = 07777;

int modeOf(const QString &fileName)
{
    struct stat status = {};
    const bool isKnown = stat(QFile::encodeName(fileName).constData(), &status) == 0;
    return isKnown ? int(status.st_mode & permissionBits) : -1;
}

struct Change
{
    const char *name;
    const char *fileName;
    const char *words; // in the directory of the file
};

constexpr std::array<Change, 2> changes = {{
    {"settings", "tool.ini", "settings|file=tool.ini|section=Drive|key=address|value=43"},
    {"set", "axis.csv", "set|file=axis.csv|out=axis.csv|0x6081=1000"},
}};

} // namespace

class tst_file_modes : public LoggedTest
{
    Q_OBJECT

private Q_SLOTS:
    void changedFileKeepsItsMode_data();
    void changedFileKeepsItsMode();
};

void tst_file_modes::changedFileKeepsItsMode_data()
{
    QTest::addColumn<QByteArray>("fileName");
    QTest::addColumn<QByteArray>("words");
    QTest::addColumn<int>("mode");
    for (const Change &change : changes) {
        for (const int mode : {0444, 0600, 0640, 0664})
            QTest::addRow("%s, %o", change.name, uint(mode))
                << QByteArray(change.fileName) << QByteArray(change.words) << mode;
    }
}

void tst_file_modes::changedFileKeepsItsMode()
{
    QFETCH(QByteArray, fileName);
    QFETCH(QByteArray, words);
    QFETCH(int, mode);
    const FileTree tree;
    tree.file("tool.ini", "[Drive]\naddress=0x0000002a\n");
    tree.file("axis.csv", ToolCall::contentsOf(QStringLiteral(J6TOOL_EXAMPLES "/servo-axis.csv")));
    const QByteArray before = tree.content(fileName.constData());
    const QString path = tree.path(fileName.constData());
    QCOMPARE(chmod(QFile::encodeName(path).constData(), mode_t(mode)), 0);
    const ToolCall::Outcome outcome = ToolCall::callIn(tree.path(), ToolCall::words(words.constData()));
    // Only root may change what is read-only.
    const bool mayChange = geteuid() == 0 || (mode & S_IWUSR) != 0;
    QCOMPARE(outcome.exitCode, mayChange ? 0 : 2);
    QCOMPARE(tree.content(fileName.constData()) != before, mayChange);
    QCOMPARE(modeOf(path), mode);
}

QTEST_GUILESS_MAIN(tst_file_modes)
#include "tst_file_modes.moc"
