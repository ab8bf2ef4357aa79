// SPDX-License-Identifier: MIT
#include <CCompanyStrings.h>

#include <CPath.h>

#include <QFileInfo>
#include <QSettings>

// Brings the compiled-in document into the program, also from a static library, of which only what is called
// is linked. The macro declares a function, so it cannot stand in a namespace.
static void registerCompiledInDocument()
{
    Q_INIT_RESOURCE(j6CoreData);
}

namespace {

QString chooseDocument()
{
    QString installed = CPath::constConfigPath(true) + QLatin1String("Setup.Ini");
    if (QFileInfo(installed).isFile())
        return installed;
    registerCompiledInDocument();
    return QStringLiteral(":/j6Core/data/Setup.Ini");
}

// Built by the first getter, so it goes before anything of Qt's that it was built with.
const QSettings &document()
{
    static const QSettings opened(chooseDocument(), QSettings::IniFormat);
    return opened;
}

QString text(const QString &key)
{
    return document().value(key).toString();
}

QString companyKey(QLatin1String key)
{
    return QLatin1String("COMPANY/") + key;
}

QString companyText(const char *key)
{
    return text(companyKey(QLatin1String(key)));
}

QString companyImage(const char *key)
{
    return CCompanyStrings::getImageFile(companyKey(QLatin1String(key)));
}

QString productKey(int code, const char *key)
{
    return CCompanyStrings::productSection(code) + QLatin1Char('/') + QLatin1String(key);
}

} // namespace

QString CCompanyStrings::getCompanyLongName()
{
    return companyText("NameLong");
}

QString CCompanyStrings::getCompanyMediumName()
{
    return companyText("NameMedium");
}

QString CCompanyStrings::getCompanyShortName()
{
    return companyText("NameShort");
}

QString CCompanyStrings::getAddressName()
{
    return companyText("AddressName");
}

QString CCompanyStrings::getAddressStreet()
{
    return companyText("AddressStreet");
}

QString CCompanyStrings::getAddressCity()
{
    return companyText("AddressCity");
}

QString CCompanyStrings::getAddressHtml()
{
    return companyText("AddressHtml");
}

QString CCompanyStrings::getWebUrl()
{
    return companyText("WebUrl");
}

QString CCompanyStrings::getEMail()
{
    return companyText("eMail");
}

QString CCompanyStrings::getUpdateVersionFile()
{
    return companyText("UpdateVersionFile");
}

QString CCompanyStrings::getUpdatePath()
{
    return companyText("UpdatePath");
}

QString CCompanyStrings::getUpdateChangelogFile()
{
    return companyText("UpdateChangelogFile");
}

QString CCompanyStrings::getOpenSourceUrl()
{
    return companyText("OpenSourceUrl");
}

QString CCompanyStrings::getLogoAndNameBitmapFile_145x52()
{
    return companyImage("LogoAndNameBitmap_145x52");
}

QString CCompanyStrings::getLogoAndNameBitmapFile_105x30()
{
    return companyImage("LogoAndNameBitmap_105x30");
}

QString CCompanyStrings::getLogoAndNameBitmapFile_105x30_inverted()
{
    return companyImage("LogoAndNameBitmap_105x30_inverted");
}

QString CCompanyStrings::getLogoBitmapFile_32x32()
{
    return companyImage("Logo_32x32");
}

QString CCompanyStrings::getLogoBitmapFile_16x16()
{
    return companyImage("Logo_16x16");
}

QString CCompanyStrings::getProductName(int code)
{
    const QString name = text(productKey(code, "Name"));
    return name.isEmpty() ? productSection(code) : name;
}

QString CCompanyStrings::getProductName(NProductCodes::EProductCode code)
{
    return getProductName(static_cast<int>(code));
}

QString CCompanyStrings::getProductExeFile(int code)
{
    return CPath::binPath(true) + text(productKey(code, "ExeFile"));
}

QString CCompanyStrings::getProductEMailAddress(int code)
{
    return text(productKey(code, "eMail"));
}

QString CCompanyStrings::getProductUpdateVersionFile(int code)
{
    return text(productKey(code, "UpdateVersionFile"));
}

QString CCompanyStrings::getProductUpdatePath(int code)
{
    return text(productKey(code, "UpdatePath"));
}

QString CCompanyStrings::getProductUpdateChangelogFile(int code)
{
    return text(productKey(code, "UpdateChangelogFile"));
}

QString CCompanyStrings::getProductPictureFile(int code)
{
    return getImageFile(productKey(code, "ProductPicture"));
}

QString CCompanyStrings::getProductSplashScreenBitmapFile(int code)
{
    return getImageFile(productKey(code, "SplashScreen"));
}

QString CCompanyStrings::productSection(int code)
{
    return QStringLiteral("PRODUCT%1").arg(code);
}

QString CCompanyStrings::getImageFile(const QString &key)
{
    const QString image = text(key);
    return image.isEmpty() ? QString() : CPath::imagePath(true) + image;
}
