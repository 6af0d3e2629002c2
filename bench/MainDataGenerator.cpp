#include "MainDataGenerator.h"

#include <algorithm>
#include <random>
#include <string>

namespace Bench {

namespace {

// One seed for the hashes and values of every full update, so deltas know the hashes.
constexpr unsigned seed = 1;

const char *const states[] = {"stalledUP", "uploading", "stoppedUP", "downloading", "stalledDL",
                              "queuedDL",  "stoppedDL", "checkingUP", "forcedUP",   "metaDL"};
const char *const nonAscii[] = {"Ünïcödé Ålbum", "日本語のアルバム", "Русский сборник", "Ελληνικά ντοκιμαντέρ",
                                "emoji 🎵 mix"};

std::string hexHash(std::mt19937_64 &random, int bytes)
{
    static const char digits[] = "0123456789abcdef";
    std::string text;
    for (int i = 0; i < bytes; ++i) {
        const auto byte = random() & 0xff;
        text += digits[byte >> 4];
        text += digits[byte & 0xf];
    }
    return text;
}

struct Writer
{
    QByteArray out;
    bool first = true;

    void key(const char *name)
    {
        if (!first)
            out += ',';
        first = false;
        out += '"';
        out += name;
        out += "\":";
    }
    void str(const char *name, const std::string &value)
    {
        key(name);
        out += '"';
        out += QByteArray::fromStdString(value);
        out += '"';
    }
    void num(const char *name, long long value)
    {
        key(name);
        out += QByteArray::number(value);
    }
    void dbl(const char *name, double value)
    {
        key(name);
        out += QByteArray::number(value, 'g', 17);
    }
    void boolean(const char *name, bool value)
    {
        key(name);
        out += value ? "true" : "false";
    }
};

void torrent(Writer &w, std::mt19937_64 &random, const std::string &hash, int index)
{
    std::uniform_int_distribution<long long> bytes(1'000'000, 80'000'000'000LL);
    const long long size = bytes(random);
    const bool done = random() % 3 != 0;
    const double progress = done ? 1.0 : static_cast<double>(random() % 1000) / 1000.0;
    std::string name = "Some.Linux.Distribution." + std::to_string(index) + ".x86_64.DVD.iso";
    if (index % 20 == 7)
        name = std::string(nonAscii[static_cast<std::size_t>(index / 20) % 5]) + " " + std::to_string(index);
    const std::string savePath = "/srv/torrents/complete/";
    const std::string tracker = "http://tracker" + std::to_string(index % 37) + ".example.org:6969/announce";

    w.out += '{';
    w.first = true;
    w.num("added_on", 1'700'000'000LL + index);
    w.num("amount_left", done ? 0 : size / 2);
    w.boolean("auto_tmm", index % 2 == 0);
    w.dbl("availability", done ? -1 : 1.25);
    w.str("category", index % 4 ? "linux" : "");
    w.str("comment", "Created for the benchmark");
    w.num("completed", done ? size : size / 2);
    w.num("completion_on", done ? 1'700'100'000LL + index : -1);
    w.str("content_path", savePath + name);
    w.num("dl_limit", -1);
    w.num("dlspeed", done ? 0 : static_cast<long long>(random() % 5'000'000));
    w.str("download_path", "");
    w.num("downloaded", size);
    w.num("downloaded_session", static_cast<long long>(random() % 1'000'000));
    w.num("eta", done ? 8640000 : static_cast<long long>(random() % 100000));
    w.boolean("f_l_piece_prio", false);
    w.boolean("force_start", index % 50 == 0);
    w.boolean("has_metadata", true);
    w.num("inactive_seeding_time_limit", -2);
    w.str("infohash_v1", hash);
    w.str("infohash_v2", "");
    w.num("last_activity", 1'700'200'000LL + index);
    w.str("magnet_uri", "magnet:?xt=urn:btih:" + hash + "&dn=" + (index % 20 == 7 ? "x" : name) + "&tr=" + tracker);
    w.num("max_inactive_seeding_time", -1);
    w.num("max_ratio", -1);
    w.num("max_seeding_time", -1);
    w.str("name", name);
    w.num("num_complete", static_cast<long long>(random() % 500));
    w.num("num_incomplete", static_cast<long long>(random() % 50));
    w.num("num_leechs", static_cast<long long>(random() % 5));
    w.num("num_seeds", static_cast<long long>(random() % 5));
    w.dbl("popularity", 0.123456789);
    w.num("priority", done ? 0 : index);
    w.boolean("private", index % 3 == 0);
    w.dbl("progress", progress);
    w.dbl("ratio", static_cast<double>(random() % 10000) / 997.0);
    w.num("ratio_limit", -2);
    w.num("reannounce", static_cast<long long>(random() % 1800));
    w.str("root_path", savePath + name);
    w.str("save_path", savePath);
    w.num("seeding_time", static_cast<long long>(random() % 10'000'000));
    w.num("seeding_time_limit", -2);
    w.num("seen_complete", 1'700'300'000LL + index);
    w.boolean("seq_dl", false);
    w.num("size", size);
    w.str("state", states[static_cast<std::size_t>(index) % 10]);
    w.boolean("super_seeding", false);
    w.str("tags", index % 5 ? "" : "archive, keep");
    w.num("time_active", static_cast<long long>(random() % 20'000'000));
    w.num("total_size", size);
    w.str("tracker", tracker);
    w.num("trackers_count", 3);
    w.num("up_limit", -1);
    w.num("uploaded", static_cast<long long>(random() % 100'000'000'000LL));
    w.num("uploaded_session", static_cast<long long>(random() % 1'000'000));
    w.num("upspeed", static_cast<long long>(random() % 1'000'000));
    w.out += '}';
}

void serverState(Writer &w)
{
    w.key("server_state");
    w.out += R"({"alltime_dl":123456789012,"alltime_ul":987654321098,"average_time_queue":0,)"
             R"("connection_status":"connected","dht_nodes":0,"dl_info_data":12345,"dl_info_speed":1000,)"
             R"("dl_rate_limit":0,"free_space_on_disk":500000000000,"global_ratio":"7.99",)"
             R"("last_external_address_v4":"","last_external_address_v6":"","queued_io_jobs":0,)"
             R"("queueing":true,"read_cache_hits":"0","read_cache_overload":"0","refresh_interval":1500,)"
             R"("total_buffers_size":0,"total_peer_connections":3,"total_queued_size":0,)"
             R"("total_wasted_session":0,"up_info_data":54321,"up_info_speed":2000,"up_rate_limit":0,)"
             R"("use_alt_speed_limits":false,"use_subcategories":false,"write_cache_overload":"0"})";
}

std::string churnHash(int index)
{
    std::mt19937_64 random(0x5eed'0000ULL + static_cast<unsigned long long>(index));
    return hexHash(random, 20);
}

void churnTorrent(Writer &w, std::mt19937_64 &random, int index)
{
    const std::string hash = churnHash(index);
    w.out += '"';
    w.out += QByteArray::fromStdString(hash);
    w.out += "\":";
    torrent(w, random, hash, index);
}

} // namespace

QByteArray fullUpdate(int torrentCount)
{
    std::mt19937_64 random(seed);
    Writer w;
    w.out.reserve(static_cast<qsizetype>(torrentCount) * 2000 + 4096);
    w.out += '{';
    w.out += R"("categories":{"linux":{"download_path":false,"name":"linux","savePath":"/srv/linux"}},)";
    w.out += R"("full_update":true,"rid":1,)";
    w.first = true;
    serverState(w);
    w.out += R"(,"tags":["archive","keep"],"torrents":{)";
    std::mt19937_64 hashes(seed);
    for (int i = 0; i < torrentCount; ++i) {
        if (i)
            w.out += ',';
        const std::string hash = hexHash(hashes, 20);
        w.out += '"';
        w.out += QByteArray::fromStdString(hash);
        w.out += "\":";
        torrent(w, random, hash, i);
    }
    w.out += R"(},"trackers":{)";
    for (int t = 0; t < 37; ++t) {
        if (t)
            w.out += ',';
        w.out += "\"http://tracker" + QByteArray::number(t) + ".example.org:6969/announce\":[]";
    }
    w.out += "}}";
    return w.out;
}

QByteArray delta(int torrentCount, int changed, unsigned round)
{
    std::mt19937_64 random(seed + round);
    std::mt19937_64 hashes(seed);
    const int step = std::max(1, torrentCount / std::max(1, changed));
    Writer w;
    w.out += R"({"rid":2,"server_state":{"dl_info_data":12399,"dl_info_speed":1200,"up_info_speed":2500},)";
    w.out += R"("torrents":{)";
    bool firstTorrent = true;
    for (int i = 0; i < torrentCount; ++i) {
        const std::string hash = hexHash(hashes, 20);
        if (i % step != 0 || i / step >= changed)
            continue;
        if (!firstTorrent)
            w.out += ',';
        firstTorrent = false;
        w.out += '"';
        w.out += QByteArray::fromStdString(hash);
        w.out += "\":{";
        w.first = true;
        w.num("dlspeed", static_cast<long long>(random() % 5'000'000));
        w.num("downloaded_session", static_cast<long long>(random() % 2'000'000));
        w.num("eta", static_cast<long long>(random() % 100000));
        w.num("last_activity", 1'700'400'000LL + i);
        w.dbl("progress", static_cast<double>(random() % 1000) / 1000.0);
        w.num("upspeed", static_cast<long long>(random() % 1'000'000));
        w.out += '}';
    }
    w.out += "}}";
    return w.out;
}

QByteArray churnFull(int first, int count)
{
    std::mt19937_64 random(seed);
    Writer w;
    w.out.reserve(static_cast<qsizetype>(count) * 2000 + 4096);
    w.out += R"({"categories":{"linux":{"name":"linux","savePath":"/srv/linux"}},"full_update":true,"rid":1,)";
    w.first = true;
    serverState(w);
    w.out += R"(,"tags":["archive","keep"],"torrents":{)";
    for (int i = first; i < first + count; ++i) {
        if (i != first)
            w.out += ',';
        churnTorrent(w, random, i);
    }
    w.out += "}}";
    return w.out;
}

QByteArray churnDelta(int first, int count, int turnover, int changed, unsigned round)
{
    std::mt19937_64 random(seed + round);
    Writer w;
    w.out += R"({"rid":)" + QByteArray::number(round + 1);
    w.out += R"(,"server_state":{"dl_info_data":)" + QByteArray::number(12345 + round);
    w.out += R"(,"dl_info_speed":)" + QByteArray::number(static_cast<long long>(random() % 5'000'000)) + "},";
    // A tag of this round replaces the last round's, so the labels turn over too.
    w.out += R"("tags":["round)" + QByteArray::number(round) + R"("],"tags_removed":["round)"
             + QByteArray::number(round - 1) + R"("],"torrents":{)";
    const int last = first + count;
    for (int i = last; i < last + turnover; ++i) {
        if (i != last)
            w.out += ',';
        churnTorrent(w, random, i);
    }
    const int kept = count - turnover;
    const int step = std::max(1, kept / std::max(1, changed));
    for (int n = 0; n < changed && n * step < kept; ++n) {
        const int i = first + turnover + (n * step + static_cast<int>(round)) % kept;
        w.out += turnover > 0 || n > 0 ? ",\"" : "\"";
        w.out += QByteArray::fromStdString(churnHash(i));
        w.out += "\":{";
        w.first = true;
        w.str("state", states[(static_cast<std::size_t>(i) + round) % 10]);
        w.num("dlspeed", static_cast<long long>(random() % 5'000'000));
        w.num("eta", static_cast<long long>(random() % 100000));
        w.dbl("progress", static_cast<double>(random() % 1000) / 1000.0);
        w.num("upspeed", static_cast<long long>(random() % 1'000'000));
        w.out += '}';
    }
    w.out += R"(},"torrents_removed":[)";
    for (int i = first; i < first + turnover; ++i) {
        if (i != first)
            w.out += ',';
        w.out += '"';
        w.out += QByteArray::fromStdString(churnHash(i));
        w.out += '"';
    }
    w.out += "]}";
    return w.out;
}

} // namespace Bench
