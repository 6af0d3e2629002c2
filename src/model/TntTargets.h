#pragma once

#include "support/Sorted.h"

#include <QSet>
#include <QString>
#include <QStringList>

#include <algorithm>
#include <optional>

// The torrents an operation acts on: some, by hash, or every torrent of the server. "Every torrent"
// is a value of its own, never an empty set: no torrents is no request at all. The server's word
// "all" is written only when a request is encoded.
class TntTargets
{
public:
    static TntTargets all() { return TntTargets(std::nullopt); }
    static TntTargets only(QSet<QString> hashes) { return TntTargets(std::move(hashes)); }

    bool isAll() const { return !m_hashes; }
    // No torrent at all: there is nothing to send.
    bool isNone() const { return m_hashes && m_hashes->isEmpty(); }
    // The hashes, for targets that are not every torrent.
    const std::optional<QSet<QString>> &hashes() const { return m_hashes; }
    bool contains(const QString &hash) const { return !m_hashes || m_hashes->contains(hash); }

    // As the server reads it: "all", or the hashes sorted, so that a request's bytes do not depend
    // on set order.
    QStringList wireList() const
    {
        return m_hashes ? sorted(*m_hashes) : QStringList{QStringLiteral("all")};
    }

private:
    explicit TntTargets(std::optional<QSet<QString>> hashes)
        : m_hashes(std::move(hashes))
    {}

    std::optional<QSet<QString>> m_hashes;
};
