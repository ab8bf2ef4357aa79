// SPDX-License-Identifier: MIT
#include <ParameterListFile.h>

#include <LoggedTest.h>

#include <QFile>
#include <QTemporaryDir>
#include <QTest>

#include <cerrno>

using j6tool::Error;
using j6tool::ObjectIndex;
using j6tool::Parameter;
using j6tool::ParameterList;
using j6tool::ParameterListFile;
using j6tool::Result;

namespace {

const QByteArray header = QByteArrayLiteral("index,name,type,unit,bytes\n");
const QString fileName = QStringLiteral("axis.csv");

QByteArray contentsOf(const QString &name)
{
    QFile file(name);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("(cannot be read)");
}

std::optional<Error> nothingElse()
{
    return std::nullopt;
}

} // namespace

class tst_parameter_list_file : public LoggedTest
{
    Q_OBJECT

private Q_SLOTS:
    void readsParameters();
    void findsParameters();
    void tellsApartWholeObjectsAndSubIndices();
    void refusesBadLists_data();
    void refusesBadLists();
    void refusesMoreParametersThanTheLimit();
    void refusesFilesItCannotRead();
    void refusesAFileAboveTheLimit();
    void readsIndicesInEitherCase_data();
    void readsIndicesInEitherCase();
    void changesNothingButTheBytesThatWereSet_data();
    void changesNothingButTheBytesThatWereSet();
    void replacesAFileInOneStep();
    void keepsTheFileWhenTheLastStepIsRefused();
    void refusesTargetsThatAreNoFiles();
    void writesThroughASymbolicLink();
};

void tst_parameter_list_file::readsParameters()
{
    const QByteArray contents =
        "\xEF\xBB\xBF" + header
        + "0x6081,Profile velocity,UNIT_U32,43,00009001\r\n"
          "0x2003:0a,\"Gain, \"\"fast\"\" \xC3\xA4\",UNIT_F32,2147483647,\"0000C03f\"\n"
          "0x2009,=1,UNIT_BYTEARRAY,007,ff";
    const Result<ParameterListFile> file = ParameterListFile::parse(contents, fileName);
    QVERIFY2(file, file ? "" : qPrintable(file.error().text));
    QCOMPARE(file->list().count(), 3);
    const Parameter &velocity = file->list().at(0);
    QCOMPARE(velocity.index.text(), QStringLiteral("0x6081"));
    QCOMPARE(velocity.name, QStringLiteral("Profile velocity"));
    QCOMPARE(velocity.type, NTypes::E_U32);
    QCOMPARE(velocity.unit, Nj6Units::E_UNIT_SPEED_INC_PER_S);
    QCOMPARE(velocity.bytes, QByteArray::fromHex("00009001"));
    QCOMPARE(velocity.line, 2);
    const Parameter &gain = file->list().at(1);
    QCOMPARE(gain.index.text(), QStringLiteral("0x2003:0A"));
    QCOMPARE(gain.name, QStringLiteral("Gain, \"fast\" \u00E4"));
    QCOMPARE(qint32(gain.unit), 2147483647);
    QCOMPARE(gain.bytes, QByteArray::fromHex("0000c03f"));
    QCOMPARE(gain.line, 3);
    QCOMPARE(qint32(file->list().at(2).unit), 7);
}

void tst_parameter_list_file::findsParameters()
{
    const Result<ParameterListFile> file = ParameterListFile::parse(
        header + "0x1000,a,UNIT_U8,0,00\n0x1000:01,b,UNIT_U8,0,00\n0x1001,a,UNIT_U8,0,00\n", fileName);
    QVERIFY(file);
    const ParameterList &list = file->list();
    QCOMPARE(list.find(*ObjectIndex::fromText(QStringLiteral("0x1000:01"))), 1);
    QCOMPARE(list.find(*ObjectIndex::fromText(QStringLiteral("0x1001"))), 2);
    QCOMPARE(list.find(*ObjectIndex::fromText(QStringLiteral("0x1001:01"))), -1);
    QCOMPARE(list.named(QStringLiteral("a")), (std::vector<int>{0, 2}));
    QCOMPARE(list.named(QStringLiteral("A")), std::vector<int>());
}

void tst_parameter_list_file::tellsApartWholeObjectsAndSubIndices()
{
    const Result<ParameterListFile> file = ParameterListFile::parse(
        header + "0x1000,a,UNIT_U8,0,00\n0x1000:00,b,UNIT_U8,0,00\n0x1001:00,c,UNIT_U8,0,00\n", fileName);
    QVERIFY(file);
    QCOMPARE(file->list().count(), 3);
}

void tst_parameter_list_file::refusesBadLists_data()
{
    QTest::addColumn<QByteArray>("contents");
    QTest::addColumn<QString>("error");

    const auto row = [](const char *name, const QByteArray &rows, const char *error) {
        QTest::newRow(name) << header + rows << QString::fromUtf8(error);
    };
    QTest::newRow("empty file") << QByteArray()
                                << "axis.csv:1: header: '' where 'index,name,type,unit,bytes' is expected";
    QTest::newRow("no header") << QByteArray("0x6081,a,UNIT_U8,0,00\n")
                               << "axis.csv:1: header: '0x6081,a,UNIT_U8,0,00' where "
                                  "'index,name,type,unit,bytes' is expected";
    QTest::newRow("semicolons") << QByteArray("index;name;type;unit;bytes\n")
                                << "axis.csv:1: header: 'index;name;type;unit;bytes' where "
                                   "'index,name,type,unit,bytes' is expected";
    QTest::newRow("header in upper case") << QByteArray("INDEX,name,type,unit,bytes\n")
                                          << "axis.csv:1: header: 'INDEX,name,type,unit,bytes' where "
                                             "'index,name,type,unit,bytes' is expected";
    QTest::newRow("header with quoted commas") << QByteArray("\"index,name\",type,unit,bytes\n")
                                               << "axis.csv:1: header: 'index,name,type,unit,bytes' where "
                                                  "'index,name,type,unit,bytes' is expected";
    QTest::newRow("header with another column")
        << QByteArray("index,name,type,unit,bytes,comment\n") << "axis.csv:1: bytes: more than 5 fields";
    QTest::newRow("UTF-16") << QByteArray("\xFF\xFEi\0n\0", 6)
                            << "axis.csv:1: index: contains a NUL character";
    row("empty line", "\n", "axis.csv:2: record: 1 of 5 fields");
    row("too few fields", "0x6081,a,UNIT_U8,0\n", "axis.csv:2: record: 4 of 5 fields");
    row("too many fields", "0x6081,a,UNIT_U8,0,00,\n", "axis.csv:2: bytes: more than 5 fields");
    row("open quote", "0x6081,\"a,UNIT_U8,0,00\n", "axis.csv:2: name: the opening quote is never closed");
    row("index without 0x", "6081,a,UNIT_U8,0,00\n",
        "axis.csv:2: index: '6081' is no index of the form 0x6081 or 0x6081:01");
    row("empty index", ",a,UNIT_U8,0,00\n",
        "axis.csv:2: index: '' is no index of the form 0x6081 or 0x6081:01");
    row("duplicate index", "0x60ff,a,UNIT_U8,0,00\n0x6082,b,UNIT_U8,0,00\n0X60FF,c,UNIT_U8,0,00\n",
        "axis.csv:4: index: '0X60FF' is on line 2 already");
    row("duplicate sub-index", "0x60FF:0A,a,UNIT_U8,0,00\n0x60FF:0a,b,UNIT_U8,0,00\n",
        "axis.csv:3: index: '0x60FF:0a' is on line 2 already");
    row("empty name", "0x6081,,UNIT_U8,0,00\n", "axis.csv:2: name: is empty");
    row("name is not UTF-8", "0x6081,M\xFCller,UNIT_U8,0,00\n",
        "axis.csv:2: name: 'M\uFFFDller' is not UTF-8");
    row("name ends inside a character", "0x6081,M\xC3,UNIT_U8,0,00\n",
        "axis.csv:2: name: 'M\uFFFD' is not UTF-8");
    row("surrogate in UTF-8", "0x6081,\xED\xA0\x80,UNIT_U8,0,00\n",
        "axis.csv:2: name: '\uFFFD\uFFFD\uFFFD' is not UTF-8");
    row("overlong UTF-8", "0x6081,\xC0\xAF,UNIT_U8,0,00\n", "axis.csv:2: name: '\uFFFD\uFFFD' is not UTF-8");
    row("bytes are not UTF-8", "0x6081,a,UNIT_U8,0,\x80\n", "axis.csv:2: bytes: '\uFFFD' is not UTF-8");
    row("unknown type", "0x6081,a,UNIT_U128,0,00\n", "axis.csv:2: type: 'UNIT_U128' is no type with a value");
    row("enumerator name", "0x6081,a,E_U8,0,00\n", "axis.csv:2: type: 'E_U8' is no type with a value");
    row("the type without a value", "0x6081,a,UNKNOWN,0,00\n",
        "axis.csv:2: type: 'UNKNOWN' is no type with a value");
    row("unit text", "0x6081,a,UNIT_U8,rpm,00\n", "axis.csv:2: unit: 'rpm' is no unit code");
    row("empty unit", "0x6081,a,UNIT_U8,,00\n", "axis.csv:2: unit: '' is no unit code");
    row("negative unit", "0x6081,a,UNIT_U8,-1,00\n", "axis.csv:2: unit: '-1' is no unit code");
    row("unit with a sign", "0x6081,a,UNIT_U8,+1,00\n", "axis.csv:2: unit: '+1' is no unit code");
    row("unit with a blank", "0x6081,a,UNIT_U8, 1,00\n", "axis.csv:2: unit: ' 1' is no unit code");
    row("unit above 32 bits", "0x6081,a,UNIT_U8,2147483648,00\n",
        "axis.csv:2: unit: '2147483648' is no unit code");
    row("odd number of digits", "0x6081,a,UNIT_U8,0,123\n",
        "axis.csv:2: bytes: '123' has an odd number of hexadecimal digits");
    row("no hexadecimal digit", "0x6081,a,UNIT_U16,0,12G4\n", "axis.csv:2: bytes: '12G4' is not hexadecimal");
    row("prefix", "0x6081,a,UNIT_U16,0,0x12\n", "axis.csv:2: bytes: '0x12' is not hexadecimal");
    row("blank", "0x6081,a,UNIT_U16,0,12 34\n", "axis.csv:2: bytes: '12 34' is not hexadecimal");
    row("fullwidth digit", "0x6081,a,UNIT_U8,0,\xEF\xBC\x91\xEF\xBC\x91\n",
        "axis.csv:2: bytes: '\uFF11\uFF11' is not hexadecimal");
    row("too few bytes", "0x6081,a,UNIT_U32,0,123456\n",
        "axis.csv:2: bytes: '123456' has 3 bytes where UNIT_U32 has 4");
    row("too many bytes", "0x6081,a,UNIT_U8,0,1234\n",
        "axis.csv:2: bytes: '1234' has 2 bytes where UNIT_U8 has 1");
    row("no bytes", "0x6081,a,UNIT_U8,0,\n", "axis.csv:2: bytes: '' has 0 bytes where UNIT_U8 has 1");
    row("short string field", "0x6081,a,UNIT_CHARSTR64,0,4142\n",
        "axis.csv:2: bytes: '4142' has 2 bytes where UNIT_CHARSTR64 has 64");
    row("empty byte array", "0x6081,a,UNIT_BYTEARRAY,0,\n",
        "axis.csv:2: bytes: '' has 0 bytes where UNIT_BYTEARRAY has 1 or more");
    row("two pairs of floats", "0x6081,a,UNIT_2D_F32_F32,0,00000000000000000000000000000000\n",
        "axis.csv:2: bytes: '00000000000000000000000000000000' has 16 bytes where UNIT_2D_F32_F32 has 8");
    row("line numbers count quoted line feeds", "0x6081,\"a\nb\",UNIT_U8,0,00\n0x6082,c,UNIT_U8,0,0\n",
        "axis.csv:4: bytes: '0' has an odd number of hexadecimal digits");
    row("control characters are made visible", "0x6081,a,\"UNIT\x1B[31m\n\",0,00\n",
        "axis.csv:2: type: 'UNIT\\x1b[31m\\n' is no type with a value");
    row("long texts are cut",
        "0x6081,a,abcdefghijklmnopqrstuvwxyzabcdefghijklmnopqrstuvwxyzabcdefghijklmnopqrstuvwxyz,0,00\n",
        "axis.csv:2: type: 'abcdefghijklmnopqrstuvwxyzabcdefghijklmnopqrstuvwxyzabcdefg\u2026' is no type "
        "with a value");
}

void tst_parameter_list_file::refusesBadLists()
{
    QFETCH(QByteArray, contents);
    const Result<ParameterListFile> file = ParameterListFile::parse(contents, fileName);
    QVERIFY(!file);
    QTEST(file.error().text, "error");
}

void tst_parameter_list_file::refusesMoreParametersThanTheLimit()
{
    QByteArray contents = header;
    contents.reserve(32 * ParameterList::maxCount);
    for (int i = 0; i <= ParameterList::maxCount; ++i) {
        const QByteArray digits = QByteArray::number(i, 16).rightJustified(6, '0');
        contents += "0x" + digits.left(4) + ':' + digits.right(2) + ",p,UNIT_U8,0,00\n";
    }
    const Result<ParameterListFile> file = ParameterListFile::parse(contents, fileName);
    QVERIFY(!file);
    QCOMPARE(file.error().text, QStringLiteral("axis.csv:250002: index: more than 250000 parameters"));
}

void tst_parameter_list_file::refusesFilesItCannotRead()
{
    QTemporaryDir dir;
    const auto errorOf = [](const QString &name) {
        const Result<ParameterListFile> file = ParameterListFile::read(name);
        return file ? QStringLiteral("none") : file.error().text;
    };
    QCOMPARE(errorOf(dir.path()), dir.path() + QStringLiteral(": is a directory"));
    const QString missing = dir.filePath(QStringLiteral("%1%2\n"));
    QCOMPARE(errorOf(missing), dir.filePath(QStringLiteral("%1%2\\n: no such file")));
#ifdef Q_OS_LINUX
    const QString unreadable = QStringLiteral("/proc/self/mem");
    QCOMPARE(errorOf(unreadable), QStringLiteral("/proc/self/mem: cannot be read: ") + qt_error_string(EIO));
#endif
}

void tst_parameter_list_file::refusesAFileAboveTheLimit()
{
    QTemporaryDir dir;
    QFile file(dir.filePath(fileName));
    QVERIFY(file.open(QIODevice::WriteOnly));
    QVERIFY(file.resize(ParameterListFile::maxFileSize + 1));
    const Result<ParameterListFile> list = ParameterListFile::read(file.fileName());
    QVERIFY(!list);
    QCOMPARE(list.error().text, file.fileName() + QStringLiteral(": is larger than 67108864 bytes"));
}

void tst_parameter_list_file::readsIndicesInEitherCase_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("index"); // empty: none

    QTest::newRow("index") << "0x6081"
                           << "0x6081";
    QTest::newRow("lower case") << "0x60ff"
                                << "0x60FF";
    QTest::newRow("upper case") << "0X60FF"
                                << "0x60FF";
    QTest::newRow("first") << "0x0000"
                           << "0x0000";
    QTest::newRow("last") << "0xFFFF:fF"
                          << "0xFFFF:FF";
    QTest::newRow("sub-index 0") << "0x6081:00"
                                 << "0x6081:00";
    QTest::newRow("empty") << ""
                           << "";
    QTest::newRow("no prefix") << "6081"
                               << "";
    QTest::newRow("hexadecimal with h") << "6081h"
                                        << "";
    QTest::newRow("short") << "0x608"
                           << "";
    QTest::newRow("long") << "0x60810"
                          << "";
    QTest::newRow("no sub-index") << "0x6081:"
                                  << "";
    QTest::newRow("short sub-index") << "0x6081:1"
                                     << "";
    QTest::newRow("long sub-index") << "0x6081:001"
                                    << "";
    QTest::newRow("other separator") << "0x6081.01"
                                     << "";
    QTest::newRow("no digit") << "0x60g1"
                              << "";
    QTest::newRow("no digit in the sub-index") << "0x6081:0x"
                                               << "";
    QTest::newRow("sign") << "0x+081"
                          << "";
    QTest::newRow("blank") << " 0x6081"
                           << "";
    QTest::newRow("fullwidth digit") << QStringLiteral("0x608\uFF11") << "";
}

void tst_parameter_list_file::readsIndicesInEitherCase()
{
    QFETCH(QString, text);
    const std::optional<ObjectIndex> index = ObjectIndex::fromText(text);
    QTEST(index ? index->text() : QString(), "index");
}

void tst_parameter_list_file::changesNothingButTheBytesThatWereSet_data()
{
    QTest::addColumn<QByteArray>("before");
    QTest::addColumn<QByteArray>("after");

    QTest::newRow("line feeds") << QByteArray("0x1000,a,UNIT_U16,0,0100\n0x1001,b,UNIT_U16,0,0aFF\n")
                                << QByteArray("0x1000,a,UNIT_U16,0,e803\n0x1001,b,UNIT_U16,0,0aFF\n");
    QTest::newRow("carriage returns, no end")
        << QByteArray("0x1000,a,UNIT_U16,0,0100\r\n0x1001,b,UNIT_U16,0,0aFF")
        << QByteArray("0x1000,a,UNIT_U16,0,e803\r\n0x1001,b,UNIT_U16,0,0aFF");
    QTest::newRow("quotes") << QByteArray("\"0x1000\",\"a, \"\"b\"\"\",\"UNIT_U16\",\"0\",\"0100\"\n")
                            << QByteArray("\"0x1000\",\"a, \"\"b\"\"\",\"UNIT_U16\",\"0\",e803\n");
    QTest::newRow("case and zeros") << QByteArray("0X10fF,a,UNIT_U16,0010,0aFf\n")
                                    << QByteArray("0X10fF,a,UNIT_U16,0010,e803\n");
}

void tst_parameter_list_file::changesNothingButTheBytesThatWereSet()
{
    QFETCH(QByteArray, before);
    QFETCH(QByteArray, after);
    for (const QByteArray &start : {QByteArray(header), QByteArray("\xEF\xBB\xBF" + header)}) {
        Result<ParameterListFile> file = ParameterListFile::parse(start + before, fileName);
        QVERIFY2(file, file ? "" : qPrintable(file.error().text));
        QCOMPARE(file->contents(), start + before);
        file->setBytes(0, QByteArray::fromHex("0000"));
        file->setBytes(0, QByteArray::fromHex("e803"));
        QCOMPARE(file->contents(), start + after);
        QCOMPARE(file->list().at(0).bytes, QByteArray::fromHex("e803"));
    }
}

void tst_parameter_list_file::replacesAFileInOneStep()
{
    QTemporaryDir dir;
    const QString name = dir.filePath(fileName);
    Result<ParameterListFile> file = ParameterListFile::parse(header + "0x1000,a,UNIT_U8,0,00\n", fileName);
    QVERIFY(file);
    QVERIFY(!file->write(name, nothingElse));
    file->setBytes(0, QByteArray::fromHex("01"));
    const auto oldContentsAreThere = [&name]() -> std::optional<Error> {
        if (contentsOf(name) == header + "0x1000,a,UNIT_U8,0,00\n")
            return std::nullopt;
        return Error{QStringLiteral("changed too early")};
    };
    const std::optional<Error> error = file->write(name, oldContentsAreThere);
    QVERIFY2(!error, error ? qPrintable(error->text) : "");
    QCOMPARE(contentsOf(name), QByteArray(header + "0x1000,a,UNIT_U8,0,01\n"));
    QCOMPARE(QDir(dir.path()).entryList(QDir::Files), QStringList{fileName});
}

void tst_parameter_list_file::keepsTheFileWhenTheLastStepIsRefused()
{
    QTemporaryDir dir;
    const QString name = dir.filePath(fileName);
    Result<ParameterListFile> file = ParameterListFile::parse(header + "0x1000,a,UNIT_U8,0,00\n", fileName);
    QVERIFY(file);
    QVERIFY(!file->write(name, nothingElse));
    file->setBytes(0, QByteArray::fromHex("01"));
    const std::optional<Error> error = file->write(name, [] { return Error{QStringLiteral("not now")}; });
    QVERIFY(error);
    QCOMPARE(error->text, QStringLiteral("not now"));
    QCOMPARE(contentsOf(name), QByteArray(header + "0x1000,a,UNIT_U8,0,00\n"));
    QCOMPARE(QDir(dir.path()).entryList(QDir::Files), QStringList{fileName});
}

void tst_parameter_list_file::refusesTargetsThatAreNoFiles()
{
    QTemporaryDir dir;
    const Result<ParameterListFile> file = ParameterListFile::parse(header, fileName);
    QVERIFY(file);
    const auto errorOf = [&file](const QString &name) {
        const std::optional<Error> error = file->write(name, nothingElse);
        return error ? error->text : QStringLiteral("none");
    };
    QCOMPARE(errorOf(dir.path()), dir.path() + QStringLiteral(": is a directory"));
    const QString inMissing = dir.filePath(QStringLiteral("missing/axis.csv"));
    QVERIFY2(errorOf(inMissing).startsWith(inMissing + QStringLiteral(": cannot be written: ")),
             qPrintable(errorOf(inMissing)));
#ifdef Q_OS_UNIX
    QCOMPARE(errorOf(QStringLiteral("/dev/null")), QStringLiteral("/dev/null: is no regular file"));
#endif
}

void tst_parameter_list_file::writesThroughASymbolicLink()
{
#ifdef Q_OS_WIN
    QSKIP("links are shortcut files here");
#endif
    QTemporaryDir dir;
    const QString link = dir.filePath(QStringLiteral("link.csv"));
    const QString name = dir.filePath(fileName);
    const Result<ParameterListFile> file = ParameterListFile::parse(header, fileName);
    QVERIFY(file);
    QVERIFY(!file->write(name, nothingElse));
    QVERIFY(QFile::link(name, link));
    QVERIFY(QFile::resize(name, 0));
    QVERIFY(!file->write(link, nothingElse));
    QVERIFY(QFileInfo(link).isSymLink());
    QCOMPARE(contentsOf(name), header);
}

QTEST_GUILESS_MAIN(tst_parameter_list_file)
#include "tst_parameter_list_file.moc"
