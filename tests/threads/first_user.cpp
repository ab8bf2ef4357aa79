// SPDX-License-Identifier: MIT
// first_user CASE: several threads of a process that has used nothing of the library yet do what the case
// says, all at once. Prints what they came to, a line for each result that differs from the others.
#include <CBenchmarkTimer.h>
#include <CCompanyStrings.h>
#include <CDataTypeParser.h>
#include <CDateTime.h>
#include <CDeviceList.h>
#include <CDir.h>
#include <CFTPath.h>
#include <CHmac.h>
#include <CIPv6Address.h>
#include <CMath.h>
#include <CNewDelTrace.h>
#include <CPath.h>
#include <CPublicWait.h>
#include <CSettingsFile.h>
#include <CStr.h>
#include <CTar.h>
#include <CTemporaryDir.h>
#include <CTime.h>
#include <CUnitParser.h>
#include <CVariant.h>
#include <Nj6Translations.h>

#include <StreamForm.h>
#include <Threads.h>

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QThread>
#include <QTranslator>

#include <array>
#include <cstdio>

namespace {

using Answer = QString (*)(int thread);

QString joined(const QStringList &texts)
{
    return texts.join(QLatin1Char('|'));
}

QString number(qlonglong value)
{
    return QString::number(value);
}

QString types(int)
{
    return joined({CDataTypeParser::typeToStr(NTypes::E_U16), CDataTypeParser::typeToEnum(NTypes::E_U16),
                   number(CDataTypeParser::strToType(QStringLiteral("UNIT_U16"))),
                   number(CDataTypeParser::mDataSizeMap.value(NTypes::E_U16)),
                   CDataTypeParser::mTypeDataMap.value(NTypes::E_U16),
                   CDataTypeParser::mTypeEnumMap.value(NTypes::E_U16),
                   CDataTypeParser::maxTypeValue(NTypes::E_U16), CStr::nTypeToStr(NTypes::E_U16)});
}

QString units(int)
{
    return joined({CUnitParser::unitStr(Nj6Units::E_UNIT_TORQUE_NM),
                   CUnitParser::unitDescription(Nj6Units::E_UNIT_TORQUE_NM),
                   number(CUnitParser::mDigitsMap.value(Nj6Units::E_UNIT_TORQUE_NM)),
                   CUnitParser::initUnitMap().value(Nj6Units::E_UNIT_TORQUE_NM)});
}

QString durations(int)
{
    return joined({CTime::unitStr(CTime::unit(QStringLiteral("min"))),
                   number(CTime::mUnitHash.value(QStringLiteral("h"))),
                   CTime(3725, CTime::TU_S).toHourString()});
}

QString moments(int)
{
    return CDateTime(0x07E5030405060759, Qt::UTC).toTimeSpec(Qt::LocalTime).toString(Qt::ISODate);
}

template<typename String>
QString throughVariants(const char *text)
{
    const CVariant value(String(QString::fromLatin1(text)));
    return CVariant(value.operator QVariant()).toStr();
}

QString fixedStrings(int)
{
    return joined({throughVariants<CString32>("axis"), throughVariants<CString64>("gear"),
                   throughVariants<CString128>("drive")});
}

QString variants(int)
{
    const auto text = [](const char *written, NTypes::eTypes_t type) {
        return CVariant::fromStr(QString::fromLatin1(written), type).toStr();
    };
    return joined({text("0x5DC", NTypes::E_I32), text("-2.25", NTypes::E_F64),
                   text("192.168.1.10", NTypes::E_IPV4ADDR), text("axis", NTypes::E_STRING64)});
}

// What a stream gives back of a value that a QVariant holds: registered types only.
QVariant throughStream(const QVariant &value)
{
    QVariant read;
    readFrom(streamed(value), read);
    return read;
}

// What the registration of a type brings: its number by name, its stream form, its comparison.
template<typename T>
QString registered(const char *name, const T &value)
{
    const QVariant held = QVariant::fromValue(value);
    const QVariant read = throughStream(held);
    const bool isKnown = QMetaType::type(name) == qMetaTypeId<T>() && read.userType() == qMetaTypeId<T>();
    return number(isKnown && read == held ? 1 : 0);
}

QString metaTypes(int)
{
    return joined({registered<CString32>("CString32", CString32(QStringLiteral("axis"))),
                   registered<CString128>("CString128", CString128(QStringLiteral("axis"))),
                   registered<NTypes::sVersion_t>("NTypes::sVersion_t", {300, 5, 2}),
                   registered<NTypes::sDs402Record01_t>("NTypes::sDs402Record01_t", {2, 2.5F, 3})});
}

// A program registers these itself when it wants them in streams.
QString ownMetaTypes(int)
{
    qRegisterMetaTypeStreamOperators<CDeviceList>("CDeviceList");
    CDeviceList list(QStringLiteral("Plant"), CDeviceList::E_SOURCE_NONE);
    list.addDevice(4, CDeviceItem());
    const QVariant read = throughStream(QVariant::fromValue(list));
    return number(read.value<CDeviceList>() == list ? 1 : 0);
}

QString subDevices(int)
{
    CSubDeviceItem axis(1, QStringLiteral("Spindle"));
    axis.setAvailableParamSets(0x5);
    return joined(axis.availableParamSetNames().values());
}

QString numbers(int)
{
    return joined({CStr::fromF64(CStr::strToF64(QStringLiteral("1.25"), nullptr), 3),
                   number(CStr::strToI32(QStringLiteral("-42"), nullptr)),
                   number(qRound(CMath::round(2.5, 0))), number(CMath::crc32("123456789", 9))});
}

QString codes(int)
{
    return QString::fromLatin1(
        CHmac::hmacSha1(QByteArrayLiteral("what do ya want for nothing?"), QByteArrayLiteral("Jefe")));
}

QString addresses(int)
{
    return CIPv6Address(QStringLiteral("FE80:0:0:0:0:0:0:1")).str();
}

QString germanTexts(int)
{
    return joined({CStr::userlevelText(Nj6UserLevel::E_USER), CStr::userlevelText(Nj6UserLevel::E_ADMIN),
                   CStr::memSizeToString(10)});
}

QString titles(int)
{
    return joined({CStr::createShortApplicationTitle(QLocale::c(), QStringLiteral("tool"),
                                                     QStringLiteral("1.2"), QStringLiteral("Nov  5 2024"), 7),
                   CStr::getVersionString(QStringLiteral("1.2"), QStringLiteral("test"))});
}

QString companyStrings(int)
{
    return joined({CCompanyStrings::getCompanyShortName(), CCompanyStrings::getCompanyMediumName(),
                   CCompanyStrings::getProductName(NProductCodes::E_OSCILLOSCOPE),
                   CCompanyStrings::getProductName(999)});
}

// Below the installation and the home, without these.
QString paths(int)
{
    const QString root = CPath::installPath();
    QStringList found;
    for (const QString &path : {CPath::binPath(true), CPath::etcPath(true), CPath::constConfigPath(true)})
        found += path.mid(root.size());
    for (const QString &path : {CPath::logPath(true), CPath::motorPath(true)})
        found += number(QFileInfo(path).isDir() ? 1 : 0);
    return joined(found);
}

QString devicePaths(int)
{
    return joined({CFTPath::toString(CFTPath::E_OPT_COMPANY), CFTPath::toPath(CFTPath::E_CONSTCONFIG),
                   number(CFTPath::toEntryPoint(QStringLiteral("OPT/VANTORIS"))), CFTPath::PATH_FIRMWARE});
}

// The threads' own numbers stand in the names.
QString logFiles(int)
{
    const auto thread = reinterpret_cast<quintptr>(QThread::currentThreadId());
    const QString path = CStr::createLogFileName(QStringLiteral("tool"), true);
    const QString name = QStringLiteral("/tool_TID%1.log").arg(thread, 0, 16);
    return joined({number(path.endsWith(name) ? 1 : 0), number(QFileInfo(path).dir().exists() ? 1 : 0)});
}

QString archives(int)
{
    CTar archive;
    QByteArray data;
    const bool isRead = archive.loadFile(CPath::etcPath(false) + QStringLiteral("bundle.tar"))
                        && archive.file(QStringLiteral("second"), data);
    return joined({number(isRead ? 1 : 0), joined(archive.names()), number(data.size())});
}

// Each thread writes one key and finds it again; all are in the file in the end.
QString settings(int thread)
{
    const QString file = CPath::etcPath(false) + QStringLiteral("tool.ini");
    const QString key = QStringLiteral("thread") + number(thread);
    {
        CSettingsFile mine(file, QSettings::IniFormat, nullptr);
        mine.setIntegerValue(QStringLiteral("Common"), key, thread);
    }
    const CSettingsFile again(file, QSettings::IniFormat, nullptr);
    return number(again.integerValue(QStringLiteral("Common"), key, -1) == thread ? 1 : 0);
}

QString directories(int thread)
{
    const QString target = CPath::installPath() + QStringLiteral("copy") + number(thread);
    const bool isCopied = CDir::copyDirectoryRecursive(CPath::etcPath(false), target);
    const int listed = CDir::listFilesAndDirectories(target).size();
    return joined({number(isCopied ? 1 : 0), number(listed), number(CDir::removeDirectoryRecursive(target))});
}

QString temporaryDirectories(int)
{
    const CTemporaryDir mine;
    const bool isMade = QDir(mine.path()).mkdir(QStringLiteral("only once"));
    return joined({number(mine.isValid() ? 1 : 0), number(isMade ? 1 : 0)});
}

QString waits(int)
{
    CBenchmarkTimer timer;
    timer.start();
    CPublicWait::msleep(2);
    return joined({QLatin1String(timer.unit()), number(timer.elapsed() > 0.0 ? 1 : 0)});
}

QString trace(int thread)
{
    int block = 0;
    for (int i = 0; i < 50; ++i) {
        GlobalNewDelFile.logNew(&block, "axis.cpp", i, "load", thread);
        GlobalNewDelFile.logDel(&block, "axis.cpp", "unload", i);
    }
    return QStringLiteral("traced");
}

struct Case
{
    const char *name;
    Answer answer;
};

constexpr std::array<Case, 24> cases = {{
    {"types", types},
    {"units", units},
    {"durations", durations},
    {"moments", moments},
    {"fixed-strings", fixedStrings},
    {"variants", variants},
    {"meta-types", metaTypes},
    {"own-meta-types", ownMetaTypes},
    {"sub-devices", subDevices},
    {"numbers", numbers},
    {"codes", codes},
    {"addresses", addresses},
    {"german-texts", germanTexts},
    {"titles", titles},
    {"company-strings", companyStrings},
    {"paths", paths},
    {"device-paths", devicePaths},
    {"log-files", logFiles},
    {"archives", archives},
    {"settings", settings},
    {"directories", directories},
    {"temporary-directories", temporaryDirectories},
    {"waits", waits},
    {"trace", trace},
}};

QStringList answersOf(Answer answer)
{
    std::array<QString, threadCount> answers;
    inThreads([&](int thread) { answers[static_cast<std::size_t>(thread)] = answer(thread); });
    QStringList different(answers.begin(), answers.end());
    different.sort();
    different.removeDuplicates();
    return different;
}

bool print(const QStringList &lines)
{
    return std::printf("%s\n", lines.join(QLatin1Char('\n')).toUtf8().constData()) > 0;
}

} // namespace

int main(int argc, char *argv[])
{
    const QCoreApplication application(argc, argv);
    QTranslator coreTexts;
    if (argc == 3 && Nj6Translations::load(coreTexts, QLocale(QString::fromLatin1(argv[2]))))
        QCoreApplication::installTranslator(&coreTexts);
    for (const Case &known : cases) {
        if (argc > 1 && qstrcmp(argv[1], known.name) == 0)
            return print(answersOf(known.answer)) ? 0 : 1;
    }
    return 2;
}
