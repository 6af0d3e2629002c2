#pragma once

#include <QObject>

class AppSettings;
class TntCollection;
class UserDefaults;

// Tells the user when a download finishes: one notification per torrent, and a request for the
// window's attention when the settings want it.
class CompletionNotifier : public QObject
{
    Q_OBJECT

public:
    static constexpr auto threadId = "Quillo.Qbt.Nox.Finish.Download";

    CompletionNotifier(TntCollection &collection, AppSettings &settings, QObject *parent = nullptr);

    static QString body(const QString &torrentName);

Q_SIGNALS:
    void attentionRequested();

private:
    void notify(const QStringList &hashes);

    TntCollection &m_collection;
    AppSettings &m_settings;
};
