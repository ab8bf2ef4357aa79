// SPDX-License-Identifier: MIT
#ifndef J6TOOL_VISIBLETEXT_H
#define J6TOOL_VISIBLETEXT_H

#include <QString>

namespace j6tool {

// Texts come out of devices and files. What is printed for people never carries a character that a terminal
// would obey or hide: control and format characters, line separators, lone surrogates, private and unassigned
// code points.

// The text with those characters, and the backslash, written as \\ \n \r \t \x1b \u200b or \U000e0001.
QString visible(const QString &text);

// The text in single quotes, made visible and cut to a length that leaves an error on one line.
QString quoted(const QString &text);

// The columns that a visible text takes on a terminal: 2 for East Asian wide characters, 0 for combining
// ones.
int displayWidth(const QString &text);

// The text, cut and ended with an ellipsis if it is wider than `width` columns.
QString cutToWidth(const QString &text, int width);

// The text as a JSON string with its quotes. Exact: what is not printable stands as \u escapes.
QString jsonString(const QString &text);

// A JSON document on one line, in whose texts characters that are not printable are replaced by \u escapes.
// Its value stays the same.
QString visibleJson(const QString &json);

// The text as one field of a CSV record, quoted where RFC 4180 asks for it.
QString csvField(const QString &text);

} // namespace j6tool

#endif // J6TOOL_VISIBLETEXT_H
