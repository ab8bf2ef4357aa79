// SPDX-License-Identifier: MIT
#ifndef DIRECTORYTRIAL_H
#define DIRECTORYTRIAL_H

#include <FaultSweep.h>
#include <PrintedText.h>

#include <functional>

// What the functions of CDir do when the file operations that they make fail, one after the other.

// More than any buffer holds; no two parts of it are equal.
inline QByteArray longContent()
{
    QByteArray content;
    for (int i = 0; content.size() < 40000; ++i)
        content += QByteArray::number(i) + ';';
    return content;
}

// All that lies in a directory: the names, and the contents of the files.
inline QStringList picture(const FileTree &tree, const char *directory)
{
    QStringList entries = tree.names(directory);
    for (QString &name : entries) {
        const QString path = tree.path(directory) + QLatin1Char('/') + name;
        if (QFileInfo(path).isFile())
            name += QLatin1Char('=') + QString::fromLatin1(FileTree::contentOf(path));
    }
    return entries;
}

inline QString listed(const QStringList &entries)
{
    QStringList shortened;
    for (const QString &entry : entries)
        shortened += entry.left(20);
    return shortened.join(QLatin1Char(' '));
}

inline QString flawUnless(bool isRight, const QString &flaw)
{
    return isRight ? QString() : flaw;
}

// What a function of CDir has done.
struct Outcome
{
    const FileTree &tree;
    const faults::Fault &fault;
    int result;
    QByteArray printed;
};

using Build = std::function<void(const FileTree &)>;
using Call = std::function<int(const FileTree &)>;
using Judge = std::function<QString(const Outcome &)>;

// The result of the call is true or 0 without a fault: `success`. What lies in "mine" stays as it is.
inline QString flawsOf(const Build &build, const Call &call, int success, const Judge &judge,
                       std::initializer_list<faults::Operation> operations, const faults::Limits &limits = {},
                       faults::FaultSweep::Faults kind = faults::FaultSweep::Failures)
{
    const QStringList mine = {QStringLiteral("kept.par=kept")};
    int result = 0;
    QByteArray printed;
    faults::Trial trial;
    trial.prepare = [&](const FileTree &tree) {
        tree.file("mine/kept.par", "kept");
        build(tree);
    };
    trial.act = [&](const FileTree &tree) { printed = printedBy([&] { result = call(tree); }); };
    trial.flaw = [&](const FileTree &tree, const faults::Fault &fault) {
        if (picture(tree, "mine") != mine)
            return QStringLiteral("damaged: ") + listed(picture(tree, "mine"));
        if (fault.number == 0 && result != success)
            return QStringLiteral("fails without a fault");
        return judge({tree, fault, result, printed});
    };
    // Qt says so when it cannot copy within the system and then cannot do without.
    trial.allowedLog = QStringList{QStringLiteral("QFile::at: Cannot set file position *"),
                                   QStringLiteral("QTemporaryDir: Unable to remove *")};
    trial.limits = limits;
    const faults::FaultSweep sweep(trial, kind);
    const QStringList unused = sweep.unused(operations);
    return unused.isEmpty() ? sweep.report() : QStringLiteral("not met: ") + listed(unused);
}

#endif // DIRECTORYTRIAL_H
