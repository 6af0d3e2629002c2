#pragma once

#include "adding/FileTreeBuilder.h"
#include "adding/TntMetadata.h"

#include <QCoroTask>
#include <QDialog>

class AddTntOptionsForm;
class AppContext;
class QPushButton;
class TntContentTree;

// The add-torrent window of one .torrent file: what the file holds, which of its files to
// download, and the options. The tree is built off the main thread; Add waits for it, so that the
// selection sent is the one the user saw, and is refused while no file is chosen.
class AddTntWindow : public QDialog
{
    Q_OBJECT

public:
    AddTntWindow(AppContext &context, QString tntFile, TntMetadata metadata, QWidget *parent = nullptr);

    const QString &tntFile() const { return m_tntFile; }
    const TntMetadata &metadata() const { return m_metadata; }
    AddTntOptionsForm *optionsForm() const { return m_options; }
    TntContentTree *contentTree() const { return m_tree; }
    QPushButton *addButton() const { return m_add; }
    // The file selection in index order: 0 for a file not to download.
    QList<int> filePriorities() const;

private:
    QWidget *makePreview();
    QCoro::Task<> buildTree();
    QCoro::Task<> loadDefaultSavePath();
    void enableAdd();

    AppContext &m_context;
    QString m_tntFile;
    TntMetadata m_metadata;
    FileTreeBuilder m_builder;
    AddTntOptionsForm *m_options;
    TntContentTree *m_tree;
    QPushButton *m_add;
    bool m_treeReady = false;
};
