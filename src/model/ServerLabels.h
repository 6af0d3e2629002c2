#pragma once

#include "api/Records.h"

#include <QMap>
#include <QObject>
#include <QSet>
#include <QStringList>

// The server's categories and tags, as its answers and the commands made here leave them.
class ServerLabels : public QObject
{
    Q_OBJECT

public:
    using QObject::QObject;

    const QMap<QString, API::Category> &categories() const { return m_categories; }
    const QStringList &tags() const { return m_tags; }

    // A full update is announced even when it changes nothing: it is the server's whole list, by
    // which a remembered selection can be checked.
    void apply(const API::MainData &data);
    void insertCategory(const QString &name, const QString &savePath);
    void removeCategories(const QSet<QString> &names);
    void insertTags(const QStringList &tags);
    void removeTags(const QSet<QString> &tags);
    void clear();

Q_SIGNALS:
    void changed();

private:
    QMap<QString, API::Category> m_categories;
    QStringList m_tags;
};
