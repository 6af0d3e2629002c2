#include "ui/AddTntWindow.h"

#include "adding/TntLinks.h"
#include "api/Client.h"
#include "api/Endpoint.h"
#include "core/AppContext.h"
#include "support/CheckedMath.h"
#include "support/Detached.h"
#include "ui/AddTntOptionsForm.h"
#include "ui/MetadataFetchStatus.h"
#include "ui/TntContentTree.h"

#include <QCoreApplication>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLocale>
#include <QPointer>
#include <QPushButton>
#include <QRegularExpression>
#include <QSplitter>
#include <QVBoxLayout>

namespace {

// The torrent's files as the tree builder reads them; a single-file torrent is its own one file.
QList<API::File> filesOf(const TntMetadata &metadata)
{
    QList<API::File> files;
    if (!metadata.info)
        return files;
    const TntMetadata::Info &info = *metadata.info;
    if (info.files.isEmpty()) {
        files.append(API::File{.index = 0, .name = info.name, .size = info.length, .priority = 1});
        return files;
    }
    files.reserve(info.files.size());
    for (qsizetype index = 0; index < info.files.size(); ++index)
        files.append(
            API::File{.index = index, .name = info.files[index].path, .size = info.files[index].length, .priority = 1});
    return files;
}

qint64 totalSize(const TntMetadata &metadata)
{
    if (!metadata.info)
        return 0;
    if (metadata.info->files.isEmpty())
        return metadata.info->length;
    // The metadata was refused at reading if its sizes overflow: a sum that does not fit here is a fault.
    qint64 sum = 0;
    for (const TntMetadata::Info::File &file : metadata.info->files)
        sum = CheckedMath::add(sum, file.length);
    return sum;
}

QLabel *value(const QString &text, const char *name, QWidget *parent)
{
    auto *label = new QLabel(text, parent);
    label->setObjectName(QString::fromLatin1(name));
    label->setTextInteractionFlags(Qt::TextSelectableByMouse);
    label->setWordWrap(true);
    return label;
}

} // namespace

AddTntWindow::AddTntWindow(AppContext &context, QString source, std::optional<TntMetadata> metadata, QWidget *parent)
    : QDialog(parent)
    , m_context(context)
    , m_source(std::move(source))
    , m_isTntFile(metadata.has_value())
    , m_metadata(metadata.value_or(TntMetadata()))
    , m_options(new AddTntOptionsForm(context, m_metadata.info ? m_metadata.info->name : QString(), this))
    , m_tree(new TntContentTree(context.settings().defaults(), this))
    , m_status(new QLabel(this))
    , m_savePathFailure(new QWidget(this))
    , m_savePathError(new QLabel(m_savePathFailure))
    , m_retrySavePath(new QPushButton(QCoreApplication::translate("AddTntWindow", "Try Again"), m_savePathFailure))
    , m_hasMetadata(m_isTntFile)
{
    setWindowTitle(QCoreApplication::translate("AddTntWindow", "Add Torrent"));
    resize(900, 640);

    auto *buttons = new QDialogButtonBox(this);
    m_add = buttons->addButton(QCoreApplication::translate("AddTntWindow", "Add"), QDialogButtonBox::AcceptRole);
    m_add->setDefault(true);
    m_add->setEnabled(!m_isTntFile);
    buttons->addButton(QDialogButtonBox::Cancel);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);

    auto *left = new QWidget(this);
    auto *leftLayout = new QVBoxLayout(left);
    leftLayout->setContentsMargins(0, 0, 0, 0);
    leftLayout->addWidget(makePreview());
    m_status->setObjectName(QStringLiteral("status"));
    m_status->setWordWrap(true);
    leftLayout->addWidget(m_status);
    leftLayout->addWidget(m_tree, 1);
    auto *split = new QSplitter(Qt::Horizontal, this);
    split->addWidget(left);
    split->addWidget(m_options);
    split->setStretchFactor(0, 1);
    split->setChildrenCollapsible(false);

    m_savePathError->setObjectName(QStringLiteral("savePathError"));
    m_savePathError->setWordWrap(true);
    m_savePathError->setTextInteractionFlags(Qt::TextSelectableByMouse);
    m_retrySavePath->setObjectName(QStringLiteral("retrySavePath"));
    auto *failureLayout = new QHBoxLayout(m_savePathFailure);
    failureLayout->setContentsMargins(0, 0, 0, 0);
    failureLayout->addWidget(m_savePathError, 1);
    failureLayout->addWidget(m_retrySavePath);
    m_savePathFailure->hide();
    connect(m_retrySavePath, &QPushButton::clicked, this, [this] {
        m_savePathFailure->hide();
        detached(loadDefaultSavePath());
    });

    auto *layout = new QVBoxLayout(this);
    layout->addWidget(split, 1);
    layout->addWidget(m_savePathFailure);
    layout->addWidget(buttons);

    connect(m_tree->contentModel(), &QAbstractItemModel::dataChanged, this, &AddTntWindow::enableAdd);
    if (m_isTntFile) {
        showPreview();
        m_status->hide();
        detached(buildTree());
    } else {
        auto *fetch = new MetadataFetchStatus(m_context, m_source, this);
        m_status->hide();
        leftLayout->insertWidget(leftLayout->indexOf(m_status), fetch);
        connect(fetch, &MetadataFetchStatus::fetched, this, [this](const TntMetadata &fetched) {
            m_metadata = fetched;
            m_hasMetadata = true;
            showPreview();
            detached(buildTree());
        });
        fetch->start();
    }
    detached(loadDefaultSavePath());
}

QWidget *AddTntWindow::makePreview()
{
    auto *preview = new QWidget(this);
    auto *form = new QFormLayout(preview);
    form->setContentsMargins(0, 0, 0, 0);
    const QList<std::pair<QString, const char *>> rows{
        {QCoreApplication::translate("AddTntWindow", "Name:"), "name"},
        {QCoreApplication::translate("AddTntWindow", "Size:"), "size"},
        {QCoreApplication::translate("AddTntWindow", "Info hash:"), "hash"},
        {QCoreApplication::translate("AddTntWindow", "Comment:"), "comment"},
        {QCoreApplication::translate("AddTntWindow", "Created by:"), "createdBy"},
        {QCoreApplication::translate("AddTntWindow", "Created on:"), "creationDate"},
        {QCoreApplication::translate("AddTntWindow", "Private:"), "private"}};
    for (const auto &[title, name] : rows) {
        QLabel *label = value(QString(), name, preview);
        m_values.insert(label->objectName(), label);
        form->addRow(title, label);
    }
    return preview;
}

void AddTntWindow::showPreview()
{
    const QLocale locale;
    const TntMetadata &m = m_metadata;
    const auto show = [this](const char *name, const QString &text) {
        m_values.value(QString::fromLatin1(name))->setText(text);
    };
    show("name", m.info ? m.info->name : QString());
    show("size", locale.formattedDataSize(totalSize(m), 1, QLocale::DataSizeIecFormat));
    show("hash", m.hash);
    show("comment", m.comment);
    show("createdBy", m.createdBy);
    show("creationDate", locale.toString(m.creationDate.toDateTime().toLocalTime(), QLocale::LongFormat));
    show("private", m.info && m.info->isPrivate ? QCoreApplication::translate("AddTntWindow", "Yes")
                                                : QCoreApplication::translate("AddTntWindow", "No"));
}

QString AddTntWindow::tntHash() const
{
    // The loading record's placeholder, or a server's record without a hash, is no id.
    static const QRegularExpression id(QStringLiteral("^[0-9a-f]{40}$"));
    if (m_hasMetadata && id.match(m_metadata.hash).hasMatch())
        return m_metadata.hash;
    return m_isTntFile ? QString() : TntLinks::infoHashOf(m_source);
}

QList<int> AddTntWindow::filePriorities() const
{
    if (!m_treeReady)
        return {};
    return m_tree->contentModel()->filePriorities(
        m_metadata.info && !m_metadata.info->files.isEmpty() ? m_metadata.info->files.size() : 1);
}

QCoro::Task<> AddTntWindow::buildTree()
{
    const QPointer<AddTntWindow> self(this);
    QList<API::File> files = filesOf(m_metadata);
    // A tree of many thousand files takes a moment to build: say why the list is still empty.
    constexpr qsizetype manyFiles = 2000;
    if (files.size() >= manyFiles) {
        m_status->setText(QCoreApplication::translate("AddTntWindow", "Listing %L1 files…").arg(files.size()));
        m_status->show();
    }
    QCoro::Task<FileTreeBuilder::Nodes> building = m_builder.build(std::move(files));
    const FileTreeBuilder::Nodes nodes = co_await std::move(building);
    if (!self)
        co_return;
    m_status->hide();
    m_tree->setNodes(nodes);
    m_treeReady = true;
    enableAdd();
}

void AddTntWindow::enableAdd()
{
    // A link without its metadata yet is added as it is.
    m_add->setEnabled(m_treeReady ? m_tree->contentModel()->hasChosenFiles() : !m_isTntFile);
}

QCoro::Task<> AddTntWindow::loadDefaultSavePath()
{
    API::Client *client = m_context.client();
    if (!client)
        co_return;
    const QPointer<AddTntWindow> self(this);
    QString path;
    std::optional<QString> failure;
    try {
        QCoro::Task<QString> reading = client->performText(API::Endpoint::Application::defaultSavePath());
        path = co_await std::move(reading);
    } catch (const std::exception &error) {
        failure = QString::fromUtf8(error.what());
    }
    if (!self)
        co_return;
    if (failure) {
        // Without it the server's own default applies; the user may type a path or try again.
        m_savePathError->setText(
            QCoreApplication::translate("AddTntWindow", "Failed to get the default save path: %1").arg(*failure));
        m_savePathFailure->show();
        co_return;
    }
    m_options->setSavePath(path);
}
