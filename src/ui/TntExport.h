#pragma once

#include <QCoroTask>
#include <QObject>
#include <QStringList>

class AppContext;
class QWidget;

// Saves torrents' .torrent files, as the server keeps them, on this computer: one where the user
// chooses, several into a chosen folder named after each torrent. A name already there is kept
// and the new file numbered; nothing is overwritten unasked.
class TntExport : public QObject
{
    Q_OBJECT

public:
    TntExport(AppContext &context, QWidget *window);

    // Opens the save dialog (objectName "exportDialog"); the files are written once it is accepted.
    void choose(const QStringList &hashes);
    // Writes each torrent's file into `folder`.
    QCoro::Task<> writeInto(QString folder, QStringList hashes);

private:
    QCoro::Task<> write(QString path, QString hash);
    bool save(const QString &path, const QByteArray &bytes);
    QString fileName(const QString &hash) const;

    AppContext &m_context;
    QWidget *m_window;
};
