// SPDX-License-Identifier: MIT
// CTar on a disk that fails, and archives that change while they are read: what is handed out is what was
// stored, and all else is told.
#include <CTar.h>

#include "TarWriter.h"

#include <FaultSweep.h>
#include <LoggedTest.h>

#include <QTest>

using faults::Fault;
using faults::FaultSweep;
using faults::Operation;
using faults::Trial;

namespace {

QByteArray content(char first, int size)
{
    QByteArray bytes;
    for (int i = 0; i < size; ++i)
        bytes += char(first + i % 61);
    return bytes;
}

// A small member, one that no window holds, one behind it.
const QList<tar::Member> &members()
{
    static const QList<tar::Member> list = {
        {"a.par", content('a', 700)}, {"firmware.bin", content('0', 100000)}, {"b.par", content('b', 5000)}};
    return list;
}

const QByteArray &archive()
{
    static const QByteArray bytes = tar::archive(members());
    return bytes;
}

} // namespace

class tst_tar_faults : public LoggedTest
{
    Q_OBJECT

private Q_SLOTS:
    void everyFaultIsTold();
    void archiveThatShrinksMeanwhileGivesWholeMembers();
    void archiveShrinks_data();
    void archiveShrinks();
    void archiveGrows();
    void archiveIsReplaced();
};

void tst_tar_faults::everyFaultIsTold()
{
    bool isLoaded = false;
    QStringList names;
    QList<QPair<bool, QByteArray>> read;
    QString error;
    Trial trial;
    trial.prepare = [](const FileTree &tree) { tree.file("bundle.tar", archive()); };
    trial.act = [&](const FileTree &tree) {
        CTar bundle;
        isLoaded = bundle.loadFile(tree.path("bundle.tar"));
        names = bundle.names();
        read.clear();
        for (int i = 0; i < names.size(); ++i) {
            QByteArray data;
            const bool isRead = bundle.file(i, data);
            read.append({isRead, data});
        }
        error = bundle.error();
    };
    trial.flaw = [&](const FileTree &tree, const Fault &fault) {
        if (tree.content("bundle.tar") != archive())
            return QStringLiteral("damaged");
        bool isAll = isLoaded;
        if (isLoaded && names.size() != members().size())
            return QStringLiteral("%1 members").arg(names.size());
        for (int i = 0; i < names.size(); ++i) {
            const tar::Member &member = members().at(i);
            if (names.at(i) != QString::fromLatin1(member.name))
                return QStringLiteral("another name");
            isAll = isAll && read.at(i).first;
            if (read.at(i).first && read.at(i).second != member.data)
                return QStringLiteral("other data");
        }
        if (!isAll && fault.number == 0)
            return QStringLiteral("fails without a fault");
        return isAll || !error.isEmpty() ? QString() : QStringLiteral("not told");
    };
    const FaultSweep sweep(trial);
    QVERIFY2(sweep.flaws().isEmpty(), qPrintable(sweep.report()));
    QCOMPARE(sweep.unused({Operation::Open, Operation::Read, Operation::LookUp, Operation::Close}),
             QStringList());
}

// A member is what was stored or fails. What no reader can tell: an archive that ends with a whole member is
// one, and one whose first block is gone before it is read is an empty one.
void tst_tar_faults::archiveThatShrinksMeanwhileGivesWholeMembers()
{
    QStringList flaws;
    Trial trial;
    trial.prepare = [](const FileTree &tree) { tree.file("bundle.tar", archive()); };
    trial.act = [&](const FileTree &tree) {
        flaws.clear();
        CTar bundle;
        const bool isLoaded = bundle.loadFile(tree.path("bundle.tar"));
        if (!isLoaded && bundle.error().isEmpty())
            flaws += QStringLiteral("not told");
        for (int i = 0; i < bundle.count(); ++i) {
            const tar::Member &member = members().at(i);
            QByteArray data;
            const bool isRead = bundle.file(i, data);
            if (bundle.names().at(i) != QString::fromLatin1(member.name))
                flaws += QStringLiteral("another name");
            if (isRead ? data != member.data : bundle.error().isEmpty())
                flaws += QStringLiteral("half of ") + bundle.names().at(i);
        }
        if (isLoaded && bundle.count() != members().size())
            flaws += QStringLiteral("%1 members").arg(bundle.count());
    };
    trial.flaw = [&](const FileTree &, const Fault &) { return flaws.join(QLatin1Char(' ')); };
    const FaultSweep sweep(trial, FaultSweep::Shrinkings);
    QVERIFY2(sweep.flaws().isEmpty(), qPrintable(sweep.report()));
    QVERIFY(sweep.size() > 0);
}

void tst_tar_faults::archiveShrinks_data()
{
    QTest::addColumn<int>("size");
    for (const int size : {0, 1, 511, 512, 600, 1536, 60000, archive().size() - 1500})
        QTest::newRow(QByteArray::number(size).constData()) << size;
}

// Behind its end there is nothing any more, before it all is as it was.
void tst_tar_faults::archiveShrinks()
{
    QFETCH(int, size);
    const FileTree tree;
    tree.file("bundle.tar", archive());
    CTar bundle;
    QVERIFY(bundle.loadFile(tree.path("bundle.tar")));
    QVERIFY(QFile::resize(tree.path("bundle.tar"), size));
    QCOMPARE(bundle.count(), 3);
    for (int i = 0; i < bundle.count(); ++i) {
        const CTarFileInfo info = bundle.info(i);
        const qint64 rest = qBound(qint64(0), size - info.offset - tar::blockSize, info.size);
        QByteArray data = "before";
        QCOMPARE(bundle.file(i, data), rest == info.size);
        QCOMPARE(data, members().at(i).data.left(int(rest)));
        if (rest != info.size) {
            QCOMPARE(bundle.error(), QStringLiteral("ERROR: %1 bytes read but %2 are expected !")
                                         .arg(QString::number(rest), QString::number(info.size)));
        }
    }
    qint64 position = size;
    bool end = false;
    QVERIFY(!bundle.readFileHeader(position, end));
}

void tst_tar_faults::archiveGrows()
{
    const FileTree tree;
    QByteArray whole = archive();
    tree.file("bundle.tar", whole);
    CTar bundle;
    QVERIFY(bundle.loadFile(tree.path("bundle.tar")));
    qint64 position = whole.size();
    tree.file("bundle.tar", whole + tar::archive({{"late.par", "late"}}));
    bool end = false;
    QVERIFY(bundle.readFileHeader(position, end));
    QCOMPARE(bundle.count(), 4);
    QByteArray data;
    QVERIFY(bundle.file(QStringLiteral("late.par"), data));
    QCOMPARE(data, QByteArray("late"));
}

// As every careful writer does it: the archive that is open stays what it is.
void tst_tar_faults::archiveIsReplaced()
{
    const FileTree tree;
    tree.file("bundle.tar", archive());
    CTar bundle;
    QVERIFY(bundle.loadFile(tree.path("bundle.tar")));
    QVERIFY(QFile::remove(tree.path("bundle.tar")));
    tree.file("bundle.tar", tar::archive({{"a.par", "another"}}));
    for (int i = 0; i < bundle.count(); ++i) {
        QByteArray data;
        QVERIFY(bundle.file(i, data));
        QCOMPARE(data, members().at(i).data);
    }
}

QTEST_GUILESS_MAIN(tst_tar_faults)
#include "tst_tar_faults.moc"
