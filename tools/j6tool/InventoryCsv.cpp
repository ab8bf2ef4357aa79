// SPDX-License-Identifier: MIT
#include "InventoryCsv.h"

#include "CsvReader.h"
#include "HexText.h"
#include "InputFile.h"
#include "InventoryForm.h"
#include "NumberText.h"
#include "ParameterSets.h"
#include "ParameterValue.h"
#include "Utf8Text.h"
#include "ValueParser.h"
#include "VisibleText.h"

#include <QHostAddress>
#include <QStringList>

#include <algorithm>
#include <array>
#include <limits>
#include <iterator>
#include <map>
#include <vector>

namespace j6tool {

namespace {

enum Column {
    RowColumn,
    KeyColumn,
    NameColumn,
    IdentifierColumn,
    KindColumn,
    AddressColumn,
    PortColumn,
    Flag1Column,
    Flag2Column,
    Text1Column,
    Value1Column,
    Text2Column,
    Value2Column,
    RightsColumn,
    NumberColumn,
    SetsColumn,
    ActiveColumn,
    VersionColumn,
    columnCount
};

// The kinds of a row; a column lists those that it has a meaning for.
enum Row : unsigned { ListRow = 1, DeviceRow = 2, SubDeviceRow = 4, AnyRow = 7 };

struct ColumnRule
{
    const char *name = "";
    unsigned rows = 0;
    bool isRequired = false;
};

constexpr std::array<ColumnRule, columnCount> columnRules = {{
    {"row", AnyRow, true},
    {"key", DeviceRow | SubDeviceRow, true},
    {"name", AnyRow},
    {"identifier", DeviceRow},
    {"kind", ListRow | DeviceRow},
    {"address", ListRow | DeviceRow},
    {"port", DeviceRow},
    {"flag1", DeviceRow},
    {"flag2", DeviceRow},
    {"text1", DeviceRow},
    {"value1", ListRow | DeviceRow},
    {"text2", DeviceRow},
    {"value2", ListRow | DeviceRow},
    {"rights", DeviceRow},
    {"number", SubDeviceRow},
    {"sets", SubDeviceRow},
    {"active", SubDeviceRow},
    {"version", SubDeviceRow},
}};

struct RowName
{
    const char *name;
    Row row;
};

constexpr std::array<RowName, 3> rowNames = {
    {{"list", ListRow}, {"device", DeviceRow}, {"sub-device", SubDeviceRow}}};

// Only hexadecimal digits, colons and dots, and behind a percent sign a scope without blanks.
bool hasUsualIPv6Form(const QString &text)
{
    const QStringRef groups = text.leftRef(text.indexOf(QLatin1Char('%')));
    const bool isPlain = std::all_of(groups.begin(), groups.end(), [](QChar c) {
        return QLatin1String("0123456789abcdefABCDEF:.").contains(c);
    });
    const bool hasBlank = std::any_of(text.begin(), text.end(), [](QChar c) { return c.isSpace(); });
    return isPlain && !hasBlank && !text.endsWith(QLatin1Char('%'));
}

// The address of a text in its usual form; QHostAddress by itself would also take blanks, signs and numbers
// in other forms.
std::optional<QHostAddress> addressFromText(const QString &text)
{
    const bool isIPv6 = text.contains(QLatin1Char(':'));
    if (isIPv6 ? !hasUsualIPv6Form(text) : !bytesFromText(text, NTypes::E_IPV4ADDR))
        return std::nullopt;
    const QHostAddress address(text);
    if (address.isNull())
        return std::nullopt;
    return address;
}

} // namespace

// Turns the records of one file into a list. The first error ends it: what reads a field after it does
// nothing.
class InventoryCsvParser
{
public:
    InventoryCsvParser(const QByteArray &contents, const QString &fileName)
        : mReader(contents, columnCount), mFileName(fileName)
    {
        mFieldOf.fill(-1);
    }

    Result<CDeviceList> parse();

private:
    struct HeldDevice
    {
        CDeviceItem device;
        int line;
        std::map<quint8, int> lineOfSubDevice;
    };

    void readHeader();
    void readColumnName(int field);
    void readRecord();
    bool takeTexts();
    Row rowKind();
    void refuseStrayFields(Row row);
    void readList();
    void readDevice();
    void readSubDevice();
    CSubDeviceItem subDevice();
    void hold(quint32 key, const CDeviceItem &device);
    void hold(HeldDevice &held, const CSubDeviceItem &subDevice);
    CDeviceList list() const;

    const QString &text(Column column) const { return mTexts[column]; }
    template<typename Number>
    Number number(Column column, Number lowest = std::numeric_limits<Number>::min(),
                  Number highest = std::numeric_limits<Number>::max());
    template<typename Number>
    Number numberOr(Number byDefault, Column column, Number lowest = std::numeric_limits<Number>::min(),
                    Number highest = std::numeric_limits<Number>::max());
    bool flag(Column column);
    QHostAddress address();
    QByteArray rights();
    NTypes::sVersion_t version();

    int line() const { return mRecord.front().line; }
    void fail(Column column, const QString &what);
    void failInReader();
    void failAt(int line, const QString &column, const QString &what);

    CsvReader mReader;
    QString mFileName;
    std::vector<Column> mColumns; // by field
    std::array<int, columnCount> mFieldOf = {};
    CsvRecord mRecord;
    std::array<QString, columnCount> mTexts;
    CDeviceList mHead; // the list row's
    bool mIsFirst = true;
    std::map<quint32, HeldDevice> mDevices;
    std::optional<Error> mError;
};

Result<CDeviceList> InventoryCsvParser::parse()
{
    readHeader();
    while (!mError) {
        const CsvReader::Outcome outcome = mReader.next(mRecord);
        if (outcome == CsvReader::Outcome::End)
            return list();
        if (outcome == CsvReader::Outcome::Fault)
            failInReader();
        else
            readRecord();
    }
    return *mError;
}

void InventoryCsvParser::readHeader()
{
    if (mReader.next(mRecord) == CsvReader::Outcome::Fault)
        return failInReader();
    for (int field = 0; field < int(mRecord.size()); ++field)
        readColumnName(field);
    for (const ColumnRule &rule : columnRules) {
        const auto column = std::size_t(std::distance(columnRules.data(), &rule));
        if (rule.isRequired && mFieldOf[column] < 0)
            failAt(1, QStringLiteral("header"),
                   QStringLiteral("the column '%1' is missing").arg(QLatin1String(rule.name)));
    }
}

void InventoryCsvParser::readColumnName(int field)
{
    const CsvField &name = mRecord[std::size_t(field)];
    const auto *rule = std::find_if(columnRules.begin(), columnRules.end(),
                                    [&name](const ColumnRule &row) { return name.text == row.name; });
    const QString shown = quoted(QString::fromUtf8(name.text));
    if (rule == columnRules.end())
        return failAt(name.line, QStringLiteral("header"), QStringLiteral("%1 is no column").arg(shown));
    const auto column = Column(std::distance(columnRules.begin(), rule));
    if (mFieldOf[column] >= 0)
        return failAt(name.line, QStringLiteral("header"), QStringLiteral("%1 is there twice").arg(shown));
    mFieldOf[column] = field;
    mColumns.push_back(column);
}

void InventoryCsvParser::readRecord()
{
    if (mRecord.size() != mColumns.size()) {
        return failAt(line(), QStringLiteral("record"),
                      QStringLiteral("%1 of %2 fields").arg(mRecord.size()).arg(mColumns.size()));
    }
    if (!takeTexts())
        return;
    const Row row = rowKind();
    refuseStrayFields(row);
    if (mError)
        return;
    switch (row) {
    case ListRow:
        readList();
        break;
    case DeviceRow:
        readDevice();
        break;
    default:
        readSubDevice();
        break;
    }
    mIsFirst = false;
}

bool InventoryCsvParser::takeTexts()
{
    for (std::size_t field = 0; field < mColumns.size(); ++field) {
        const QByteArray &bytes = mRecord[field].text;
        const std::optional<QString> text = textFromUtf8(bytes);
        if (!text)
            fail(mColumns[field], QStringLiteral("%1 is not UTF-8").arg(quoted(QString::fromUtf8(bytes))));
        // Empty texts are null, as in a record that nobody has given any.
        mTexts[mColumns[field]] = text && !text->isEmpty() ? *text : QString();
    }
    return !mError;
}

Row InventoryCsvParser::rowKind()
{
    const auto *found = std::find_if(rowNames.begin(), rowNames.end(), [this](const RowName &row) {
        return text(RowColumn) == QLatin1String(row.name);
    });
    if (found != rowNames.end())
        return found->row;
    fail(RowColumn, QStringLiteral("%1 is none of list, device, sub-device").arg(quoted(text(RowColumn))));
    return AnyRow;
}

// A value in a column that the row does not have would be lost.
void InventoryCsvParser::refuseStrayFields(Row row)
{
    for (const Column column : mColumns) {
        if ((columnRules[column].rows & row) == 0 && !text(column).isEmpty())
            fail(column,
                 QStringLiteral("%1 has no meaning for a %2").arg(quoted(text(column)), text(RowColumn)));
    }
}

void InventoryCsvParser::readList()
{
    if (!mIsFirst)
        return fail(RowColumn, QStringLiteral("'list' is not the first row"));
    mHead = CDeviceList(text(NameColumn), CDeviceList::ESourceType(numberOr<qint32>(0, KindColumn)));
    mHead.setSourceAddress(address());
    mHead.setSourceValue1(numberOr<qint32>(-1, Value1Column));
    mHead.setSourceValue2(numberOr<qint32>(0, Value2Column));
}

void InventoryCsvParser::readDevice()
{
    const auto key = number<quint32>(KeyColumn);
    CDeviceItem device;
    device.mName = text(NameColumn);
    device.mIdentifier = text(IdentifierColumn);
    device.mHostAddrType = CDeviceItem::EHostAddrType(numberOr<qint32>(0, KindColumn));
    device.mHostAddress = address();
    device.mPort = numberOr<quint16>(0, PortColumn);
    device.mFlag1 = flag(Flag1Column);
    device.mFlag2 = flag(Flag2Column);
    device.mText1 = text(Text1Column);
    device.mValue1 = numberOr<qint32>(0, Value1Column);
    device.mText2 = text(Text2Column);
    device.mValue2 = numberOr<qint32>(0, Value2Column);
    device.setUserlevelData(rights());
    if (!mError)
        hold(key, device);
}

void InventoryCsvParser::hold(quint32 key, const CDeviceItem &device)
{
    if (mDevices.size() == maxInventoryDevices)
        return fail(KeyColumn, QStringLiteral("more than %1 devices").arg(maxInventoryDevices));
    const auto [held, isNew] = mDevices.try_emplace(key, HeldDevice{device, line(), {}});
    if (!isNew)
        fail(KeyColumn,
             QStringLiteral("'%1' is on line %2 already").arg(text(KeyColumn)).arg(held->second.line));
}

void InventoryCsvParser::readSubDevice()
{
    const auto key = number<quint32>(KeyColumn);
    const CSubDeviceItem subDevice = this->subDevice();
    const auto held = mDevices.find(key);
    if (held == mDevices.end())
        fail(KeyColumn, QStringLiteral("'%1' is the key of no device above").arg(text(KeyColumn)));
    if (!mError)
        hold(held->second, subDevice);
}

CSubDeviceItem InventoryCsvParser::subDevice()
{
    constexpr quint8 highestNumber = 254;
    CSubDeviceItem subDevice(number<quint8>(NumberColumn, 0, highestNumber), text(NameColumn));
    if (const std::optional<Error> error = setParameterSets(subDevice, text(SetsColumn)))
        fail(SetsColumn, error->text);
    subDevice.setActiveParamSet(numberOr<qint16>(-1, ActiveColumn, -1, CSubDeviceItem::maxParamSetCount - 1));
    subDevice.setParamVersion(version());
    return subDevice;
}

void InventoryCsvParser::hold(HeldDevice &held, const CSubDeviceItem &subDevice)
{
    const auto [place, isNew] = held.lineOfSubDevice.try_emplace(subDevice.number(), line());
    if (isNew)
        held.device.setSubDevice(subDevice);
    else
        fail(NumberColumn,
             QStringLiteral("'%1' is on line %2 already").arg(text(NumberColumn)).arg(place->second));
}

CDeviceList InventoryCsvParser::list() const
{
    CDeviceList list = mHead;
    for (const auto &[key, held] : mDevices)
        list.addDevice(key, held.device);
    return list;
}

template<typename Number>
Number InventoryCsvParser::number(Column column, Number lowest, Number highest)
{
    const Result<qint64> number = integerFromText(text(column), lowest, highest);
    if (number)
        return Number(*number);
    fail(column, number.error().text);
    return {};
}

template<typename Number>
Number InventoryCsvParser::numberOr(Number byDefault, Column column, Number lowest, Number highest)
{
    return text(column).isEmpty() ? byDefault : number<Number>(column, lowest, highest);
}

bool InventoryCsvParser::flag(Column column)
{
    return numberOr<quint8>(0, column, 0, 1) == 1;
}

QHostAddress InventoryCsvParser::address()
{
    const QString &text = this->text(AddressColumn);
    if (text.isEmpty())
        return {};
    const std::optional<QHostAddress> address = addressFromText(text);
    if (!address)
        fail(AddressColumn, QStringLiteral("%1 is no IPv4 or IPv6 address").arg(quoted(text)));
    return address.value_or(QHostAddress());
}

// Empty, which changes no rights, or all of their bytes.
QByteArray InventoryCsvParser::rights()
{
    const QString &text = this->text(RightsColumn);
    const Result<QByteArray> bytes = bytesFromHex(text);
    if (!bytes)
        fail(RightsColumn, bytes.error().text);
    else if (!bytes->isEmpty() && bytes->size() != int(sizeof(sUserRights_t)))
        fail(RightsColumn, QStringLiteral("%1 has %2 bytes where user rights have %3")
                               .arg(quoted(text))
                               .arg(bytes->size())
                               .arg(sizeof(sUserRights_t)));
    return bytes ? *bytes : QByteArray();
}

NTypes::sVersion_t InventoryCsvParser::version()
{
    if (text(VersionColumn).isEmpty())
        return {};
    const Result<QByteArray> bytes = bytesFromText(text(VersionColumn), NTypes::E_VERSION);
    if (bytes)
        return valueFromBytes(*bytes, NTypes::E_VERSION).toVersion();
    fail(VersionColumn, bytes.error().text);
    return {};
}

void InventoryCsvParser::fail(Column column, const QString &what)
{
    // A column that the file does not have is missing from the row as a whole.
    const int field = mFieldOf[column];
    failAt(field < 0 ? line() : mRecord[std::size_t(field)].line, QLatin1String(columnRules[column].name),
           what);
}

void InventoryCsvParser::failInReader()
{
    const CsvFault &fault = mReader.fault();
    const auto field = std::size_t(fault.field);
    const char *const column = field < mColumns.size() ? columnRules[mColumns[field]].name : "record";
    failAt(fault.line, QLatin1String(column), fault.what);
}

void InventoryCsvParser::failAt(int line, const QString &column, const QString &what)
{
    if (!mError)
        mError = fileError(mFileName + QStringLiteral(":%1").arg(line), column + QLatin1String(": ") + what);
}

Result<CDeviceList> readInventoryCsv(const QString &fileName)
{
    const Result<QByteArray> contents = readInput(fileName, maxInventoryCsvSize);
    if (!contents)
        return contents.error();
    return parseInventoryCsv(*contents, fileName);
}

Result<CDeviceList> parseInventoryCsv(const QByteArray &contents, const QString &fileName)
{
    return InventoryCsvParser(contents, fileName).parse();
}

} // namespace j6tool
