#pragma once

#include "adding/FileTreeBuilder.h"
#include "adding/TntMetadata.h"

#include <QCoroTask>
#include <QDialog>
#include <QHash>

class AddTntOptionsForm;
class AppContext;
class QLabel;
class QPushButton;
class TntContentTree;

// The add-torrent window of one .torrent file or magnet link: what it holds, which of its files to
// download, and the options. The tree is built off the main thread; for a file, Add waits for it,
// so that the selection sent is the one the user saw, and is refused while no file is chosen. A
// magnet's metadata is asked of the server, which must fetch it (API 2.15 and later); the magnet
// may be added before it comes, without a file selection.
class AddTntWindow : public QDialog
{
    Q_OBJECT

public:
    // A .torrent file comes with its metadata; a magnet link without.
    AddTntWindow(AppContext &context, QString source, std::optional<TntMetadata> metadata, QWidget *parent = nullptr);

    const QString &source() const { return m_source; }
    bool isTntFile() const { return m_isTntFile; }
    const TntMetadata &metadata() const { return m_metadata; }
    AddTntOptionsForm *optionsForm() const { return m_options; }
    TntContentTree *contentTree() const { return m_tree; }
    QPushButton *addButton() const { return m_add; }
    // The id the server will list the torrent under: from its metadata, or a magnet's own hash while
    // the metadata has not come; empty when neither is known.
    QString tntHash() const;
    // The file selection in index order: 0 for a file not to download; empty while not known.
    QList<int> filePriorities() const;

private:
    QWidget *makePreview();
    void showPreview();
    QCoro::Task<> buildTree();
    QCoro::Task<> loadDefaultSavePath();
    void enableAdd();

    AppContext &m_context;
    QString m_source;
    bool m_isTntFile;
    TntMetadata m_metadata;
    FileTreeBuilder m_builder;
    AddTntOptionsForm *m_options;
    TntContentTree *m_tree;
    QPushButton *m_add;
    QLabel *m_status;
    QWidget *m_savePathFailure; // why the server's default save path could not be read, and a retry
    QLabel *m_savePathError;
    QPushButton *m_retrySavePath;
    QHash<QString, QLabel *> m_values;
    bool m_treeReady = false;
    bool m_hasMetadata;
};
