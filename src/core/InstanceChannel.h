#pragma once

#include <QLocalServer>
#include <QObject>
#include <QStringList>

class QLocalSocket;

// Keeps Quillo to one running instance per user: a second launch hands its torrents (files and
// links) to the first over a local socket and ends.
class InstanceChannel : public QObject
{
    Q_OBJECT

public:
    explicit InstanceChannel(QString name = defaultName(), QObject *parent = nullptr);

    static QString defaultName();
    // Hands `sources` to the instance listening under `name`; false when none listens.
    static bool sendToRunning(const QStringList &sources, const QString &name = defaultName());
    // Becomes the instance that receives; false when the name cannot be taken.
    bool listen();

Q_SIGNALS:
    // A second launch's sources; empty when it was started without any.
    void received(const QStringList &sources);

private:
    void accept();
    void read(QLocalSocket *socket);

    QString m_name;
    QLocalServer m_server;
};
