#include "api/NetworkInterface.h"

#include "api/Errors.h"

#include <QCoreApplication>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

namespace API {

namespace {

QJsonArray listIn(const QByteArray &json, const QString &what)
{
    QJsonParseError error;
    const QJsonDocument document = QJsonDocument::fromJson(json, &error);
    if (error.error != QJsonParseError::NoError)
        throw ResponseDecodingError(error.errorString());
    if (!document.isArray())
        throw ResponseDecodingError(QStringLiteral("The %1 are not a JSON list.").arg(what));
    return document.array();
}

QString stringIn(const QJsonValue &value, const QString &what)
{
    if (!value.isString())
        throw ResponseDecodingError(QStringLiteral("A %1 is not a string.").arg(what));
    return value.toString();
}

} // namespace

QList<NetworkInterface> NetworkInterface::decodeList(const QByteArray &json)
{
    QList<NetworkInterface> interfaces;
    for (const QJsonValue item : listIn(json, u"network interfaces"_qs)) {
        if (!item.isObject())
            throw ResponseDecodingError(u"A network interface is not a JSON object."_qs);
        const QJsonObject object = item.toObject();
        interfaces.append({stringIn(object.value(u"name"), u"network interface's name"_qs),
                           stringIn(object.value(u"value"), u"network interface's value"_qs)});
    }
    return interfaces;
}

QList<NetworkInterface> NetworkInterface::choices(const QList<NetworkInterface> &serverInterfaces)
{
    return QList<NetworkInterface>{{QCoreApplication::translate("NetworkInterface", "Any interface"), {}}} +
           serverInterfaces;
}

QList<NetworkAddress> NetworkAddress::decodeList(const QByteArray &json)
{
    QList<NetworkAddress> addresses;
    for (const QJsonValue item : listIn(json, u"network addresses"_qs))
        addresses.append({stringIn(item, u"network address"_qs)});
    return addresses;
}

QList<AddressChoice> AddressChoice::choices(const QList<NetworkAddress> &serverAddresses)
{
    // The values are qBittorrent's own for listening on every address of a family.
    QList<AddressChoice> entries{{QCoreApplication::translate("NetworkInterface", "All addresses"), {}},
                                 {QCoreApplication::translate("NetworkInterface", "All IPv4 addresses"), u"0.0.0.0"_qs},
                                 {QCoreApplication::translate("NetworkInterface", "All IPv6 addresses"), u"::"_qs}};
    for (const NetworkAddress &address : serverAddresses)
        entries.append({address.addrees, address.addrees});
    return entries;
}

} // namespace API
