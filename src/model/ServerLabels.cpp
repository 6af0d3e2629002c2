#include "model/ServerLabels.h"

void ServerLabels::apply(const API::MainData &data)
{
    const bool full = data.fullUpdate.value_or(false);
    bool changed = full;
    if (full) {
        m_categories.clear();
        m_tags.clear();
    }
    for (auto it = data.categories.cbegin(); it != data.categories.cend(); ++it) {
        API::Category &category = m_categories[it.key()];
        category.name = it->name.has_value() ? it->name : category.name.value_or(it.key());
        if (it->savePath)
            category.savePath = it->savePath;
        changed = true;
    }
    for (const QString &name : data.categoriesRemoved)
        changed |= m_categories.remove(name) > 0;
    for (const QString &tag : data.tags) {
        if (!m_tags.contains(tag)) {
            m_tags.append(tag);
            changed = true;
        }
    }
    for (const QString &tag : data.tagsRemoved)
        changed |= m_tags.removeAll(tag) > 0;
    if (changed)
        Q_EMIT this->changed();
}

void ServerLabels::insertCategory(const QString &name, const QString &savePath)
{
    m_categories.insert(name, API::Category{name, savePath});
    Q_EMIT changed();
}

void ServerLabels::removeCategories(const QSet<QString> &names)
{
    for (const QString &name : names)
        m_categories.remove(name);
    Q_EMIT changed();
}

void ServerLabels::insertTags(const QStringList &tags)
{
    for (const QString &tag : tags) {
        if (!m_tags.contains(tag))
            m_tags.append(tag);
    }
    Q_EMIT changed();
}

void ServerLabels::removeTags(const QSet<QString> &tags)
{
    m_tags.removeIf([&tags](const QString &tag) { return tags.contains(tag); });
    Q_EMIT changed();
}

void ServerLabels::clear()
{
    if (m_categories.isEmpty() && m_tags.isEmpty())
        return;
    m_categories.clear();
    m_tags.clear();
    Q_EMIT changed();
}
