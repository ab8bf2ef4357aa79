// SPDX-License-Identifier: MIT
#ifndef FAULTYCALL_H
#define FAULTYCALL_H

#include "ToolCall.h"

#include <FaultSweep.h>

#include <QMap>

// Calls of the tool that meet faults.

// The names of all files in a directory with what is in them.
using Files = QMap<QString, QByteArray>;

inline Files filesIn(const FileTree &tree)
{
    Files files;
    const QStringList names = tree.names();
    for (const QString &name : names)
        files.insert(name, FileTree::contentOf(tree.path() + QLatin1Char('/') + name));
    return files;
}

// A call in words that are separated by blanks, with "DIR/" in front of what names a file.
struct FaultyCall
{
    const char *name;
    const char *words;
    const char *output; // the file that it makes or replaces; empty if it only reads
};

constexpr std::array<FaultyCall, 14> faultyCalls = {{
    {"set in place", "set file=DIR/servo-axis.csv out=DIR/servo-axis.csv 0x6081=1000", "servo-axis.csv"},
    {"set to a new file", "set file=DIR/servo-axis.csv out=DIR/new.csv 0x6081=1000", "new.csv"},
    {"set to another file", "set file=DIR/servo-axis.csv out=DIR/other.csv 0x6081=1000", "other.csv"},
    {"show", "show file=DIR/servo-axis.csv", ""},
    {"diff", "diff file=DIR/servo-axis.csv with=DIR/servo-axis-tuned.csv", ""},
    {"crc", "crc file=DIR/servo-axis.csv", ""},
    {"make an inventory", "devices new=DIR/new.dat from=DIR/plant.csv", "new.dat"},
    {"show an inventory", "devices file=DIR/plant", ""},
    {"merge inventories", "devices file=DIR/plant unite=DIR/plant-extension out=DIR/plant", "plant"},
    {"read a setting", "settings file=DIR/tool.ini section=Drive key=address", ""},
    {"write a setting", "settings file=DIR/tool.ini section=Drive key=address value=43", "tool.ini"},
    {"write the first setting", "settings file=DIR/new.ini section=Drive key=address value=43", "new.ini"},
    {"list an archive", "tar file=DIR/drive-update.tar", ""},
    {"extract from an archive",
     "tar file=DIR/drive-update.tar member=firmware/drive-3.2.119.bin out=DIR/new.bin", "new.bin"},
}};

// What the calls read, and what they may overwrite.
class InputFiles
{
public:
    InputFiles()
    {
        for (const char *name : {"servo-axis.csv", "servo-axis-tuned.csv", "plant.csv", "drive-update.tar"})
            mFiles.insert(QString::fromLatin1(name), ToolCall::contentsOf(example(name)));
        const FileTree made;
        for (const char *name : {"plant", "plant-extension"}) {
            const QString inventory = made.path(name);
            ToolCall::call({QStringLiteral("devices"), QStringLiteral("new=") + inventory,
                            QStringLiteral("from=") + example(name) + QStringLiteral(".csv")});
            mFiles.insert(QString::fromLatin1(name), FileTree::contentOf(inventory));
        }
        mFiles.insert(QStringLiteral("tool.ini"),
                      "[Drive]\naddress=0x0000002a\nlist=a, b\n\n[Other]\nname=\"Z axis, 2\"\n");
        mFiles.insert(QStringLiteral("other.csv"), "old");
    }

    const Files &files() const { return mFiles; }

    void writeTo(const FileTree &tree) const
    {
        for (auto file = mFiles.begin(); file != mFiles.end(); ++file)
            tree.file(file.key().toUtf8().constData(), file.value());
    }

private:
    static QString example(const char *name)
    {
        return QStringLiteral(J6TOOL_EXAMPLES "/") + QString::fromLatin1(name);
    }

    Files mFiles;
};

inline QStringList wordsOf(const FaultyCall &call, const FileTree &tree)
{
    return QString::fromLatin1(call.words).replace(QLatin1String("DIR"), tree.path()).split(QLatin1Char(' '));
}

#endif // FAULTYCALL_H
