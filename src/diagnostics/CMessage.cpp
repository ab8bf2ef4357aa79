// SPDX-License-Identifier: MIT
#include <CMessage.h>

#include <QDataStream>
#include <QDebug>

#include <array>

namespace {

struct Kind
{
    Nj6Global::eMessage_t type;
    const char *name;
};

constexpr std::array<Kind, 7> kinds = {{
    {Nj6Global::E_MSG_NONE, "E_MSG_NONE"},
    {Nj6Global::E_MSG_TEXT, "E_MSG_TEXT"},
    {Nj6Global::E_MSG_QUESTION, "E_MSG_QUESTION"},
    {Nj6Global::E_MSG_INFO, "E_MSG_INFO"},
    {Nj6Global::E_MSG_WARNING, "E_MSG_WARNING"},
    {Nj6Global::E_MSG_ERROR, "E_MSG_ERROR"},
    {Nj6Global::E_MSG_ALL, "E_MSG_ALL"},
}};

constexpr bool kindsAscend()
{
    for (std::size_t i = 1; i < kinds.size(); ++i) {
        if (kinds[i].type <= kinds[i - 1].type)
            return false;
    }
    return true;
}
static_assert(kindsAscend(), "sorted and unique");

QString kindText(Nj6Global::eMessage_t type)
{
    for (const Kind &kind : kinds) {
        if (kind.type == type)
            return QString::fromLatin1(kind.name);
    }
    return QStringLiteral("Type %1").arg(static_cast<quint32>(type));
}

} // namespace

CMessage::CMessage() = default;

CMessage::CMessage(Nj6Global::eMessage_t type, const QString &text) : mType(type), mText(text) {}

CMessage::CMessage(const CMessage &other) = default;

CMessage::~CMessage() = default;

CMessage &CMessage::operator=(const CMessage &other) = default;

void CMessage::setType(Nj6Global::eMessage_t type)
{
    mType = type;
}

void CMessage::setText(const QString &text)
{
    mText = text;
}

void CMessage::appendText(const QString &text)
{
    mText += text;
}

void CMessage::clearText()
{
    mText.clear();
}

void CMessage::clear()
{
    mType = Nj6Global::E_MSG_NONE;
    clearText();
}

QDataStream &operator<<(QDataStream &stream, const CMessage &message)
{
    return stream << static_cast<qint32>(message.mType) << message.mText;
}

QDataStream &operator>>(QDataStream &stream, CMessage &message)
{
    qint32 type = 0;
    stream >> type >> message.mText;
    message.mType = static_cast<Nj6Global::eMessage_t>(type);
    return stream;
}

QDebug operator<<(QDebug debug, const CMessage &message)
{
    const QDebugStateSaver saver(debug);
    // Both at once: place markers in the text are text.
    debug.nospace() << QStringLiteral("CMessage (%1, %2)").arg(kindText(message.type()), message.text());
    return debug;
}
