#include "LargeTorrent.h"

namespace {

QByteArray string(const QByteArray &bytes)
{
    return QByteArray::number(bytes.size()) + ':' + bytes;
}

} // namespace

QByteArray largeTorrent(int fileCount)
{
    QByteArray files = "l";
    qint64 total = 0;
    for (int i = 0; i < fileCount; ++i) {
        const qint64 length = 100'000 + (i * 7919) % 900'000;
        total += length;
        files += "d6:lengthi" + QByteArray::number(length) + "e4:pathl"
            + string("Season " + QByteArray::number(i / 5000)) + string("Disc " + QByteArray::number(i / 250 % 20))
            + string("Track " + QByteArray::number(i) + " - A Rather Long Title Of This Piece.flac") + "ee";
    }
    files += 'e';
    const qint64 pieceLength = 128 * 1024;
    const qint64 pieces = (total + pieceLength - 1) / pieceLength;
    QByteArray hashes(pieces * 20, '\0');
    for (qsizetype i = 0; i < hashes.size(); ++i)
        hashes[i] = static_cast<char>(i * 31 % 251);
    return "d8:announce" + string("http://tracker.example.org/announce") + "7:comment" + string("benchmark")
        + "10:created by" + string("bench_bencode") + "13:creation datei1700000000e4:infod5:files" + files
        + "4:name" + string("A Large Collection") + "12:piece lengthi" + QByteArray::number(pieceLength)
        + "e6:pieces" + string(hashes) + "ee";
}
