#include "ui/MetadataFetchStatus.h"

#include "core/TntMetadataFetch.h"
#include "support/Detached.h"

#include <QCoreApplication>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>

MetadataFetchStatus::MetadataFetchStatus(AppContext &context, QString magnet, QWidget *parent)
    : QWidget(parent)
    , m_context(context)
    , m_magnet(std::move(magnet))
    , m_text(new QLabel(this))
    , m_stop(new QPushButton(QCoreApplication::translate("MetadataFetchStatus", "Stop"), this))
{
    m_text->setObjectName(QStringLiteral("fetchStatus"));
    m_text->setWordWrap(true);
    m_stop->setObjectName(QStringLiteral("stopFetching"));
    m_stop->setToolTip(
        QCoreApplication::translate("MetadataFetchStatus", "Add the torrent without choosing its files"));
    auto *layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_text, 1);
    layout->addWidget(m_stop);
    m_tick.setInterval(std::chrono::seconds(1));
    connect(&m_tick, &QTimer::timeout, this, &MetadataFetchStatus::showElapsed);
    connect(m_stop, &QPushButton::clicked, this, [this] {
        end(QCoreApplication::translate("MetadataFetchStatus",
                                        "Metadata not fetched: the torrent is added with all its files."));
    });
}

void MetadataFetchStatus::start()
{
    m_fetching = new QObject(this);
    m_fetching->setObjectName(QStringLiteral("metadataFetch"));
    m_elapsed.start();
    m_tick.start();
    showElapsed();
    detached(fetch());
}

void MetadataFetchStatus::showElapsed()
{
    const qint64 seconds = m_elapsed.elapsed() / 1000;
    m_text->setText(QCoreApplication::translate("MetadataFetchStatus", "Fetching metadata… %1:%2")
                        .arg(seconds / 60)
                        .arg(seconds % 60, 2, 10, QLatin1Char('0')));
}

void MetadataFetchStatus::end(const QString &text)
{
    delete m_fetching;
    m_tick.stop();
    m_stop->hide();
    m_text->setText(text);
    m_text->setVisible(!text.isEmpty());
}

QCoro::Task<> MetadataFetchStatus::fetch()
{
    const QPointer<MetadataFetchStatus> self(this);
    std::optional<TntMetadata> metadata;
    try {
        QCoro::Task<std::optional<TntMetadata>> fetching = fetchTntMetadata(m_context, m_magnet, m_fetching);
        metadata = co_await std::move(fetching);
    } catch (const std::exception &error) {
        if (self && m_fetching)
            end(QCoreApplication::translate("MetadataFetchStatus", "Failed to fetch metadata: %1")
                    .arg(QString::fromUtf8(error.what())));
        co_return;
    }
    if (!self || !m_fetching || !metadata)
        co_return;
    end({});
    Q_EMIT fetched(*metadata);
}
