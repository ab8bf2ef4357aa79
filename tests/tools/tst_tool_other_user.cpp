// SPDX-License-Identifier: MIT
// The command as a user who may not read its files, or not write where they lie: it ends with the exit code
// of a failure and one line, and all files are what they were.
#include "FaultyCall.h"

#include <LoggedTest.h>
#include <OtherUser.h>
#include <ScopedVariable.h>

#include <QTest>
#include <QTextCodec>

#include <vector>

#include <fcntl.h>
#include <sys/stat.h>

namespace {

void setMode(const FileTree &tree, const QString &name, mode_t mode)
{
    chmod(QFile::encodeName(tree.path() + QLatin1Char('/') + name).constData(), mode);
}

// The exit code of the tool as the other user, what it prints being in the file.
int exitCodeOf(const QStringList &words, const QString &printed)
{
    QByteArrayList arguments = {J6TOOL_PROGRAM};
    for (const QString &word : words)
        arguments.append(QFile::encodeName(word));
    std::vector<char *> pointers;
    for (QByteArray &argument : arguments)
        pointers.push_back(argument.data());
    pointers.push_back(nullptr);
    const int file = open(QFile::encodeName(printed).constData(), O_WRONLY | O_CREAT | O_TRUNC, 0600);
    const int exitCode = asOtherUser([&] {
        const pid_t child = fork();
        if (child == 0) {
            dup2(file, STDOUT_FILENO);
            dup2(file, STDERR_FILENO);
            execv(J6TOOL_PROGRAM, pointers.data());
            _exit(1);
        }
        int status = 0;
        return waitpid(child, &status, 0) == child && WIFEXITED(status) ? WEXITSTATUS(status) : 1;
    });
    close(file);
    return exitCode;
}

// What the tool printed, without what a library that is instrumented for coverage adds: that the other user
// cannot write its counts.
QByteArray printedIn(const FileTree &tree)
{
    QByteArray printed;
    const QByteArrayList lines = tree.content("printed").split('\n');
    for (const QByteArray &line : lines) {
        if (!line.isEmpty() && !line.startsWith("profiling:"))
            printed += line + '\n';
    }
    return printed;
}

// A directory in which the other user may write: for what the tool prints, and for its temporary files.
class Scratch
{
public:
    Scratch() : mTemporary("TMPDIR", QFile::encodeName(mTree.path())) { setMode(mTree, QString(), 0777); }

    // The exit code of the tool.
    int call(const QStringList &words) const { return exitCodeOf(words, mTree.path("printed")); }
    QByteArray printed() const { return printedIn(mTree); }

private:
    FileTree mTree;
    ScopedVariable mTemporary;
};

} // namespace

class tst_tool_other_user : public LoggedTest
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void unreadableFilesAreReported_data() { addCalls(); }
    void unreadableFilesAreReported();
    void nothingIsWrittenIntoAReadOnlyDirectory_data() { addCalls(); }
    void nothingIsWrittenIntoAReadOnlyDirectory();

private:
    static void addCalls();

    InputFiles mInput;
};

void tst_tool_other_user::initTestCase()
{
    QTextCodec::setCodecForLocale(QTextCodec::codecForName("UTF-8"));
    if (qgetenv("LD_PRELOAD").contains("vgpreload"))
        QSKIP("valgrind has no files of its own as another user");
    const FileTree tree;
    setMode(tree, QString(), 0777);
    tree.file("tool.ini", "[Drive]\naddress=42\n");
    setMode(tree, QStringLiteral("tool.ini"), 0666);
    const QStringList words = {QStringLiteral("settings"), QStringLiteral("file=") + tree.path("tool.ini"),
                               QStringLiteral("section=Drive"), QStringLiteral("key=address")};
    if (Scratch().call(words) != 0)
        QSKIP("there is no other user here, or none with a way to the tool and the temporary directory");
}

void tst_tool_other_user::addCalls()
{
    QTest::addColumn<int>("index");
    for (std::size_t i = 0; i < faultyCalls.size(); ++i)
        QTest::newRow(faultyCalls[i].name) << int(i);
}

void tst_tool_other_user::unreadableFilesAreReported()
{
    QFETCH(int, index);
    const FaultyCall &call = faultyCalls[std::size_t(index)];
    const Scratch scratch;
    const FileTree tree;
    setMode(tree, QString(), 0777);
    mInput.writeTo(tree);
    const QStringList names = mInput.files().keys();
    for (const QString &name : names)
        setMode(tree, name, 0000);
    const int exitCode = scratch.call(wordsOf(call, tree));
    for (const QString &name : names)
        setMode(tree, name, 0644);

    const QByteArray printed = scratch.printed();
    const bool readsNothing = QByteArray(call.output) == "new.ini";
    QCOMPARE(exitCode, readsNothing ? 0 : 2);
    QCOMPARE(printed.count('\n'), 1);
    Files files = filesIn(tree);
    if (readsNothing)
        files.remove(QString::fromLatin1(call.output));
    else
        QVERIFY2(printed.contains("cannot be opened: "), printed.constData());
    QCOMPARE(files, mInput.files());
}

void tst_tool_other_user::nothingIsWrittenIntoAReadOnlyDirectory()
{
    QFETCH(int, index);
    const FaultyCall &call = faultyCalls[std::size_t(index)];
    const Scratch scratch;
    const FileTree tree;
    mInput.writeTo(tree);
    const int asOwner = ToolCall::callIn(tree.path(), wordsOf(call, tree)).exitCode;
    const FileTree readOnly;
    mInput.writeTo(readOnly);
    const QStringList names = mInput.files().keys();
    for (const QString &name : names)
        setMode(readOnly, name, 0644);
    setMode(readOnly, QString(), 0555);
    const int exitCode = scratch.call(wordsOf(call, readOnly));
    setMode(readOnly, QString(), 0755);

    const QByteArray printed = scratch.printed();
    const bool writes = *call.output != '\0';
    QCOMPARE(exitCode, writes ? 2 : asOwner);
    if (writes) {
        QCOMPARE(printed.count('\n'), 1);
        QVERIFY2(printed.contains("cannot be written"), printed.constData());
    }
    QCOMPARE(filesIn(readOnly), mInput.files());
}

QTEST_GUILESS_MAIN(tst_tool_other_user)
#include "tst_tool_other_user.moc"
