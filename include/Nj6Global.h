// SPDX-License-Identifier: MIT
#ifndef NJ6GLOBAL_H
#define NJ6GLOBAL_H

#include <QtGlobal>

/// @brief Enumerations that the tools of the family share beyond one class.
namespace Nj6Global {

/**
 * @brief The kind of a message. Each kind is a single bit, so that kinds can be combined into a filter mask.
 *
 * Any 32-bit number may arrive from a stream or be made of several kinds: code that switches on a kind has a
 * default.
 */
enum eMessage_t : quint32 {
    E_MSG_NONE = 0,          ///< no message
    E_MSG_TEXT = 1,          ///< plain text
    E_MSG_QUESTION = 2,      ///< a question that the user answers
    E_MSG_INFO = 4,          ///< information
    E_MSG_WARNING = 8,       ///< warning
    E_MSG_ERROR = 0x10,      ///< error
    E_MSG_ALL = 0x800000FFU, ///< mask that selects every kind; deliberately not the OR of the five
};

/// @brief What a listing of a directory shows, whatever the platform. Hidden entries are always among it, "."
/// and ".." never. Any other number shows nothing. CDir::toDirFilter() gives Qt's own flags.
enum EDirFilter : quint32 {
    eDirFilterAll = 0,   ///< directories and files
    eDirFilterFiles = 1, ///< files
    eDirFilterDirs = 2,  ///< directories
};

} // namespace Nj6Global

#endif // NJ6GLOBAL_H
