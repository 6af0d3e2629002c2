#pragma once

#include <QWidget>

class AppContext;
class QComboBox;
class QLabel;
class QLineEdit;
class QPushButton;
class QStackedWidget;
class QTabWidget;
class SearchTab;
class TntAddingFlow;

// Searching through the server's plugins, in a window of its own: a pattern with its category and
// plugins, each search in a tab whose results stream in while the window shows. A server that cannot
// search (no Python) gets a plain explanation instead. Results chosen for download go to the add flow.
class SearchWindow : public QWidget
{
    Q_OBJECT

public:
    SearchWindow(AppContext &context, TntAddingFlow &adding, QWidget *parent = nullptr);
    ~SearchWindow() override;

    QLineEdit *patternField() const { return m_pattern; }
    QComboBox *categoryBox() const { return m_category; }
    QComboBox *pluginBox() const { return m_plugin; }
    QPushButton *searchButton() const { return m_search; }
    QTabWidget *tabs() const { return m_tabs; }
    // The explanation shown instead of the search, when there is one.
    QLabel *messageLabel() const { return m_message; }
    bool showsSearch() const;
    SearchTab *tab(int index) const;

    // A tab for a search of the field's pattern with the chosen category and plugins.
    SearchTab *startSearch();
    void closeTab(int index);
    void showPlugins();

protected:
    void showEvent(QShowEvent *event) override;
    void hideEvent(QHideEvent *event) override;

private:
    void readPlugins();
    void showPluginState();
    void fillCategories();
    void showSearchEnabled();
    void setTabsShown(bool shown);
    void keepColumns(const SearchTab *tab);

    AppContext &m_context;
    TntAddingFlow &m_adding;
    QStackedWidget *m_pages;
    QLabel *m_message;
    QLineEdit *m_pattern;
    QComboBox *m_category;
    QComboBox *m_plugin;
    QPushButton *m_search;
    QPushButton *m_plugins;
    QLabel *m_hint;
    QTabWidget *m_tabs;
    QString m_readFailure;
    bool m_reading = false;
};
