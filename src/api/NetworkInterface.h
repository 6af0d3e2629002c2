#pragma once

#include <QByteArray>
#include <QList>
#include <QString>

// The choices of the settings window's network interface and address pickers.
namespace API {

struct NetworkInterface
{
    QString name;  // shown
    QString value; // what the preferences hold

    // Throws ResponseDecodingError when the answer is not a list of {"name", "value"} strings.
    static QList<NetworkInterface> decodeList(const QByteArray &json);
    // "Any interface" (an empty value) before the server's interfaces.
    static QList<NetworkInterface> choices(const QList<NetworkInterface> &serverInterfaces);
    friend bool operator==(const NetworkInterface &, const NetworkInterface &) = default;
};

struct NetworkAddress
{
    QString addrees;

    // Throws ResponseDecodingError when the answer is not a list of strings.
    static QList<NetworkAddress> decodeList(const QByteArray &json);
    friend bool operator==(const NetworkAddress &, const NetworkAddress &) = default;
};

// One entry of the address picker: what it shows and what the preferences hold.
struct AddressChoice
{
    QString text;
    QString value;

    // "All addresses", "All IPv4 addresses" and "All IPv6 addresses" before the interface's addresses.
    static QList<AddressChoice> choices(const QList<NetworkAddress> &serverAddresses);
    friend bool operator==(const AddressChoice &, const AddressChoice &) = default;
};

} // namespace API
