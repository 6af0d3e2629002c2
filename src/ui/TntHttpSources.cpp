#include "ui/TntHttpSources.h"

#include "core/AppContext.h"
#include "support/Detached.h"
#include "ui/TntCommands.h"

#include <QClipboard>
#include <QCoreApplication>
#include <QGuiApplication>
#include <QMenu>

TntHttpSources::TntHttpSources(AppContext &context, TntCommands &commands, QWidget *parent)
    : QListWidget(parent)
    , m_context(context)
    , m_commands(commands)
{
    setObjectName(QStringLiteral("tntHttpSources"));
    setSelectionMode(QAbstractItemView::ExtendedSelection);
    setContextMenuPolicy(Qt::CustomContextMenu);
    connect(this, &QWidget::customContextMenuRequested, this,
            [this](const QPoint &at) { menu()->popup(viewport()->mapToGlobal(at)); });
    connect(&context.tntDetails(), &TntDetailContext::webSeedsChanged, this, &TntHttpSources::showWebSeeds);
    showWebSeeds();
}

void TntHttpSources::showWebSeeds()
{
    clear();
    for (const API::WebSeed &seed : m_context.tntDetails().webSeeds())
        addItem(seed.url);
}

QStringList TntHttpSources::selectedUrls() const
{
    QStringList urls;
    for (const QListWidgetItem *item : selectedItems())
        urls << item->text();
    return urls;
}

QMenu *TntHttpSources::menu()
{
    const QString hash = m_context.tntDetails().hash();
    const QStringList urls = selectedUrls();
    const bool edits = m_context.serverFeatures().editsWebSeeds();
    auto *menu = new QMenu(this);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    QAction *add = menu->addAction(QCoreApplication::translate("TntHttpSources", "Add web seeds..."), this,
                                   [this, hash] { m_commands.addWebSeeds(hash); });
    add->setEnabled(!hash.isEmpty());
    QAction *edit = menu->addAction(QCoreApplication::translate("TntHttpSources", "Edit web seed URL..."), this,
                                    [this, hash, urls] { m_commands.editWebSeed(hash, urls.value(0)); });
    edit->setEnabled(urls.size() == 1);
    QAction *copy = menu->addAction(QCoreApplication::translate("TntHttpSources", "Copy web seed URL"), this,
                                    [urls] { QGuiApplication::clipboard()->setText(urls.join(u'\n')); });
    copy->setEnabled(!urls.isEmpty());
    QAction *remove =
        menu->addAction(urls.size() > 1 ? QCoreApplication::translate("TntHttpSources", "Remove web seeds")
                                        : QCoreApplication::translate("TntHttpSources", "Remove web seed"),
                        this, [this, hash, urls] { detached(m_context.detailEdits().removeWebSeeds(hash, urls)); });
    remove->setEnabled(!urls.isEmpty());
    // Older servers only list web seeds.
    for (QAction *change : {add, edit, remove})
        change->setVisible(edits);
    return menu;
}
