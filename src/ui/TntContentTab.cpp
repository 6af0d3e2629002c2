#include "ui/TntContentTab.h"

#include "core/AppContext.h"
#include "support/Detached.h"
#include "ui/TntContentTree.h"

#include <QCoreApplication>
#include <QLineEdit>
#include <QPointer>
#include <QVBoxLayout>

TntContentTab::TntContentTab(AppContext &context, TntContentTree *tree, QWidget *parent)
    : QWidget(parent)
    , m_context(context)
    , m_tree(tree)
    , m_filter(new QLineEdit(this))
{
    m_filter->setObjectName(QStringLiteral("contentFilter"));
    m_filter->setPlaceholderText(QCoreApplication::translate("TntContentTab", "Filter files..."));
    m_filter->setClearButtonEnabled(true);
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(2);
    layout->addWidget(m_filter);
    layout->addWidget(tree, 1);
    connect(m_filter, &QLineEdit::textChanged, tree, &TntContentTree::setNameFilter);
    connect(tree->contentModel(), &TntContentModel::renamed, this,
            [this](const QString &oldPath, const QString &newPath, bool folder) {
                detached(rename(oldPath, newPath, folder));
            });
}

QCoro::Task<> TntContentTab::rename(QString oldPath, QString newPath, bool folder)
{
    const QString hash = m_context.tntDetails().hash();
    if (hash.isEmpty())
        co_return;
    const QPointer<TntContentTab> self(this);
    QCoro::Task<bool> renaming = m_context.detailEdits().renamePath(
        hash, oldPath, newPath, folder ? TntDetailEdits::PathKind::folder : TntDetailEdits::PathKind::file);
    if (co_await std::move(renaming) || !self || m_context.tntDetails().hash() != hash)
        co_return;
    m_tree->contentModel()->renamePath(newPath, oldPath.section(u'/', -1));
}
