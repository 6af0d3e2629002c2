#include "ui/ReconnectionOverlay.h"

#include "core/AppContext.h"
#include "core/ReconnectionCountdown.h"

#include <QCoreApplication>
#include <QEvent>
#include <QFrame>
#include <QLabel>
#include <QPainter>
#include <QPushButton>
#include <QVBoxLayout>

ReconnectionOverlay::ReconnectionOverlay(AppContext &context, ReconnectionCountdown &countdown, QWidget *parent)
    : QWidget(parent)
    , m_context(context)
    , m_countdownLogic(countdown)
    , m_error(new QLabel(this))
    , m_countdown(new QLabel(this))
    , m_reconnect(new QPushButton(this))
{
    auto *panel = new QFrame(this);
    panel->setFrameShape(QFrame::StyledPanel);
    panel->setAutoFillBackground(true);
    panel->setMaximumWidth(420);
    m_error->setWordWrap(true);
    m_error->setAlignment(Qt::AlignCenter);
    m_countdown->setAlignment(Qt::AlignCenter);

    auto *panelLayout = new QVBoxLayout(panel);
    panelLayout->addWidget(m_error);
    panelLayout->addWidget(m_countdown);
    panelLayout->addWidget(m_reconnect, 0, Qt::AlignHCenter);
    auto *layout = new QVBoxLayout(this);
    layout->addStretch();
    layout->addWidget(panel, 0, Qt::AlignHCenter);
    layout->addStretch();

    connect(m_reconnect, &QPushButton::clicked, &m_countdownLogic, &ReconnectionCountdown::reconnectNow);
    connect(&m_countdownLogic, &ReconnectionCountdown::changed, this, &ReconnectionOverlay::refresh);
    connect(&m_context, &AppContext::connectionStateChanged, this, &ReconnectionOverlay::refresh);
    parent->installEventFilter(this);
    setGeometry(parent->rect());
    refresh();
}

bool ReconnectionOverlay::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == parentWidget() && event->type() == QEvent::Resize)
        setGeometry(parentWidget()->rect());
    return QWidget::eventFilter(watched, event);
}

void ReconnectionOverlay::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.fillRect(rect(), QColor(0, 0, 0, 96));
}

void ReconnectionOverlay::refresh()
{
    const bool lost = m_context.connectionLossCount() >= 1;
    setVisible(lost);
    if (!lost)
        return;
    raise();
    const QString &error = m_context.connectionError();
    m_error->setText(
        error.isEmpty() ? QCoreApplication::translate("ReconnectionOverlay", "An unknown error has occurred") : error);

    const bool reconnecting = m_context.isReconnecting();
    if (m_countdownLogic.isStopped())
        m_countdown->setText(QCoreApplication::translate("ReconnectionOverlay", "Automatic reconnection stopped"));
    else if (m_countdownLogic.isRunning())
        m_countdown->setText(QCoreApplication::translate("ReconnectionOverlay", "Reconnecting in %1 s")
                                 .arg(m_countdownLogic.secondsLeft()));
    else
        m_countdown->clear();
    m_countdown->setVisible(!m_countdown->text().isEmpty() && !reconnecting);
    m_reconnect->setText(reconnecting ? QCoreApplication::translate("ReconnectionOverlay", "Reconnecting…")
                                      : QCoreApplication::translate("ReconnectionOverlay", "Reconnect now"));
    m_reconnect->setEnabled(!reconnecting);
}
