#pragma once

#include "api/TntAddingOptions.h"

#include <QCoroTask>

namespace API {
class Client;
}

// Sends one add request. Local .torrent files are checked first, on a worker like the body: one
// that is not a torrent fails the add with a message naming it, and nothing is sent. Throws what
// the client throws, and TntManagmentError when the server refuses.
class TntAdder
{
public:
    static QCoro::Task<void> add(API::Client &client, API::TntAddingOptions options);
};
