#pragma once

#include <QByteArray>

// A multi-file .torrent shaped like a large real one: files three folders deep with names of
// realistic length, and piece hashes for their total in 128 KiB pieces.
QByteArray largeTorrent(int fileCount);
