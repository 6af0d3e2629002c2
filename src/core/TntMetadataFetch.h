#pragma once

#include "adding/TntMetadata.h"

#include <QCoroTask>
#include <QPointer>

class AppContext;

// The metadata of a magnet link, fetched by the server (API 2.15 and later). The server answers 202
// while it is still fetching; the question is asked again every second while `owner` lives, the
// pause cut short when it goes. Nothing when the owner went or the connection is gone; throws what
// the request throws.
QCoro::Task<std::optional<TntMetadata>> fetchTntMetadata(AppContext &context, QString source, QPointer<QObject> owner);
