// SPDX-License-Identifier: MIT
// Tells what CCompanyStrings answers in a program that lies where it was copied to. The arguments are carried
// out in their order: the name of a getter prints its result, with "=CODE" behind it for a product's;
// "install=FILE" copies a file to where a setup document is looked for.
#include <CCompanyStrings.h>
#include <CPath.h>

#include <QCoreApplication>
#include <QDir>
#include <QFile>

#include <cstdio>
#include <thread>
#include <vector>

namespace {

struct CompanyGetter
{
    const char *name;
    QString (*text)();
};

struct ProductGetter
{
    const char *name;
    QString (*text)(int code);
};

constexpr CompanyGetter companyGetters[] = {
    {"getCompanyLongName", CCompanyStrings::getCompanyLongName},
    {"getCompanyMediumName", CCompanyStrings::getCompanyMediumName},
    {"getCompanyShortName", CCompanyStrings::getCompanyShortName},
    {"getAddressName", CCompanyStrings::getAddressName},
    {"getAddressStreet", CCompanyStrings::getAddressStreet},
    {"getAddressCity", CCompanyStrings::getAddressCity},
    {"getAddressHtml", CCompanyStrings::getAddressHtml},
    {"getWebUrl", CCompanyStrings::getWebUrl},
    {"getEMail", CCompanyStrings::getEMail},
    {"getUpdateVersionFile", CCompanyStrings::getUpdateVersionFile},
    {"getUpdatePath", CCompanyStrings::getUpdatePath},
    {"getUpdateChangelogFile", CCompanyStrings::getUpdateChangelogFile},
    {"getOpenSourceUrl", CCompanyStrings::getOpenSourceUrl},
    {"getLogoAndNameBitmapFile_145x52", CCompanyStrings::getLogoAndNameBitmapFile_145x52},
    {"getLogoAndNameBitmapFile_105x30", CCompanyStrings::getLogoAndNameBitmapFile_105x30},
    {"getLogoAndNameBitmapFile_105x30_inverted", CCompanyStrings::getLogoAndNameBitmapFile_105x30_inverted},
    {"getLogoBitmapFile_32x32", CCompanyStrings::getLogoBitmapFile_32x32},
    {"getLogoBitmapFile_16x16", CCompanyStrings::getLogoBitmapFile_16x16},
};

// The overload that takes the enumeration.
QString nameOfProductCode(int code)
{
    return CCompanyStrings::getProductName(static_cast<NProductCodes::EProductCode>(code));
}

constexpr ProductGetter productGetters[] = {
    {"getProductName", CCompanyStrings::getProductName},
    {"getProductName(enum)", nameOfProductCode},
    {"getProductExeFile", CCompanyStrings::getProductExeFile},
    {"getProductEMailAddress", CCompanyStrings::getProductEMailAddress},
    {"getProductUpdateVersionFile", CCompanyStrings::getProductUpdateVersionFile},
    {"getProductUpdatePath", CCompanyStrings::getProductUpdatePath},
    {"getProductUpdateChangelogFile", CCompanyStrings::getProductUpdateChangelogFile},
    {"getProductPictureFile", CCompanyStrings::getProductPictureFile},
    {"getProductSplashScreenBitmapFile", CCompanyStrings::getProductSplashScreenBitmapFile},
    {"productSection", CCompanyStrings::productSection},
};

bool print(const QString &line)
{
    return std::printf("%s\n", line.toUtf8().constData()) > 0;
}

bool install(const QString &file)
{
    const QString directory = CPath::constConfigPath(true);
    return QFile::copy(file, directory + QStringLiteral("Setup.Ini"));
}

// Several threads ask at once; they get the same answer.
bool askInThreads()
{
    std::vector<QString> answers(8);
    std::vector<std::thread> threads;
    for (QString &answer : answers)
        threads.emplace_back([&answer] { answer = CCompanyStrings::getCompanyShortName(); });
    for (std::thread &thread : threads)
        thread.join();
    for (const QString &answer : answers)
        print(answer);
    return true;
}

bool carryOut(const QString &argument)
{
    const QString name = argument.section(QLatin1Char('='), 0, 0);
    const QString value = argument.section(QLatin1Char('='), 1);
    if (name == QLatin1String("install"))
        return install(value);
    if (name == QLatin1String("getImageFile"))
        return print(CCompanyStrings::getImageFile(value));
    if (name == QLatin1String("threads"))
        return askInThreads();
    for (const CompanyGetter &getter : companyGetters) {
        if (name == QLatin1String(getter.name))
            return print(getter.text());
    }
    for (const ProductGetter &getter : productGetters) {
        if (name == QLatin1String(getter.name))
            return print(getter.text(value.toInt()));
    }
    return false;
}

} // namespace

int main(int argc, char *argv[])
{
    const QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments().mid(1);
    for (const QString &argument : arguments) {
        if (!carryOut(argument))
            return 1;
    }
    return 0;
}
