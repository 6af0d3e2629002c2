#pragma once

#include "support/QbtServer.h"

#include <memory>

namespace Bench {

// A real server on loopback that lets loopback in without logging in and ignores the Host header
// (a relay may stand in front), loaded with `count` small stopped single-file torrents through
// torrents/add; none, with the reason on stderr, when it cannot start.
std::unique_ptr<QbtServer> loadedServer(int count, QbtServer::Flavor flavor = QbtServer::Flavor::Bookworm45);

} // namespace Bench
