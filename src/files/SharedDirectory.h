// SPDX-License-Identifier: MIT
#ifndef SHAREDDIRECTORY_H
#define SHAREDDIRECTORY_H

#include <QFile>

// The permissions of a directory that the tools make (0775): the users of one group share what lies in it.
constexpr QFile::Permissions sharedDirectory = QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner
                                               | QFile::ReadGroup | QFile::WriteGroup | QFile::ExeGroup
                                               | QFile::ReadOther | QFile::ExeOther;

#endif // SHAREDDIRECTORY_H
