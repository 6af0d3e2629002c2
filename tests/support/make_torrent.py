#!/usr/bin/python3
"""Writes random files and a v1, v2 or hybrid .torrent of them with libtorrent, so that tests check
Quillo's reading against libtorrent's own.

    make_torrent.py KIND FOLDER NAME OUT ENTRY...

KIND is v1, v2 or hybrid. Every ENTRY is "path=size" (a file of random bytes) or "path->target" (a
symbolic link), relative to FOLDER/NAME. Prints one JSON object: "id" (what a libtorrent-2 server
lists the torrent under: the v2 hash cut to 40 hex digits when the torrent has v2 metadata, else the
v1 hash), "v1", "v2", and "files", the files as a server numbers them (pad files left out).
"""

import json
import os
import sys

import libtorrent as lt


def main(argv):
    if len(argv) < 6 or argv[1] not in ("v1", "v2", "hybrid"):
        sys.exit(__doc__)
    kind, folder, name, out = argv[1:5]
    root = os.path.join(folder, name)
    for entry in argv[5:]:
        if "->" in entry:
            path, target = entry.split("->", 1)
        else:
            path, size = entry.rsplit("=", 1)
        full = os.path.join(root, path)
        os.makedirs(os.path.dirname(full), exist_ok=True)
        if "->" in entry:
            os.symlink(target, full)
        else:
            with open(full, "wb") as f:
                f.write(os.urandom(int(size)))

    storage = lt.file_storage()
    lt.add_files(storage, root, lambda path: True, lt.create_torrent.symlinks)
    flags = {"v1": lt.create_torrent.v1_only, "v2": lt.create_torrent.v2_only, "hybrid": 0}[kind]
    creator = lt.create_torrent(storage, 16 * 1024, flags | lt.create_torrent.symlinks)
    creator.add_tracker("http://127.0.0.1:1/announce")
    lt.set_piece_hashes(creator, folder)
    data = lt.bencode(creator.generate())
    with open(out, "wb") as f:
        f.write(data)

    info = lt.torrent_info(lt.bdecode(data))
    hashes = info.info_hashes()
    files = info.files()
    listed = [{"path": files.file_path(i).replace(os.sep, "/"), "size": files.file_size(i)}
              for i in range(files.num_files())
              if not files.file_flags(i) & lt.file_storage.flag_pad_file]
    print(json.dumps({
        "id": str(hashes.v2)[:40] if hashes.has_v2() else str(hashes.v1),
        "v1": str(hashes.v1) if hashes.has_v1() else "",
        "v2": str(hashes.v2) if hashes.has_v2() else "",
        "files": listed,
    }))


if __name__ == "__main__":
    main(sys.argv)
