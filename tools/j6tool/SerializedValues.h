// SPDX-License-Identifier: MIT
#ifndef J6TOOL_SERIALIZEDVALUES_H
#define J6TOOL_SERIALIZEDVALUES_H

#include <QByteArray>

namespace j6tool {

/*
 * Whether settings in INI form may hold a value that QSettings takes for a serialised QVariant, @Variant(...)
 * or @DateTime(...). Qt decodes all of them as soon as it reads the section, believes the lengths in them and
 * descends as deep as they are nested: a few bytes can end the process. It also loses those of types that
 * this program does not know when it writes the file.
 *
 * In doubt the answer is yes: blanks, quotes and line ends are passed over wherever they stand.
 */
bool mayHoldSerializedValue(const QByteArray &ini);

} // namespace j6tool

#endif // J6TOOL_SERIALIZEDVALUES_H
