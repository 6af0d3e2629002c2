#pragma once

#include <QCoroTask>
#include <QWidget>

class AppContext;
class QLineEdit;
class TntContentTree;

// The detail pane's Content tab: the torrent's content tree under a field that filters it by name,
// for torrents of thousands of files. A row renamed in the tree is renamed on the server; one the
// server refuses shows its old name again.
class TntContentTab : public QWidget
{
    Q_OBJECT

public:
    TntContentTab(AppContext &context, TntContentTree *tree, QWidget *parent);

    QLineEdit *filterField() const { return m_filter; }

private:
    QCoro::Task<> rename(QString oldPath, QString newPath, bool folder);

    AppContext &m_context;
    TntContentTree *m_tree;
    QLineEdit *m_filter;
};
