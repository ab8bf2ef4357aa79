// SPDX-License-Identifier: MIT
#ifndef CTAR_H
#define CTAR_H

#include <CTarFileInfo.h>
#include <j6Core_export.h>

#include <QByteArray>
#include <QFile>
#include <QList>
#include <QString>
#include <QStringList>

#include <memory>
#include <optional>

class UstarBlock;
class UstarIndex;
class UstarWindow;

/**
 * @brief Reads a tar archive (POSIX ustar, IEEE Std 1003.1) as a bundle of files: indexes its members and
 * hands out the data of any of them. It writes no archive and extracts nothing to disk.
 *
 * Only what the header block itself says is understood. Of its fields name, size, type flag, link name and
 * magic are read; the checksum is not verified, and names are not joined with the field "prefix". The headers
 * with which newer formats tell long names and the like (types 'x', 'g', 'L', 'K') are listed as members of
 * their own, of type CTarFileInfo::E_TYPE_OTHER.
 *
 * A text field is read from its first byte to the first NUL byte whatever its width, or to the end of the
 * header block:
 * - A name that fills its 100 bytes runs on into the mode that follows it.
 * - A size that does not end with a NUL runs on into the time that follows it. With a blank in between, as
 *   some writers leave there, that is no number and the archive is refused; digits up to the NUL are one long
 *   number.
 *
 * Sizes are octal, a plus sign being allowed, with ASCII white space around them ignored. Anything else is
 * no size: no digits, a negative number, one above 2^63 - 1, the binary form (base 256) that some writers use
 * from 8 GiB on.
 *
 * Names and numbers in an archive are never trusted: a size allocates no more than the file holds, and every
 * scan ends.
 *
 * Every failure returns false and leaves a text for the user in error(), translated by
 * QCoreApplication::translate() with the context "CTar" when it happens. Nothing is logged.
 *
 * An object is used by one thread at a time: reading moves the file's position, and names(), infos() and
 * index() prepare what they need when they are first asked. It holds an open file and cannot be copied.
 *
 * @code
 * CTar bundle;
 * QByteArray firmware;
 * if (!bundle.loadFile(QStringLiteral("update.tar")) || !bundle.file(QStringLiteral("drive.bin"), firmware))
 *     qWarning() << bundle.error();
 * @endcode
 */
class J6CORE_EXPORT CTar
{
public:
    /// @brief A closed reader without members; error() is empty.
    CTar();
    ~CTar();
    CTar(const CTar &other) = delete;
    CTar &operator=(const CTar &other) = delete;

    /**
     * @brief Opens an archive and indexes it. The one before is closed and forgotten first, even if this one
     * cannot be opened.
     *
     * Takes time in proportion to the number of members, whatever their sizes: small members are read over
     * in pieces of up to 64 KiB, data that goes beyond such a piece by a page of the file (4 KiB) or more is
     * passed over. The archive must be a regular file: a pipe is refused, and opening it waits for its writer
     * first. It stays open until the next call, also after a failure behind its opening, and should not be
     * altered in the meantime: data is read as it is then, while the lists stay as they are.
     *
     * @return true when the block of zeros that ends an archive was reached. False when the file cannot be
     * opened (error() is the file's own error string) or a header cannot be read (as by readFileHeader());
     * the members before that header are listed and can be read.
     */
    bool loadFile(const QString &fileName);

    /// @brief The text of the last failure; empty when there was none. A later success does not clear it.
    QString error() const;

    /// @brief The number of members.
    int count() const;
    /// @brief The names of the members in the order of the archive, duplicates included; entry i is the name
    /// of member i. The list is made by the first call, and later ones give a copy.
    QStringList names() const;
    /// @brief The members in the order of the archive, made as names() are.
    QList<CTarFileInfo> infos() const;
    /// @brief Member `index`, 0 .. count() - 1; a cleared record for any other number.
    CTarFileInfo info(int index) const;
    /**
     * @brief The first member with exactly this name, upper and lower case being different; -1 if there is
     * none.
     *
     * The first call takes time in proportion to the number of members, any further one does not depend on
     * it, whatever names an archive was made with.
     */
    int index(const QString &name) const;

    /**
     * @brief Reads the data of member `index`, and nothing else, whatever its type: of a directory
     * or a link what is stored with it, normally nothing.
     * @param data replaced by the data. When the file ends early, by what there was; when `size` is more than
     * a QByteArray can hold (some 2 GiB), by nothing; both fail.
     * @return true when all of the member was read. False, with `data` unchanged, when no archive is open,
     * when there is no such member, or when the file cannot be positioned; false when there was less data.
     */
    bool file(int index, QByteArray &data);
    /// @brief Reads the data of the first member of this name. Without one `data` is unchanged, and the text
    /// in error() deliberately holds "%1" where one would expect the name.
    bool file(const QString &name, QByteArray &data);

    /**
     * @brief Reads one header; the step of which loadFile() is made.
     *
     * The member is added to the list, whatever its type and even if it is there already.
     *
     * @param position of the header; moved to the next one, that is by 512 and by the member's size, rounded
     * up to a multiple of 512, and at most to 2^63 - 1. Unchanged at the end of the archive and on failure.
     * @param end set to true at a block of zeros, which ends the archive; unchanged otherwise
     * @return false when no file is open or it cannot be positioned (error() is the file's own error string),
     * when it holds less than 512 bytes there, when this is no header, and when the size is no number. For
     * the latter alone error() does not change.
     */
    bool readFileHeader(qint64 &position, bool &end);

private:
    bool readFileHeaders();
    bool moveTo(qint64 position, UstarWindow &window);
    std::optional<qint64> readBlock(qint64 position, char *bytes, qint64 byteCount);
    bool takeHeader(const UstarBlock &block, qint64 &position, bool &end);
    std::optional<qint64> readAt(qint64 position, char *bytes, qint64 byteCount);
    void makeRecords() const;

    QString mError;
    QFile mFile;
    // The first members of the index as records: all when somebody has asked for them, none before that.
    mutable QStringList mNames;
    mutable QList<CTarFileInfo> mInfos;
    std::unique_ptr<UstarIndex> mMembers;
    qint64 mKnownSize = 0; // the file has at least so many bytes
};

#endif // CTAR_H
