// SPDX-License-Identifier: MIT
#ifndef CMESSAGE_H
#define CMESSAGE_H

#include <Nj6Global.h>
#include <j6Core_export.h>

#include <QString>

class QDataStream;
class QDebug;

/**
 * @brief A message for the user or a log: a kind and a text.
 *
 * A value object is used by one thread at a time; copies are independent. Nothing here fails.
 *
 * @code
 * CMessage message(Nj6Global::E_MSG_WARNING, QStringLiteral("Encoder battery low"));
 * message.appendText(QStringLiteral(": 2.9 V"));
 * message.text();                            // "Encoder battery low: 2.9 V"
 * message.type() & Nj6Global::E_MSG_ALL;     // not 0: it passes this filter
 * qDebug().noquote() << message;             // CMessage (E_MSG_WARNING, Encoder battery low: 2.9 V)
 * @endcode
 */
class J6CORE_EXPORT CMessage
{
public:
    /// @brief E_MSG_NONE and a null text.
    CMessage();
    CMessage(Nj6Global::eMessage_t type, const QString &text);
    CMessage(const CMessage &other);
    virtual ~CMessage();

    CMessage &operator=(const CMessage &other);

    /// @brief The kind. From a stream or a cast it may be any number, a combination of kinds for example.
    Nj6Global::eMessage_t type() const { return mType; }
    QString text() const { return mText; }
    /// @brief True when the text is empty, whatever the kind.
    bool isNull() const { return mText.isEmpty(); }

    void setType(Nj6Global::eMessage_t type);
    void setText(const QString &text);
    /// @brief Adds `text` to the end of the text, with nothing in between.
    void appendText(const QString &text);
    /// @brief Makes the text null and keeps the kind.
    void clearText();
    /// @brief Makes the kind E_MSG_NONE and the text null.
    void clear();

    /// @brief Equality of kind and text. A null and an empty text are equal, as for QString.
    bool operator==(const CMessage &other) const { return mType == other.mType && mText == other.mText; }
    bool operator!=(const CMessage &other) const { return !(*this == other); }

    /// @brief Writes the kind as 32 bits, then the text as a QString, in the stream's byte order.
    friend J6CORE_EXPORT QDataStream &operator<<(QDataStream &stream, const CMessage &message);
    /// @brief Reads what operator<<() wrote. A field that the stream does not hold is zero or empty; its
    /// status tells.
    friend J6CORE_EXPORT QDataStream &operator>>(QDataStream &stream, CMessage &message);

private:
    Nj6Global::eMessage_t mType = Nj6Global::E_MSG_NONE;
    QString mText;
};

Q_DECLARE_TYPEINFO(CMessage, Q_MOVABLE_TYPE);

/// @brief Writes `"CMessage (E_MSG_ERROR, text)"`, or `"CMessage (Type 12, text)"` for a number without an
/// enumerator, quoted as a QString is.
J6CORE_EXPORT QDebug operator<<(QDebug debug, const CMessage &message);

#endif // CMESSAGE_H
