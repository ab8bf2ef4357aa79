// SPDX-License-Identifier: MIT
#include <CTemporaryDir.h>

#include <FileTree.h>
#include <LoggedTest.h>
#include <ScopedVariable.h>

#include <QTest>

#include <memory>
#include <type_traits>

static_assert(!std::is_copy_constructible<CTemporaryDir>::value
                  && !std::is_copy_assignable<CTemporaryDir>::value
                  && !std::is_move_constructible<CTemporaryDir>::value,
              "one owner");

class tst_temporary_directory : public LoggedTest
{
    Q_OBJECT

private Q_SLOTS:
    void directoryIsMadeInTheTemporaryDirectory();
    void directoryIsRemovedWithItsContent();
    void directoryStaysWithoutAutoRemove();
    void directoryIsRemovedAtOnce();
    void everyDirectoryIsAnother();
    void directoryThatCannotBeMadeIsInvalid();

protected:
    // All of them are made in a temporary directory of the test's own.
    void prepare() override
    {
        mTree = std::make_unique<FileTree>();
        mTemporary =
            std::make_unique<ScopedVariable>(temporaryDirectoryVariable, QFile::encodeName(mTree->path()));
    }
    void tidy() override
    {
        mTemporary.reset();
        mTree.reset();
    }

private:
    std::unique_ptr<FileTree> mTree;
    std::unique_ptr<ScopedVariable> mTemporary;
};

void tst_temporary_directory::directoryIsMadeInTheTemporaryDirectory()
{
    const CTemporaryDir directory;
    QVERIFY(directory.isValid());
    QVERIFY(directory.autoRemove());
    QVERIFY(QFileInfo(directory.path()).isDir());
    QCOMPARE(QFileInfo(directory.path()).path(), QDir::tempPath());
    QVERIFY(QFileInfo(directory.path())
                .fileName()
                .startsWith(QCoreApplication::applicationName() + QLatin1Char('-')));
}

void tst_temporary_directory::directoryIsRemovedWithItsContent()
{
    QString path;
    {
        const CTemporaryDir directory;
        path = directory.path();
        QVERIFY(QDir(path).mkpath(QStringLiteral("axis/motor")));
    }
    QVERIFY(!path.isEmpty());
    QVERIFY(!QFileInfo::exists(path));
}

void tst_temporary_directory::directoryStaysWithoutAutoRemove()
{
    QString path;
    {
        CTemporaryDir directory;
        directory.setAutoRemove(false);
        QVERIFY(!directory.autoRemove());
        directory.setAutoRemove(true);
        QVERIFY(directory.autoRemove());
        directory.setAutoRemove(false);
        path = directory.path();
    }
    QVERIFY(QFileInfo(path).isDir());
    QVERIFY(QDir(path).removeRecursively());
}

void tst_temporary_directory::directoryIsRemovedAtOnce()
{
    CTemporaryDir directory;
    directory.setAutoRemove(false);
    const QString path = directory.path();
    QVERIFY(QDir(path).mkpath(QStringLiteral("axis")));
    QVERIFY(directory.remove());
    QVERIFY(!QFileInfo::exists(path));
    QCOMPARE(directory.path(), path);
}

void tst_temporary_directory::everyDirectoryIsAnother()
{
    const CTemporaryDir one;
    const CTemporaryDir other;
    QVERIFY(one.path() != other.path());
}

void tst_temporary_directory::directoryThatCannotBeMadeIsInvalid()
{
    const ScopedVariable temporary(temporaryDirectoryVariable,
                                   QFile::encodeName(mTree->file("no-directory")));
    QCOMPARE(QDir::tempPath(), mTree->path("no-directory"));
    CTemporaryDir directory;
    QVERIFY(!directory.isValid());
    QCOMPARE(directory.path(), QString());
    QVERIFY(!directory.remove());
}

QTEST_GUILESS_MAIN(tst_temporary_directory)
#include "tst_temporary_directory.moc"
