// Decoding cost of main-data answers: QJsonDocument, simdjson's own parse-and-walk and
// API::decodeMainData on the same bytes, in one run. Usage: bench_records [runs | profile [decodes] [walk]]
#include "Gzip.h"
#include "MainDataGenerator.h"
#include "api/Records.h"

#include <QJsonDocument>
#include <QJsonObject>

#include <simdjson.h>

#include <algorithm>
#include <cmath>
#include <stdexcept>
#include <chrono>
#include <cstdio>
#include <fstream>
#include <functional>
#include <cstdlib>
#include <string>
#include <vector>

namespace {

using Clock = std::chrono::steady_clock;

double median(std::vector<double> values)
{
    std::sort(values.begin(), values.end());
    return values[values.size() / 2];
}

// The work's result is destroyed outside the timed span: it lives on after a real decode.
template<typename Work>
double timedMs(const Work &work)
{
    const auto start = Clock::now();
    [[maybe_unused]] const auto result = work();
    return std::chrono::duration<double, std::milli>(Clock::now() - start).count();
}

template<typename Work>
double medianMs(int runs, const Work &work)
{
    std::vector<double> times;
    for (int i = 0; i < runs; ++i)
        times.push_back(timedMs(work));
    return median(times);
}

long statusKiB(const char *field)
{
    std::ifstream status("/proc/self/status");
    std::string line;
    while (std::getline(status, line)) {
        if (line.rfind(field, 0) == 0)
            return std::stol(line.substr(std::string(field).size()));
    }
    return -1;
}

// Peak resident memory that `work` adds above what is resident before it starts.
long peakExtraMiB(const std::function<void()> &work)
{
    std::ofstream("/proc/self/clear_refs") << "5";
    const long before = statusKiB("VmRSS:");
    work();
    return (statusKiB("VmHWM:") - before) / 1024;
}

volatile double sink;

// What a QJsonDocument decoder has to do at the least: parse, then visit every value once.
QJsonDocument qjsonWalk(const QByteArray &json)
{
    QJsonDocument document = QJsonDocument::fromJson(json);
    const QJsonObject root = document.object();
    const QJsonObject torrents = root.value(QLatin1String("torrents")).toObject();
    double sum = 0;
    for (auto t = torrents.begin(); t != torrents.end(); ++t) {
        const QJsonObject torrent = t.value().toObject();
        for (auto f = torrent.begin(); f != torrent.end(); ++f) {
            const QJsonValue value = f.value();
            if (value.isString())
                sum += static_cast<double>(value.toString().size());
            else
                sum += value.toDouble();
        }
    }
    sink = sum;
    return document;
}

// A decoder of the same records on QJsonDocument, with the same type checks: what the records
// would cost if they were decoded the Qt way.
API::MainData qjsonDecode(const QByteArray &json)
{
    using API::STntModel;
    using Setter = void (*)(STntModel &, const QJsonValue &);
    static const QHash<QString, Setter> setters = [] {
        QHash<QString, Setter> table;
        static const auto integer = [](const QJsonValue &v) {
            if (!v.isDouble() || v.toDouble() != static_cast<double>(v.toInteger()))
                throw std::runtime_error("expected an integer");
            return v.toInteger();
        };
        static const auto number = [](const QJsonValue &v) {
            if (!v.isDouble())
                throw std::runtime_error("expected a number");
            return v.toDouble();
        };
        static const auto text = [](const QJsonValue &v) {
            if (!v.isString())
                throw std::runtime_error("expected a string");
            return v.toString();
        };
        static const auto flag = [](const QJsonValue &v) {
            if (!v.isBool())
                throw std::runtime_error("expected a boolean");
            return v.toBool();
        };
        static const auto date = [](const QJsonValue &v) {
            if (!v.isDouble())
                throw std::runtime_error("expected a number");
            return API::Date(v.toDouble());
        };
#define INT(key, member) table.insert(QStringLiteral(key), [](STntModel &t, const QJsonValue &v) { t.member = integer(v); })
#define DBL(key, member) table.insert(QStringLiteral(key), [](STntModel &t, const QJsonValue &v) { t.member = number(v); })
#define STR(key, member) table.insert(QStringLiteral(key), [](STntModel &t, const QJsonValue &v) { t.member = text(v); })
#define BOOL(key, member) table.insert(QStringLiteral(key), [](STntModel &t, const QJsonValue &v) { t.member = flag(v); })
#define DATE(key, member) table.insert(QStringLiteral(key), [](STntModel &t, const QJsonValue &v) { t.member = date(v); })
        DATE("added_on", addedOn); INT("amount_left", amountLeft); BOOL("auto_tmm", autoTmm);
        DBL("availability", availability); STR("category", category); INT("completed", completed);
        DATE("completion_on", completionOn); STR("content_path", contentPath); INT("dl_limit", dlLimit);
        INT("dlspeed", dlspeed); INT("downloaded", downloaded); INT("downloaded_session", downloadedSession);
        DBL("eta", eta); BOOL("f_l_piece_prio", fLPiecePrio); BOOL("force_start", forceStart);
        STR("infohash_v1", infohashV1); STR("infohash_v2", infohashV2); DATE("last_activity", lastActivity);
        STR("magnet_uri", magnetUri); DBL("max_ratio", maxRatio); INT("max_seeding_time", maxSeedingTime);
        STR("name", name); INT("num_complete", numComplete); INT("num_incomplete", numIncomplete);
        INT("num_leechs", numLeechs); INT("num_seeds", numSeeds); INT("priority", priority);
        DBL("progress", progress); DBL("ratio", ratio); DBL("ratio_limit", ratioLimit); STR("save_path", savePath);
        INT("seeding_time", seedingTime); INT("seeding_time_limit", seedingTimeLimit);
        DATE("seen_complete", seenComplete); BOOL("seq_dl", seqDl); INT("size", size);
        table.insert(QStringLiteral("state"), [](STntModel &t, const QJsonValue &v) {
            const auto state = tntModelStateFromText(v.toString().toStdString());
            if (!v.isString() || !state)
                throw std::runtime_error("unknown state");
            t.state = *state;
        });
        BOOL("super_seeding", superSeeding); STR("tags", tags); INT("time_active", timeActive);
        INT("total_size", totalSize); STR("tracker", tracker); INT("up_limit", upLimit); INT("uploaded", uploaded);
        INT("uploaded_session", uploadedSession); INT("upspeed", upspeed);
#undef INT
#undef DBL
#undef STR
#undef BOOL
#undef DATE
        return table;
    }();

    const QJsonObject root = QJsonDocument::fromJson(json).object();
    API::MainData data;
    data.rid = root.value(QLatin1String("rid")).toInteger();
    const QJsonObject torrents = root.value(QLatin1String("torrents")).toObject();
    data.tnts.reserve(torrents.size());
    for (auto t = torrents.begin(); t != torrents.end(); ++t) {
        STntModel &record = data.tnts[t.key()];
        const QJsonObject torrent = t.value().toObject();
        for (auto f = torrent.begin(); f != torrent.end(); ++f) {
            if (const Setter setter = setters.value(f.key()))
                setter(record, f.value());
        }
    }
    return data;
}

// simdjson's own walk: every key and value of every torrent read once, strings left as views. Kept
// out of line so that a profiler counts it by name.
[[gnu::noinline]] double simdjsonOndemandWalk(const simdjson::padded_string &json)
{
    simdjson::ondemand::parser parser;
    auto document = parser.iterate(json);
    double sum = 0;
    for (auto member : document["torrents"].get_object()) {
        for (auto field : member.value().get_object()) {
            sum += static_cast<double>(field.unescaped_key().value().size());
            auto value = field.value();
            switch (value.type().value()) {
            case simdjson::ondemand::json_type::string: sum += static_cast<double>(value.get_string().value().size()); break;
            case simdjson::ondemand::json_type::number: sum += value.get_double().value(); break;
            case simdjson::ondemand::json_type::boolean: sum += value.get_bool().value() ? 1 : 0; break;
            default: break;
            }
        }
    }
    return sum;
}

double simdjsonDomWalk(const simdjson::padded_string &json)
{
    simdjson::dom::parser parser;
    const simdjson::dom::element root = parser.parse(json);
    double sum = 0;
    for (auto [hash, torrent] : root["torrents"].get_object()) {
        for (auto [key, value] : torrent.get_object()) {
            sum += static_cast<double>(key.size());
            if (value.is_string())
                sum += static_cast<double>(value.get_string().value().size());
            else if (value.is_number())
                sum += value.get_double().value();
        }
    }
    return sum;
}

} // namespace

int main(int argc, char **argv)
{
    // `bench_records profile [decodes] [walk]` decodes only (or runs simdjson's walk only), for a
    // profiler; 0 decodes measures the generator.
    if (argc > 1 && std::string(argv[1]) == "profile") {
        const QByteArray json = Bench::fullUpdate(50000);
        const int decodes = argc > 2 ? std::atoi(argv[2]) : 5;
        if (argc > 3 && std::string(argv[3]) == "walk") {
            const simdjson::padded_string padded(json.constData(), static_cast<std::size_t>(json.size()));
            for (int i = 0; i < decodes; ++i)
                sink = simdjsonOndemandWalk(padded);
            return 0;
        }
        for (int i = 0; i < decodes; ++i)
            sink = static_cast<double>(API::decodeMainData(json).tnts.size());
        return 0;
    }
    const int runs = argc > 1 ? std::max(1, std::atoi(argv[1])) : 7;
    std::printf("median of %d runs, milliseconds\n", runs);
    std::printf("%8s %7s %9s %9s %9s %9s %9s %8s %8s\n", "torrents", "MB", "QJ-walk", "QJ-dec", "sj-ondem",
                "sj-DOM", "decode", "QJdec/d", "d/sj");
    for (const int count : {1000, 10000, 50000}) {
        const QByteArray json = Bench::fullUpdate(count);
        const simdjson::padded_string padded(json.constData(), static_cast<std::size_t>(json.size()));
        // Round by round, so that the load of the shared machine falls on every column alike; d/sj
        // is the median of the rounds' own ratios.
        std::vector<double> qjson, qjsonRecords, ondemand, dom, decode, ratios;
        for (int i = 0; i < runs; ++i) {
            qjson.push_back(timedMs([&] { return qjsonWalk(json); }));
            qjsonRecords.push_back(timedMs([&] { return qjsonDecode(json); }));
            ondemand.push_back(timedMs([&] { return simdjsonOndemandWalk(padded); }));
            dom.push_back(timedMs([&] { return simdjsonDomWalk(padded); }));
            decode.push_back(timedMs([&] { return API::decodeMainData(json); }));
            ratios.push_back(decode.back() / std::min(ondemand.back(), dom.back()));
        }
        std::printf("%8d %7.1f %9.1f %9.1f %9.1f %9.1f %9.1f %7.2fx %7.2fx\n", count,
                    static_cast<double>(json.size()) / 1e6, median(qjson), median(qjsonRecords), median(ondemand),
                    median(dom), median(decode), median(qjsonRecords) / median(decode), median(ratios));
    }

    const QByteArray full = Bench::fullUpdate(50000);
    const QByteArray delta = Bench::delta(50000, 500);
    const double deltaMs = medianMs(std::max(runs, 21), [&] { return API::decodeMainData(delta); });
    std::printf("\n1%% delta of 50000 torrents (%lld KB): decode %.3f ms\n", static_cast<long long>(delta.size() / 1000), deltaMs);

    const long decodePeak = peakExtraMiB([&] { sink = static_cast<double>(API::decodeMainData(full).tnts.size()); });
    const long qjsonPeak = peakExtraMiB([&] { sink = static_cast<double>(qjsonDecode(full).tnts.size()); });
    std::printf("peak extra memory, 50000 torrents: decode %ld MiB, QJsonDocument %ld MiB\n", decodePeak, qjsonPeak);

    const QByteArray compressed = Bench::gzip(full);
    const double inflateMs = medianMs(runs, [&] { return Bench::gunzip(compressed); });
    std::printf("gzip of 50000 torrents: %.1f MB -> %.1f MB, inflate %.1f ms\n", static_cast<double>(full.size()) / 1e6,
                static_cast<double>(compressed.size()) / 1e6, inflateMs);
    return 0;
}
