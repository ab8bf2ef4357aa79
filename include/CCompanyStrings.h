// SPDX-License-Identifier: MIT
#ifndef CCOMPANYSTRINGS_H
#define CCOMPANYSTRINGS_H

#include <NProductCodes.h>
#include <j6Core_export.h>

#include <QString>

/**
 * @brief The maker's names, addresses, images and update locations, and those of each product of the family.
 *
 * They stand in the setup document, an INI file. "Setup.Ini" in the installation's CPath::constConfigPath()
 * is taken if it is there, else the copy compiled into this library, ":/j6Core/data/Setup.Ini": an
 * installation gets another brand by one file. The document is chosen by the first getter and kept until the
 * library is unloaded; a file installed later is not noticed. The two are never mixed: a key that the
 * installed file lacks is empty, whatever the compiled-in copy says. Nothing is ever written.
 *
 * Each getter reads the key that its comment names, from [COMPANY] or from the product's section. A missing
 * key and a value that is no text give an empty string; nothing is logged. The document is read as QSettings
 * reads INI files:
 * - A value with a comma, a semicolon, a backslash or blanks at its ends is put in double quotes. Without
 *   quotes a comma makes a list of it, which reads as empty.
 * - The bytes are Latin-1, or UTF-8 if the file begins with a byte-order mark. "\x20ac" in a value is the
 *   character U+20AC in either.
 * - Section and key are written exactly as here: upper and lower case differ on most platforms.
 *
 * The first getter needs the QCoreApplication, whose path leads to the installation; it creates the directory
 * of the document if that is missing. It may come from any thread, and so may all others.
 *
 * @code
 * CCompanyStrings::getCompanyShortName();                                // "VANTORIS"
 * CCompanyStrings::getProductName(NProductCodes::E_OSCILLOSCOPE);        // "tessera Oscilloscope"
 * CCompanyStrings::getProductExeFile(NProductCodes::E_OSCILLOSCOPE);     // .../bin/tesseraOscilloscope
 * CCompanyStrings::getProductName(999);                                  // "PRODUCT999"
 * @endcode
 */
class J6CORE_EXPORT CCompanyStrings
{
public:
    /// @name The maker's texts, as they stand in [COMPANY].
    /// @{
    static QString getCompanyLongName();     ///< "NameLong"
    static QString getCompanyMediumName();   ///< "NameMedium"
    static QString getCompanyShortName();    ///< "NameShort"
    static QString getAddressName();         ///< "AddressName"
    static QString getAddressStreet();       ///< "AddressStreet"
    static QString getAddressCity();         ///< "AddressCity"
    static QString getAddressHtml();         ///< "AddressHtml", rich text: postal address and telephone
    static QString getWebUrl();              ///< "WebUrl"
    static QString getEMail();               ///< "eMail"
    static QString getUpdateVersionFile();   ///< "UpdateVersionFile"
    static QString getUpdatePath();          ///< "UpdatePath"
    static QString getUpdateChangelogFile(); ///< "UpdateChangelogFile"
    static QString getOpenSourceUrl();       ///< "OpenSourceUrl"
    /// @}

    /// @name The maker's images, file paths made by getImageFile(); the numbers are pixels.
    /// @{
    static QString getLogoAndNameBitmapFile_145x52();          ///< "LogoAndNameBitmap_145x52"
    static QString getLogoAndNameBitmapFile_105x30();          ///< "LogoAndNameBitmap_105x30"
    static QString getLogoAndNameBitmapFile_105x30_inverted(); ///< "LogoAndNameBitmap_105x30_inverted"
    static QString getLogoBitmapFile_32x32();                  ///< "Logo_32x32"
    static QString getLogoBitmapFile_16x16();                  ///< "Logo_16x16"
    /// @}

    /// @name The products, from their productSection(). Any number is taken; a product that the document does
    /// not know has no keys.
    /// @{

    /// @brief "Name"; the name of the section where it is empty, so that there is always one to display.
    static QString getProductName(int code);
    /// @brief The same.
    static QString getProductName(NProductCodes::EProductCode code);
    /// @brief "ExeFile" behind CPath::binPath(), which is created; the bare directory where it is empty.
    static QString getProductExeFile(int code);
    static QString getProductEMailAddress(int code);        ///< "eMail"
    static QString getProductUpdateVersionFile(int code);   ///< "UpdateVersionFile"
    static QString getProductUpdatePath(int code);          ///< "UpdatePath"
    static QString getProductUpdateChangelogFile(int code); ///< "UpdateChangelogFile"
    /// @brief "ProductPicture", by getImageFile().
    static QString getProductPictureFile(int code);
    /// @brief "SplashScreen", by getImageFile().
    static QString getProductSplashScreenBitmapFile(int code);
    /// @}

    /// @brief The name of a product's section: "PRODUCT400" of 400.
    static QString productSection(int code);

    /// @brief The file of an image: the value of `key` behind CPath::imagePath(), which is created; empty
    /// where the value is empty. The file need not exist.
    /// @param key section, "/" and key, for example "COMPANY/Logo_32x32"; of an empty one Qt warns
    static QString getImageFile(const QString &key);
};

#endif // CCOMPANYSTRINGS_H
