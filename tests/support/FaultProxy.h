#pragma once

#include <QElapsedTimer>
#include <QList>
#include <QObject>
#include <QPointer>
#include <QTcpServer>
#include <QTimer>

class QTcpSocket;

// A TCP proxy on 127.0.0.1 between the app and a real server that misbehaves on command. It runs in
// the thread that made it, so that thread must keep its event loop turning (QTRY_*, wait() do).
// Modes switch at runtime and take hold of the connections already open too:
//   pass       forwards both ways (the default)
//   refuse     stops listening: a new connection is refused by the system; open ones are reset
//   hold       accepts and never reads or forwards; open ones freeze where they are
//   slow       forwards the server's answers `bytesPerSecond` bytes a second, once a second
//   throttle   forwards them at `bytesPerSecond` per connection in slices of 10 ms, as a slow link would
//   cut        forwards until a connection has carried `cutAfter` more bytes of answers, then resets it;
//              after one cut it passes again
//   reset      resets every connection, open or new, without a word
//   blackHole  accepts and reads, never answers; open ones freeze
// Leaving a freezing mode lets the frozen connections carry on where they stopped.
class FaultProxy : public QObject
{
    Q_OBJECT

public:
    enum class Mode { pass, refuse, hold, slow, throttle, cut, reset, blackHole };

    explicit FaultProxy(quint16 upstreamPort, QObject *parent = nullptr);
    ~FaultProxy() override;

    // Empty on success, else why not.
    QString listen();
    quint16 port() const { return m_port; }

    Mode mode() const { return m_mode; }
    void setMode(Mode mode);
    void setBytesPerSecond(int bytes) { m_bytesPerSecond = bytes; }
    void setCutAfter(qint64 bytes) { m_cutAfter = bytes; }
    // Connections cut so far in `cut` mode.
    int cuts() const { return m_cuts; }

private:
    struct Link;

    void accept();
    void connectUpstream(Link *link);
    void forwardUp(Link &link);
    void forwardDown(Link &link, qint64 limit);
    void trickle();
    void drop(Link *link, bool hard);
    bool freezes() const { return m_mode == Mode::hold || m_mode == Mode::blackHole; }
    bool limits() const { return m_mode == Mode::slow || m_mode == Mode::throttle; }

    quint16 m_upstreamPort;
    quint16 m_port = 0;
    QTcpServer m_server;
    Mode m_mode = Mode::pass;
    int m_bytesPerSecond = 1;
    qint64 m_cutAfter = 0;
    int m_cuts = 0;
    QTimer m_trickle;
    QElapsedTimer m_sinceTrickle;
    QList<Link *> m_links;
};
