// SPDX-License-Identifier: MIT
// What the fuzzers do, without a fuzzer: the inputs that they start from, all that they ever found, and the
// damage that a fixed sequence of random changes does to these.
#include <Traversals.h>

#include <InputReader.h>
#include <LoggedTest.h>
#include <Properties.h>
#include <ScopedTimeZone.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTest>

#include <algorithm>
#include <random>

Q_DECLARE_METATYPE(Traverse)

namespace {

QDir inputs(const char *kind, const char *topic)
{
    return QDir(QStringLiteral(J6CORE_FUZZ_DIR "/%1/%2").arg(QLatin1String(kind), QLatin1String(topic)));
}

QByteArray contents(const QString &fileName)
{
    QFile file(fileName);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

// The seeds and the reproducers of a topic.
QStringList inputFiles(const char *topic)
{
    QStringList fileNames;
    for (const char *kind : {"seeds", "reproducers"}) {
        const QFileInfoList files = inputs(kind, topic).entryInfoList(QDir::Files);
        for (const QFileInfo &file : files)
            fileNames.append(file.filePath());
    }
    return fileNames;
}

bool isTopic(const QString &name)
{
    return std::any_of(traversals.begin(), traversals.end(), [&name](const Traversal &traversal) {
        return name == QLatin1String(traversal.topic);
    });
}

// What the input violates; empty if all holds. What is said of the input is not what is looked at here.
QString violation(Traverse traverse, const QByteArray &input)
{
    QString message;
    try {
        traverse(input);
    } catch (const PropertyViolated &violated) {
        message = QString::fromUtf8(violated.what());
    }
    LoggedTest::takeLog();
    return message;
}

// One of the changes that damage does: a bit, a byte, a number of four bytes, a cut, a repetition.
QByteArray damaged(QByteArray input, std::mt19937 &random)
{
    const auto position = [&random, &input] {
        return static_cast<int>(random() % static_cast<unsigned int>(std::max(1, input.size())));
    };
    if (input.isEmpty())
        return QByteArray(1, static_cast<char>(random()));
    switch (random() % 5) {
    case 0:
        input[position()] = static_cast<char>(input.at(position()) ^ (1 << random() % 8));
        return input;
    case 1:
        input[position()] = static_cast<char>(random());
        return input;
    case 2:
        return input.replace(position(), 4, random() % 2 == 0 ? QByteArray(4, '\xff') : QByteArray(4, '\0'));
    case 3:
        return input.left(position());
    default: {
        const int from = position();
        return input.insert(position(), input.mid(from, position() % 64));
    }
    }
}

// Whether a row is of a topic that knows the paths and file names of Unix alone.
bool isOfOtherPaths(const QByteArray &row)
{
#ifdef Q_OS_WIN
    return row.startsWith("directory_paths") || row.startsWith("directory_trees");
#else
    Q_UNUSED(row)
    return false;
#endif
}

} // namespace

class tst_fuzz_inputs : public LoggedTest
{
    Q_OBJECT

private Q_SLOTS:
    void everyTopicHasSeeds();
    void everyTopicHasAFuzzer();
    void everyDirectoryIsOfATopic_data();
    void everyDirectoryIsOfATopic();
    void everyDictionaryIsOfATopic();
    void holds_data();
    void holds();
    void holdsWhenDamaged_data();
    void holdsWhenDamaged();
    void aViolatedPropertyIsReported();
    void anUnboundedCallIsReported();
    void anInputIsTakenApartUpToItsEnd();
    void textIsTakenInBothForms();

private:
    const ScopedTimeZone mZone{localZone};
};

void tst_fuzz_inputs::everyTopicHasSeeds()
{
    for (const Traversal &traversal : traversals)
        QVERIFY2(!inputs("seeds", traversal.topic).entryList(QDir::Files).isEmpty(), traversal.topic);
}

// scripts/fuzz runs what is built: a topic without its line would never be fuzzed.
void tst_fuzz_inputs::everyTopicHasAFuzzer()
{
    const QByteArray lists = contents(QStringLiteral(J6CORE_FUZZ_DIR "/CMakeLists.txt"));
    for (const Traversal &traversal : traversals)
        QVERIFY2(lists.contains(QByteArray("j6_fuzzer(") + traversal.topic + ')'), traversal.topic);
}

void tst_fuzz_inputs::everyDirectoryIsOfATopic_data()
{
    QTest::addColumn<QString>("kind");
    QTest::newRow("seeds") << QStringLiteral("seeds");
    QTest::newRow("reproducers") << QStringLiteral("reproducers");
}

void tst_fuzz_inputs::everyDirectoryIsOfATopic()
{
    QFETCH(QString, kind);
    const QStringList names =
        inputs(qPrintable(kind), "").entryList(QDir::Dirs | QDir::NoDotAndDotDot, QDir::Name);
    for (const QString &name : names)
        QVERIFY2(isTopic(name), qPrintable(name));
}

void tst_fuzz_inputs::everyDictionaryIsOfATopic()
{
    const QFileInfoList files = inputs("dictionaries", "").entryInfoList(QDir::Files);
    QVERIFY(!files.isEmpty());
    for (const QFileInfo &file : files) {
        QCOMPARE(file.suffix(), QStringLiteral("dict"));
        QVERIFY2(isTopic(file.completeBaseName()), qPrintable(file.fileName()));
    }
}

void tst_fuzz_inputs::holds_data()
{
    QTest::addColumn<Traverse>("traverse");
    QTest::addColumn<QString>("fileName");
    for (const Traversal &traversal : traversals) {
        const QStringList fileNames = inputFiles(traversal.topic);
        for (const QString &fileName : fileNames)
            QTest::addRow("%s: %s", traversal.topic, qPrintable(QFileInfo(fileName).fileName()))
                << traversal.traverse << fileName;
        QTest::addRow("%s: nothing", traversal.topic) << traversal.traverse << QString();
    }
}

void tst_fuzz_inputs::holds()
{
    if (isOfOtherPaths(QTest::currentDataTag()))
        QSKIP("the properties are those of paths without drives");
    QFETCH(Traverse, traverse);
    QFETCH(QString, fileName);
    QCOMPARE(violation(traverse, contents(fileName)), QString());
}

void tst_fuzz_inputs::holdsWhenDamaged_data()
{
    QTest::addColumn<Traverse>("traverse");
    QTest::addColumn<QStringList>("fileNames");
    for (const Traversal &traversal : traversals)
        QTest::newRow(traversal.topic) << traversal.traverse << inputFiles(traversal.topic);
}

void tst_fuzz_inputs::holdsWhenDamaged()
{
    if (isOfOtherPaths(QTest::currentDataTag()))
        QSKIP("the properties are those of paths without drives");
    QFETCH(Traverse, traverse);
    QFETCH(QStringList, fileNames);
    constexpr int changesInARow = 40;
    std::mt19937 random(0x6a36);
    for (const QString &fileName : qAsConst(fileNames)) {
        QByteArray input = contents(fileName);
        for (int change = 0; change < changesInARow; ++change) {
            input = damaged(input, random);
            const QString violated = violation(traverse, input);
            QVERIFY2(violated.isEmpty(),
                     qPrintable(violated + QStringLiteral(": ") + QString::fromLatin1(input.toHex())));
        }
    }
}

void tst_fuzz_inputs::aViolatedPropertyIsReported()
{
    require(true, "what holds goes on");
    QVERIFY_EXCEPTION_THROWN(require(false, "what does not hold is thrown"), PropertyViolated);
    try {
        require(false, "a text is equal", QStringLiteral("x"));
        QFAIL("nothing was thrown");
    } catch (const PropertyViolated &violation) {
        QCOMPARE(violation.what(), "a text is equal: x");
    }
}

void tst_fuzz_inputs::anUnboundedCallIsReported()
{
    QCOMPARE(bounded(0, "nothing is allocated", [] { return 7; }), 7);
    if (!AllocationCounter::isAvailable())
        QSKIP("Another allocator is in place (valgrind's, or not glibc's): no bound of memory is checked.");
    const auto allocate = [] { return QByteArray(1000, 'x'); };
    QCOMPARE(bounded(1100, "a block of 1000 bytes and its head", allocate).size(), 1000);
    QVERIFY_EXCEPTION_THROWN(bounded(999, "less than the block", allocate), PropertyViolated);
}

void tst_fuzz_inputs::anInputIsTakenApartUpToItsEnd()
{
    InputReader reader(QByteArray("\x05\x02\x41\x42\x03\x43", 6));
    QCOMPARE(reader.takeChoice(3), 2);
    QCOMPARE(reader.takeBlock(), QByteArray("AB"));
    QCOMPARE(reader.takeBlock(), QByteArray("C"));
    QVERIFY(reader.atEnd());
    QCOMPARE(reader.take<quint32>(), 0U);
    QCOMPARE(reader.takeBytes(3), QByteArray());
    QCOMPARE(InputReader(QByteArray("\x01", 1)).take<quint8>(), quint8(1));
    QCOMPARE(InputReader(QByteArray("ab")).takeRest(), QByteArray("ab"));
}

void tst_fuzz_inputs::textIsTakenInBothForms()
{
    QCOMPARE(InputReader(QByteArray("24 \xc2\xb0")).takeText(), QStringLiteral("24 °"));
    const ushort unpaired[] = {0x0031, 0xd800};
    const QByteArray units(reinterpret_cast<const char *>(unpaired), sizeof unpaired);
    QCOMPARE(InputReader('\xff' + units).takeText(), QString::fromUtf16(unpaired, 2));
    QCOMPARE(InputReader(QByteArray()).takeText(), QString());
}

QTEST_APPLESS_MAIN(tst_fuzz_inputs)
#include "tst_fuzz_inputs.moc"
