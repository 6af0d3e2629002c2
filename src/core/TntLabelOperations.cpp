#include "core/TntOperations.h"

#include "api/Endpoint.h"
#include "model/ServerLabels.h"
#include "model/TntCollection.h"
#include "support/Sorted.h"

#include <algorithm>

#include <QCoreApplication>

// Categories and tags: of the server's list, and of torrents.

namespace Endpoint = API::Endpoint;
using Features = API::ServerFeatures;

namespace {

const QString tagSeparator = QStringLiteral(", ");

QStringList tagList(const QString &tags)
{
    return tags.isEmpty() ? QStringList() : tags.split(tagSeparator);
}

// The server keeps tags sorted without regard to case.
QString tagText(QStringList tags)
{
    std::sort(tags.begin(), tags.end(),
              [](const QString &a, const QString &b) { return a.compare(b, Qt::CaseInsensitive) < 0; });
    return tags.join(tagSeparator);
}

} // namespace

QCoro::Task<> TntOperations::setCategory(TntTargets targets, QString category)
{
    if (targets.isNone())
        return nothing();
    return run({QCoreApplication::translate("TntLabelOperations", "Failed to set torrent category."),
                [targets, category](const Features &) {
                    return Endpoint::TntManagement::setCategory(targets.wireList(), category);
                },
                [this, targets, category](const Features &) {
                    m_tnts.editLocally(targets, [&category](TntModel &tnt) { return tnt.setCategory(category); });
                }});
}

QCoro::Task<> TntOperations::createCategory(QString name, QString savePath)
{
    return run({QCoreApplication::translate("TntLabelOperations", "Failed to create category."),
                [name, savePath](const Features &) { return Endpoint::TntManagement::createCategory(name, savePath); },
                [this, name, savePath](const Features &) { m_labels.insertCategory(name, savePath); }});
}

QCoro::Task<> TntOperations::editCategory(QString name, QString savePath)
{
    return run({QCoreApplication::translate("TntLabelOperations", "Failed to edit category."),
                [name, savePath](const Features &) { return Endpoint::TntManagement::editCategory(name, savePath); }});
}

QCoro::Task<> TntOperations::removeCategories(QSet<QString> names)
{
    return run({QCoreApplication::translate("TntLabelOperations", "Failed to remove categories."),
                [list = sorted(names)](const Features &) { return Endpoint::TntManagement::removeCategories(list); },
                [this, names](const Features &) { m_labels.removeCategories(names); }});
}

QCoro::Task<> TntOperations::addTags(TntTargets targets, QSet<QString> tags)
{
    if (targets.isNone())
        return nothing();
    return run({QCoreApplication::translate("TntLabelOperations", "Failed to add tags."),
                [targets, list = sorted(tags)](const Features &) {
                    return Endpoint::TntManagement::addTags(targets.wireList(), list);
                },
                [this, targets, tags](const Features &) {
                    m_tnts.editLocally(targets, [&tags](TntModel &tnt) {
                        QStringList merged = tagList(tnt.tags());
                        for (const QString &tag : tags) {
                            if (!merged.contains(tag))
                                merged.append(tag);
                        }
                        return tnt.setTags(tagText(std::move(merged)));
                    });
                }});
}

QCoro::Task<> TntOperations::removeTags(TntTargets targets, QSet<QString> tags)
{
    if (targets.isNone())
        return nothing();
    return run({QCoreApplication::translate("TntLabelOperations", "Failed to remove tags."),
                [targets, list = sorted(tags)](const Features &) {
                    return Endpoint::TntManagement::removeTags(targets.wireList(), list);
                },
                [this, targets, tags](const Features &) {
                    m_tnts.editLocally(targets, [&tags](TntModel &tnt) {
                        QStringList kept = tagList(tnt.tags());
                        kept.removeIf([&tags](const QString &tag) { return tags.contains(tag); });
                        return tnt.setTags(tagText(std::move(kept)));
                    });
                }});
}

QCoro::Task<> TntOperations::createTags(QSet<QString> tags)
{
    return run({QCoreApplication::translate("TntLabelOperations", "Failed to create tags."),
                [list = sorted(tags)](const Features &) { return Endpoint::TntManagement::createTags(list); },
                [this, list = sorted(tags)](const Features &) { m_labels.insertTags(list); }});
}

QCoro::Task<> TntOperations::deleteTags(QSet<QString> tags)
{
    return run({QCoreApplication::translate("TntLabelOperations", "Failed to delete tags."),
                [list = sorted(tags)](const Features &) { return Endpoint::TntManagement::deleteTags(list); },
                [this, tags](const Features &) { m_labels.removeTags(tags); }});
}
