#pragma once

#include "model/SearchJob.h"

#include <QWidget>

class AppContext;
class QLabel;
class QLineEdit;
class QPushButton;
class QSortFilterProxyModel;
class QTableView;
class SearchRunner;

// One search in its tab: its state and count, a filter by name, the results sortable by every
// column, and what can be done with a result: hand its link to the add flow, or open its page.
// Destroying the tab deletes the search on the server.
class SearchTab : public QWidget
{
    Q_OBJECT

public:
    SearchTab(AppContext &context, SearchJob::Query query, QWidget *parent = nullptr);
    ~SearchTab() override;

    SearchJob &job() { return *m_job; }
    SearchRunner &runner() { return *m_runner; }
    QTableView *view() const { return m_view; }
    QSortFilterProxyModel *proxy() const { return m_proxy; }
    QLineEdit *filterField() const { return m_filter; }
    QLabel *statusLabel() const { return m_status; }
    QPushButton *stopButton() const { return m_stop; }

    // "Running, results: 12", "Finished, results: 40", "Failed: …".
    QString statusText() const;
    // The selected results' file URLs and description pages, in the view's order.
    QStringList selectedFileUrls() const;
    QStringList selectedDescriptionLinks() const;

Q_SIGNALS:
    void downloadRequested(const QStringList &fileUrls);
    // The tab's title or status changed.
    void statusChanged();

private:
    void showStatus();
    void showSelection();
    QStringList selected(QString API::SearchResult::*field) const;

    SearchJob *m_job;
    SearchRunner *m_runner;
    QSortFilterProxyModel *m_proxy;
    QLineEdit *m_filter;
    QTableView *m_view;
    QLabel *m_status;
    QPushButton *m_stop;
    QPushButton *m_download;
    QPushButton *m_openPage;
};
