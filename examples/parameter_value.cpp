// SPDX-License-Identifier: MIT
#include <CUnitParser.h>
#include <CVariant.h>

#include <QDebug>

int main()
{
    const QByteArray read = QByteArray::fromHex("00009001"); // as the drive sends it
    const CVariant speed = CVariant::fromByteArray(read, NTypes::E_U32);
    qInfo().noquote() << speed.toStr() << CUnitParser::unitStr(Nj6Units::E_UNIT_SPEED_INC_PER_S);

    bool ok = false;
    const CVariant edited = CVariant::fromStr(QStringLiteral("39321600"), speed.type(), &ok);
    if (ok && !edited.compareValue(speed))
        qInfo() << "write back" << edited.toByteArray().toHex();
}
