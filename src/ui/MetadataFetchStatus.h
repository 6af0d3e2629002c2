#pragma once

#include "adding/TntMetadata.h"

#include <QCoroTask>
#include <QElapsedTimer>
#include <QPointer>
#include <QTimer>
#include <QWidget>

class AppContext;
class QLabel;
class QPushButton;

// The add window's line while the server fetches a magnet's metadata: for how long so far, and
// Stop, since a magnet with few peers may take minutes or never come. Stopped, the magnet is
// added as it is, with all its files.
class MetadataFetchStatus : public QWidget
{
    Q_OBJECT

public:
    MetadataFetchStatus(AppContext &context, QString magnet, QWidget *parent = nullptr);

    void start();
    QLabel *text() const { return m_text; }
    QPushButton *stopButton() const { return m_stop; }

Q_SIGNALS:
    void fetched(const TntMetadata &metadata);

private:
    QCoro::Task<> fetch();
    void showElapsed();
    void end(const QString &text);

    AppContext &m_context;
    QString m_magnet;
    QLabel *m_text;
    QPushButton *m_stop;
    QTimer m_tick;
    QElapsedTimer m_elapsed;
    QPointer<QObject> m_fetching; // the fetch asks again while this lives
};
