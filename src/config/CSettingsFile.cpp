// SPDX-License-Identifier: MIT
#include <CSettingsFile.h>

#include <limits>

namespace {

QString entryOf(const QString &section, const QString &key)
{
    return section + QLatin1Char('/') + key;
}

QString versionKeyOf(const QString &key)
{
    return key + QLatin1String("_version");
}

QString languageSection()
{
    return QStringLiteral("Common");
}

QString languageKey()
{
    return QStringLiteral("applanguage");
}

template<typename Unsigned>
QString hexText(Unsigned value)
{
    constexpr int digits = sizeof(Unsigned) * 2;
    return QStringLiteral("0x%1").arg(value, digits, 16, QLatin1Char('0'));
}

int typeOf(const QVariant &entry)
{
    return entry.userType();
}

// Whether the number, truncated towards zero, is an int. A NaN is not.
bool fitsInt(double number)
{
    return number > std::numeric_limits<int>::min() - 1.0 && number < std::numeric_limits<int>::max() + 1.0;
}

} // namespace

CSettingsFile::CSettingsFile(const QString &fileName, QSettings::Format format, QObject *parent)
    : QSettings(fileName, format, parent)
{
    // A byte-order mark makes QSettings read UTF-8, and write it as well, but without the mark: what is not
    // ASCII would be misread from then on. So all is read here, and written in escapes as in any other file.
    if (iniCodec() != nullptr) {
        allKeys();
        setIniCodec(static_cast<QTextCodec *>(nullptr));
    }
}

CSettingsFile::~CSettingsFile() = default;

void CSettingsFile::setString(const QString &section, const QString &key, const QString &value)
{
    QSettings::setValue(entryOf(section, key), QVariant(value));
}

QString CSettingsFile::string(const QString &section, const QString &key, const QString &defaultValue) const
{
    return QSettings::value(entryOf(section, key), QVariant(defaultValue)).toString();
}

void CSettingsFile::setLocale(const QString &section, const QString &key, const QLocale &locale)
{
    QSettings::setValue(entryOf(section, key), QVariant(locale.name()));
}

void CSettingsFile::setLocale(const QLocale &locale)
{
    setLocale(languageSection(), languageKey(), locale);
}

QLocale CSettingsFile::locale(const QString &section, const QString &key, const QLocale &defaultLocale) const
{
    const QString name = QSettings::value(entryOf(section, key), QVariant(QString())).toString();
    QLocale locale = name.isEmpty() ? defaultLocale : QLocale(name);
    locale.setNumberOptions(QLocale::OmitGroupSeparator);
    return locale;
}

QLocale CSettingsFile::locale(const QLocale &defaultLocale) const
{
    return locale(languageSection(), languageKey(), defaultLocale);
}

void CSettingsFile::setIntegerValue(const QString &section, const QString &key, int value)
{
    QSettings::setValue(entryOf(section, key), QVariant(value));
}

int CSettingsFile::integerValue(const QString &section, const QString &key, int defaultValue) const
{
    const QVariant entry = QSettings::value(entryOf(section, key), QVariant(defaultValue));
    bool ok = false;
    int result = defaultValue;
    switch (typeOf(entry)) {
    case QMetaType::Double: {
        const double number = entry.toDouble(&ok);
        ok = ok && fitsInt(number);
        result = ok ? static_cast<int>(number) : defaultValue;
        break;
    }
    case QMetaType::QString:
        result = entry.toString().toInt(&ok, 10);
        break;
    case QMetaType::Int:
        result = entry.toInt(&ok);
        break;
    default:
        break;
    }
    return ok ? result : defaultValue;
}

void CSettingsFile::setUnsignedIntValue(const QString &section, const QString &key, unsigned int value)
{
    setString(section, key, hexText(value));
}

unsigned int CSettingsFile::unsignedIntValue(const QString &section, const QString &key,
                                             unsigned int defaultValue) const
{
    const QVariant entry = QSettings::value(entryOf(section, key), QVariant(defaultValue));
    bool ok = false;
    unsigned int result = defaultValue;
    if (typeOf(entry) == QMetaType::UInt)
        result = entry.toUInt(&ok);
    else if (typeOf(entry) == QMetaType::QString)
        result = entry.toString().toUInt(&ok, 0);
    return ok ? result : defaultValue;
}

void CSettingsFile::setUnsignedLongIntValue(const QString &section, const QString &key,
                                            unsigned long long value)
{
    setString(section, key, hexText(value));
}

unsigned long long CSettingsFile::unsignedLongIntValue(const QString &section, const QString &key,
                                                       unsigned long long defaultValue) const
{
    const QVariant entry = QSettings::value(entryOf(section, key), QVariant(defaultValue));
    bool ok = false;
    unsigned long long result = defaultValue;
    if (typeOf(entry) == QMetaType::ULongLong)
        result = entry.toULongLong(&ok);
    else if (typeOf(entry) == QMetaType::QString)
        result = entry.toString().toULongLong(&ok, 0);
    return ok ? result : defaultValue;
}

void CSettingsFile::setDoubleValue(const QString &section, const QString &key, const double &value)
{
    QSettings::setValue(entryOf(section, key), QVariant(value));
}

double CSettingsFile::doubleValue(const QString &section, const QString &key,
                                  const double &defaultValue) const
{
    const QVariant entry = QSettings::value(entryOf(section, key), QVariant(defaultValue));
    bool ok = false;
    double result = defaultValue;
    switch (typeOf(entry)) {
    case QMetaType::Double:
        result = entry.toDouble(&ok);
        break;
    case QMetaType::QString:
        result = entry.toString().toDouble(&ok);
        break;
    case QMetaType::Int:
        result = entry.toInt(&ok);
        break;
    default:
        break;
    }
    return ok ? result : defaultValue;
}

void CSettingsFile::setBoolean(const QString &section, const QString &key, bool value)
{
    QSettings::setValue(entryOf(section, key), QVariant(value));
}

bool CSettingsFile::boolean(const QString &section, const QString &key, bool defaultValue) const
{
    return QSettings::value(entryOf(section, key), QVariant(defaultValue)).toBool();
}

void CSettingsFile::setValue(const QString &section, const QString &key, const QVariant &value)
{
    QSettings::setValue(entryOf(section, key), value);
}

QVariant CSettingsFile::value(const QString &section, const QString &key, const QVariant &defaultValue) const
{
    return QSettings::value(entryOf(section, key), defaultValue);
}

bool CSettingsFile::containsEntry(const QString &section, const QString &key) const
{
    return QSettings::contains(entryOf(section, key));
}

void CSettingsFile::setByteArray(const QString &section, const QString &key, const QByteArray &data,
                                 const QString &version)
{
    setValue(section, key, QVariant(data));
    setString(section, versionKeyOf(key), version);
}

QByteArray CSettingsFile::byteArray(const QString &section, const QString &key, const QString &version) const
{
    if (string(section, versionKeyOf(key), QStringLiteral("0.0")) != version)
        return QByteArray();
    return value(section, key, QVariant()).toByteArray();
}
