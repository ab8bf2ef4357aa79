// SPDX-License-Identifier: MIT
#include <CCompanyStrings.h>
#include <CDataTypeParser.h>
#include <CVariant.h>
#include <Nj6Translations.h>
#include <j6Core_version.h>

#include <QBuffer>
#include <QCoreApplication>
#include <QTranslator>

#include <cstdio>

namespace {

// Whether a record in a QVariant survives a stream: its type is known by name, also when linked statically.
bool recordsTravel()
{
    const CVariant version = CVariant::fromStr(QStringLiteral("1.2.300"), NTypes::E_VERSION);
    QBuffer buffer;
    buffer.open(QIODevice::ReadWrite);
    QDataStream stream(&buffer);
    stream << static_cast<QVariant>(version);
    buffer.seek(0);
    QVariant read;
    stream >> read;
    return QMetaType::type("CString32") != QMetaType::UnknownType && CVariant(read) == version;
}

// Whether the compiled-in translations came along.
bool speaksGerman()
{
    QTranslator translator;
    return Nj6Translations::load(translator, QLocale(QLocale::German))
           && translator.translate("CStr", "User") == QLatin1String("Benutzer");
}

} // namespace

int main(int argc, char *argv[])
{
    const QCoreApplication application(argc, argv);
    const NTypes::eTypes_t type = CDataTypeParser::strToType(QStringLiteral("UNIT_U16"));
    // The maker's name stands in the document that is compiled into the library.
    std::printf("j6Core %s: %s %s..%s %s\n", J6CORE_VERSION_STR,
                qPrintable(CDataTypeParser::mTypeDataMap.value(type)),
                qPrintable(CDataTypeParser::minTypeValue(type)),
                qPrintable(CDataTypeParser::maxTypeValue(type)),
                qPrintable(CCompanyStrings::getCompanyShortName()));
    return recordsTravel() && speaksGerman() ? 0 : 1;
}
