#pragma once

#include "core/ClientConfiguration.h"

#include <QByteArray>
#include <QCoroTask>
#include <QString>
#include <QUrl>

#include <chrono>
#include <exception>
#include <optional>

// An offer to move a connection whose HTTPS port speaks plain HTTP to the HTTPS address that port
// redirects to. Found by probe(), shown by the dialog texts below, applied by acceptedConfiguration().
struct HTTPSRedirectSuggestion
{
    enum class Origin {
        currentConnection, // while connecting the selected connection
        connectionCheck,   // while checking a connection before it is saved
    };

    struct ProbeSettings
    {
        // A probe must not keep the user waiting: 10 s without data, 60 s at most.
        std::chrono::milliseconds idle{10'000};
        std::chrono::milliseconds overall{60'000};
    };

    Origin origin = Origin::currentConnection;
    ClientConfiguration source;
    ClientConfiguration suggested;

    // Whether `error`, met by a request of `configuration`, is worth a probe.
    static bool triggersProbe(const ClientConfiguration &configuration, const std::exception &error);

    // The plain-HTTP address the probe asks.
    static QUrl probeURL(const ClientConfiguration &source);
    // The connection that the probe's answer points to, or none when it points nowhere usable.
    static std::optional<ClientConfiguration> suggestedConfiguration(const ClientConfiguration &source, int status,
                                                                     const QByteArray &location);
    // The address that proves TLS works at the suggested place.
    static QUrl secureCheckURL(const ClientConfiguration &suggested);
    // No status means no HTTP answer at all.
    static bool passesSecureCheck(std::optional<int> status);

    // Probes `source` over plain HTTP and checks where it redirects to. Every failure ends in none;
    // `error` is the failure that started the probe, for the log.
    static QCoro::Task<std::optional<HTTPSRedirectSuggestion>> probe(ClientConfiguration source, Origin origin,
                                                                     QString error, ProbeSettings settings);
    static QCoro::Task<std::optional<HTTPSRedirectSuggestion>> probe(ClientConfiguration source, Origin origin,
                                                                     QString error);

    // scheme://host:port/path
    static QString displayAddress(const ClientConfiguration &configuration);

    static QString dialogTitle();
    QString dialogMessage() const;
    QString acceptButtonTitle() const;
    static QString cancelButtonTitle();

    // `saved` moved to the suggested port and path; everything else of it stays.
    ClientConfiguration acceptedConfiguration(const ClientConfiguration &saved) const;
    static void logAddressChange(const ClientConfiguration &from, const ClientConfiguration &to);

    friend bool operator==(const HTTPSRedirectSuggestion &, const HTTPSRedirectSuggestion &) = default;
};
