#pragma once

#include "api/Error.h"

#include <QCoreApplication>

// The application's own failures, as opposed to the server's.
class InternalError : public API::Error
{
public:
    enum class Case { serverConfigurationAlreadyExist, pathMappingNotFound, certificateDeclined };

    // `path`: the server's path that no mapping translates (pathMappingNotFound).
    explicit InternalError(Case kind, const QString &path = {})
        : API::Error(titleOf(kind), reasonOf(kind, path), suggestionOf(kind))
        , m_case(kind)
    {}

    Case kind() const { return m_case; }

private:
    static QString titleOf(Case kind)
    {
        switch (kind) {
        case Case::serverConfigurationAlreadyExist:
            return QCoreApplication::translate("InternalError", "Server with these settings already exists!");
        case Case::pathMappingNotFound:
            return QCoreApplication::translate("InternalError", "Failed to resolve path mapping!");
        case Case::certificateDeclined:
            return QCoreApplication::translate("InternalError", "Quillo did not connect to the server.");
        }
        Q_UNREACHABLE();
    }

    static QString reasonOf(Case kind, const QString &path)
    {
        switch (kind) {
        case Case::pathMappingNotFound:
            return QCoreApplication::translate("InternalError", "No access or path mapping found for: \"%1\".")
                .arg(path);
        case Case::certificateDeclined:
            return QCoreApplication::translate(
                "InternalError", "Its certificate was not trusted. The connection is kept: connect to it again "
                                 "to see the certificate and decide anew.");
        case Case::serverConfigurationAlreadyExist: break;
        }
        return {};
    }

    static QString suggestionOf(Case kind)
    {
        return kind == Case::pathMappingNotFound
                   ? QCoreApplication::translate("InternalError", "Check your path mapping settings.")
                   : QString();
    }

    Case m_case;
};
