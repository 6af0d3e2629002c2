#pragma once

#include <QList>
#include <QString>

#include <memory>
#include <optional>

// One node of a torrent's content tree: a file, or a folder that sums up the files below it.
struct TntFileNode
{
    QString utType; // MIME type name, for the icon
    qint64 index = -1; // the server's file index; -1 for a folder
    QString name; // the last path component
    QString path;
    qint64 size = 0;
    double progress = 0;
    double priority = 0; // the server's value (TntModel::File::Priority)
    QList<qint64> pieceRange;
    double availability = 0;
    bool isSelected = true;
    bool hasSelectedFiles = true;
    std::optional<QList<std::shared_ptr<TntFileNode>>> children; // absent for a file
    std::weak_ptr<TntFileNode> parent;
    qint64 remaining = 0; // bytes of wanted files not yet downloaded
};
