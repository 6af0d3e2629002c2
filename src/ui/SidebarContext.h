#pragma once

#include "model/SidebarItem.h"

#include <QObject>

#include <optional>

// What the sidebar has open: the category editor (for which category) and the tag editor.
class SidebarContext : public QObject
{
    Q_OBJECT

public:
    using QObject::QObject;

    const std::optional<SidebarItem::Category> &editedCategory() const { return m_editedCategory; }
    void setEditedCategory(std::optional<SidebarItem::Category> category)
    {
        if (category == m_editedCategory)
            return;
        m_editedCategory = std::move(category);
        Q_EMIT editedCategoryChanged();
    }

    bool showTagEditor() const { return m_showTagEditor; }
    void setShowTagEditor(bool shown)
    {
        if (shown == m_showTagEditor)
            return;
        m_showTagEditor = shown;
        Q_EMIT showTagEditorChanged();
    }

Q_SIGNALS:
    void editedCategoryChanged();
    void showTagEditorChanged();

private:
    std::optional<SidebarItem::Category> m_editedCategory;
    bool m_showTagEditor = false;
};
