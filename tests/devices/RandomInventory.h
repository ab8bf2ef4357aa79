// SPDX-License-Identifier: MIT
#ifndef RANDOMINVENTORY_H
#define RANDOMINVENTORY_H

#include "DeviceCases.h"
#include "InventoryFields.h"

#include <algorithm>
#include <random>

// Records of all kinds, the same in every run.
class RandomInventory
{
public:
    int upTo(int limit) { return static_cast<int>(mRandom() % static_cast<unsigned int>(limit)); }

    template<typename Number>
    Number number()
    {
        return static_cast<Number>(mRandom());
    }

    // Mostly short ones; now and then of about a block, which are more than what is left of it, or far more.
    QString text()
    {
        switch (upTo(40)) {
        case 0:
            return units(4060 + upTo(80));
        case 1:
            return units(1 + upTo(20000));
        case 2:
        case 3:
            return QString(0, QChar());
        default:
            return upTo(3) == 0 ? QString() : units(upTo(12));
        }
    }

    QHostAddress address()
    {
        switch (upTo(6)) {
        case 0:
            return {};
        case 1:
            return QHostAddress(QHostAddress::Any);
        case 2:
        case 3: {
            Q_IPV6ADDR bytes;
            std::generate(std::begin(bytes.c), std::end(bytes.c), [this] { return number<quint8>(); });
            QHostAddress address(bytes);
            address.setScopeId(upTo(2) == 0 ? QString() : units(upTo(5)));
            return address;
        }
        default:
            return QHostAddress(number<quint32>());
        }
    }

    SubDeviceFields subDevice()
    {
        SubDeviceFields subDevice{number<quint8>(), text(),          {}, number<qint16>(), number<quint16>(),
                                  number<quint8>(), number<quint8>()};
        for (int i = upTo(4); i > 0; --i) {
            const auto set = static_cast<quint16>(upTo(8) == 0 ? number<quint16>() : upTo(64));
            subDevice.sets.insert(set, setName(set));
        }
        return subDevice;
    }

    DeviceFields device()
    {
        DeviceFields device{text(),
                            number<qint32>(),
                            address(),
                            number<quint16>(),
                            upTo(2) == 0,
                            upTo(2) == 0,
                            number<qint32>(),
                            text(),
                            text(),
                            number<qint32>(),
                            text(),
                            number<qint32>(),
                            {},
                            {}};
        std::generate(std::begin(device.rights), std::end(device.rights),
                      [this] { return number<quint8>(); });
        for (int i = upTo(3); i > 0; --i)
            device.subDevices.insert(number<quint8>(), subDevice());
        return device;
    }

    ListFields list(int mostDevices)
    {
        ListFields list{text(), number<qint32>(), {}, address(), number<qint32>(), number<qint32>()};
        for (int i = upTo(mostDevices + 1); i > 0; --i)
            list.devices.insert(upTo(2) == 0 ? number<quint32>() : quint32(upTo(100)), device());
        return list;
    }

    // Up to 80 devices, as a stream brings them.
    CDeviceList keys()
    {
        const int range = 1 + upTo(200);
        QMultiMap<quint32, DeviceFields> devices;
        for (int i = upTo(80); i > 0; --i) {
            DeviceFields device;
            device.value1 = number<qint32>();
            const quint32 key = quint32(upTo(range)) + (upTo(20) == 0 ? 0xFFFFFF00U : 0U);
            devices.insert(key, device);
        }
        CDeviceList list;
        readInto(list, streamed(ListFields{{}, 0, devices, {}, 0, 0}));
        return list;
    }

    // One to three faults: bits, numbers that may be lengths or counts, bytes too few or too many.
    QByteArray corrupted(QByteArray bytes)
    {
        static const QVector<QByteArray> numbers = {
            QByteArray::fromHex("ffffffff"), QByteArray::fromHex("00000003"),
            QByteArray::fromHex("00000000"), QByteArray::fromHex("00000200"),
            QByteArray::fromHex("03000000"), QByteArray::fromHex("00200000")};
        for (int faults = 1 + upTo(3); faults > 0 && !bytes.isEmpty(); --faults) {
            const int position = upTo(bytes.size());
            switch (upTo(5)) {
            case 0:
                bytes[position] = static_cast<char>(bytes.at(position) ^ (1 << upTo(8)));
                break;
            case 1:
                bytes.replace(position, 4, numbers.at(upTo(numbers.size())));
                break;
            case 2:
                bytes.truncate(position);
                break;
            case 3:
                bytes.remove(position, upTo(9));
                break;
            default:
                bytes.insert(position, bytes.mid(upTo(bytes.size()), upTo(100)));
            }
        }
        return bytes;
    }

private:
    QString units(int length)
    {
        QString text;
        for (int i = 0; i < length; ++i)
            text += upTo(4) == 0 ? QChar(number<ushort>()) : QChar(ushort(u' ' + upTo(200)));
        return text;
    }

    // Default names, those of other sets, and what differs from them in one unit or in length.
    QString setName(quint16 set)
    {
        QString name = QStringLiteral("Param set %1").arg(set + 1, 2, 10, QLatin1Char('0'));
        switch (upTo(6)) {
        case 0:
            return text();
        case 1:
            return QStringLiteral("Param set 07");
        case 2:
            return name.left(upTo(name.size()));
        case 3:
            name[upTo(name.size())] = QChar(number<ushort>());
            return name;
        default:
            return name;
        }
    }

    std::mt19937 mRandom{20260412};
};

#endif // RANDOMINVENTORY_H
