#pragma once

#include <QObject>

namespace Platform {

// What the system tells that matters to an open connection: the computer woke from sleep, or the
// network came back. Either may have left a connection stale without a request noticing yet.
// Implemented once per platform (SystemEvents_linux.cpp: logind and the network backend).
class SystemEvents : public QObject
{
    Q_OBJECT

public:
    explicit SystemEvents(QObject *parent = nullptr);

Q_SIGNALS:
    void connectivityRestored();

private Q_SLOTS:
    void prepareForSleep(bool sleeping);
};

} // namespace Platform
