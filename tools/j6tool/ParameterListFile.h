// SPDX-License-Identifier: MIT
#ifndef J6TOOL_PARAMETERLISTFILE_H
#define J6TOOL_PARAMETERLISTFILE_H

#include "ParameterList.h"
#include "Result.h"

#include <QByteArray>
#include <QString>

#include <functional>
#include <map>
#include <optional>
#include <vector>

namespace j6tool {

/*
 * A parameter list in its file form: CSV by RFC 4180 in UTF-8 with the header row
 * "index,name,type,unit,bytes".
 *
 *   index   0x6081 or 0x6081:01, unique in the list
 *   name    any text but an empty one
 *   type    the catalogue name, for example UNIT_U16
 *   unit    the unit code, a decimal number
 *   bytes   the value in hexadecimal in device order, as many bytes as the type has (UNIT_BYTEARRAY: one or
 *           more)
 *
 * Writing changes nothing but the bytes that were set: byte-order mark, line ends, quotes and the order stay.
 */
class ParameterListFile
{
public:
    static constexpr int maxFileSize = 64 * 1024 * 1024;

    // An error begins with "file:line: field: ", or "file: " when the file itself cannot be read.
    static Result<ParameterListFile> read(const QString &fileName);
    // The same for contents that are in memory; fileName is for errors only.
    static Result<ParameterListFile> parse(const QByteArray &contents, const QString &fileName);

    const ParameterList &list() const { return mList; }

    // The bytes must fit the parameter's type.
    void setBytes(int position, const QByteArray &bytes);

    QByteArray contents() const;

    // As replaceFile() does.
    std::optional<Error> write(const QString &fileName,
                               const std::function<std::optional<Error>()> &beforeReplacing) const;

private:
    friend class ParameterListParser;

    // Where the bytes field of a parameter stands in the contents.
    struct Slice
    {
        int offset = 0;
        int length = 0;
    };

    QByteArray mContents;
    ParameterList mList;
    std::vector<Slice> mBytesFields;
    std::map<int, QByteArray> mEdits;
};

} // namespace j6tool

#endif // J6TOOL_PARAMETERLISTFILE_H
