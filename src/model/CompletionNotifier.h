#pragma once

#include <QObject>
#include <QSet>
#include <QStringList>

class AppSettings;
class TntCollection;

// Tells the user when a download finishes: one notification per torrent and completion, and one
// request for the window's attention per answer that finished any, as the settings want them.
// A torrent is remembered as downloading while it is in a downloading state, and is announced when
// it first reaches a seeding or finished state, whatever it passed through on the way (moving its
// files, checking them). Torrents already complete when first seen are not announced.
class CompletionNotifier : public QObject
{
    Q_OBJECT

public:
    static constexpr auto threadId = "Quillo.Qbt.Nox.Finish.Download";

    CompletionNotifier(TntCollection &collection, AppSettings &settings, QObject *parent = nullptr);

    static QString body(const QString &torrentName);
    // The body of the summary: the first few names, and how many more.
    static QString summaryBody(const QStringList &torrentNames);

    // Downloads found finished between beginCatchUp() and endCatchUp() finished while Quillo was
    // away (closed, or showing another server): they are told in one notification, not one each.
    void beginCatchUp() { m_catchingUp = true; }
    void endCatchUp();

Q_SIGNALS:
    void attentionRequested();

private:
    // Follows the torrent at `row`; true when this is its download finishing.
    bool follow(qsizetype row);
    void announce(const QStringList &hashes);
    // One notification per title and body, as the settings want them, and one request for attention.
    void tell(const QList<std::pair<QString, QString>> &notices);

    TntCollection &m_collection;
    AppSettings &m_settings;
    QSet<QString> m_downloading;
    qsizetype m_firstInserted = 0;
    bool m_catchingUp = false;
    QStringList m_caughtUp; // names
};
