#pragma once

#include "core/ClientConfiguration.h"

// How a saved connection is named to the user: its own name, else where it points.
inline QString displayName(const ClientConfiguration &configuration)
{
    if (!configuration.name.isEmpty())
        return configuration.name;
    if (configuration.port)
        return configuration.host + u':' + QString::number(*configuration.port);
    return configuration.host;
}
