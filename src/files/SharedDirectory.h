// SPDX-License-Identifier: MIT
#ifndef SHAREDDIRECTORY_H
#define SHAREDDIRECTORY_H

#include <QFile>
#include <QString>

// The permissions of a directory that the tools make (0775): the users of one group share what lies in it.
constexpr QFile::Permissions sharedDirectory = QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner
                                               | QFile::ReadGroup | QFile::WriteGroup | QFile::ExeGroup
                                               | QFile::ReadOther | QFile::ExeOther;

// Makes a directory with its parents. Whether it is new: one that was there only could not be looked up
// before, and its permissions are its owner's business.
bool makeNewDirectory(const QString &path);

#endif // SHAREDDIRECTORY_H
