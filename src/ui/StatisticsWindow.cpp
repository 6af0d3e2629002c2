#include "ui/StatisticsWindow.h"

#include "model/GlobalTransferInfo.h"
#include "ui/TntTableModel.h"

#include <QCoreApplication>
#include <QFormLayout>
#include <QGroupBox>
#include <QLabel>
#include <QVBoxLayout>

namespace {

using Direction = GlobalTransferInfo::TransferDirection;

struct Row
{
    const char *title;
    QString (*value)(const GlobalTransferInfo &);
};

struct Group
{
    const char *title;
    std::initializer_list<Row> rows;
};

// The server's percentage texts, with the sign the server leaves out.
QString percentText(const QString &value)
{
    return value.isEmpty() ? QStringLiteral("–") : value + u'%';
}

const Group groups[] = {
    {QT_TRANSLATE_NOOP("StatisticsWindow", "User statistics"),
     {{QT_TRANSLATE_NOOP("StatisticsWindow", "All-time upload"),
       [](const GlobalTransferInfo &t) { return TntFormat::size(t.alltimeTotal(Direction::up)); }},
      {QT_TRANSLATE_NOOP("StatisticsWindow", "All-time download"),
       [](const GlobalTransferInfo &t) { return TntFormat::size(t.alltimeTotal(Direction::down)); }},
      {QT_TRANSLATE_NOOP("StatisticsWindow", "All-time share ratio"),
       [](const GlobalTransferInfo &t) { return t.globalRatio(); }},
      {QT_TRANSLATE_NOOP("StatisticsWindow", "Session waste"),
       [](const GlobalTransferInfo &t) { return TntFormat::size(t.statistics().totalWastedSession); }},
      {QT_TRANSLATE_NOOP("StatisticsWindow", "Connected peers"),
       [](const GlobalTransferInfo &t) { return QString::number(t.statistics().totalPeerConnections); }}}},
    {QT_TRANSLATE_NOOP("StatisticsWindow", "Cache statistics"),
     {{QT_TRANSLATE_NOOP("StatisticsWindow", "Read cache hits"),
       [](const GlobalTransferInfo &t) { return percentText(t.statistics().readCacheHits); }},
      {QT_TRANSLATE_NOOP("StatisticsWindow", "Total buffer size"),
       [](const GlobalTransferInfo &t) { return TntFormat::size(t.statistics().totalBuffersSize); }}}},
    {QT_TRANSLATE_NOOP("StatisticsWindow", "Performance statistics"),
     {{QT_TRANSLATE_NOOP("StatisticsWindow", "Write cache overload"),
       [](const GlobalTransferInfo &t) { return percentText(t.statistics().writeCacheOverload); }},
      {QT_TRANSLATE_NOOP("StatisticsWindow", "Read cache overload"),
       [](const GlobalTransferInfo &t) { return percentText(t.statistics().readCacheOverload); }},
      {QT_TRANSLATE_NOOP("StatisticsWindow", "Queued I/O jobs"),
       [](const GlobalTransferInfo &t) { return QString::number(t.statistics().queuedIoJobs); }},
      {QT_TRANSLATE_NOOP("StatisticsWindow", "Average time in queue"),
       [](const GlobalTransferInfo &t) {
           return QCoreApplication::translate("StatisticsWindow", "%1 ms").arg(t.statistics().averageTimeQueue);
       }},
      {QT_TRANSLATE_NOOP("StatisticsWindow", "Total queued size"),
       [](const GlobalTransferInfo &t) { return TntFormat::size(t.statistics().totalQueuedSize); }}}},
};

} // namespace

StatisticsWindow::StatisticsWindow(const GlobalTransferInfo &transfer, QWidget *parent)
    : QDialog(parent)
    , m_transfer(transfer)
{
    setObjectName(QStringLiteral("statistics"));
    setWindowTitle(QCoreApplication::translate("StatisticsWindow", "Statistics"));
    setAttribute(Qt::WA_DeleteOnClose);
    auto *layout = new QVBoxLayout(this);
    for (const Group &group : groups) {
        auto *box = new QGroupBox(QCoreApplication::translate("StatisticsWindow", group.title), this);
        auto *form = new QFormLayout(box);
        for (const Row &row : group.rows)
            form->addRow(QCoreApplication::translate("StatisticsWindow", row.title) + u':', new QLabel(box));
        m_groups.append(form);
        layout->addWidget(box);
    }
    connect(&transfer, &GlobalTransferInfo::changed, this, &StatisticsWindow::refresh);
    refresh();
}

void StatisticsWindow::refresh()
{
    for (qsizetype at = 0; at < m_groups.size(); ++at) {
        int row = 0;
        for (const Row &shown : groups[at].rows) {
            auto *value = static_cast<QLabel *>(m_groups[at]->itemAt(row++, QFormLayout::FieldRole)->widget());
            value->setText(shown.value(m_transfer));
        }
    }
}

QString StatisticsWindow::text() const
{
    QStringList lines;
    for (const QFormLayout *form : m_groups) {
        for (int row = 0; row < form->rowCount(); ++row) {
            const auto *title = static_cast<QLabel *>(form->itemAt(row, QFormLayout::LabelRole)->widget());
            const auto *value = static_cast<QLabel *>(form->itemAt(row, QFormLayout::FieldRole)->widget());
            lines << title->text() + u' ' + value->text();
        }
    }
    return lines.join(u'\n');
}
