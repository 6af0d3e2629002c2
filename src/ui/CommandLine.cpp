#include "ui/CommandLine.h"

#include "ui/TntAddingFlow.h"

#include <QCommandLineParser>
#include <QCoreApplication>

namespace {

const QString minimizedOption = QStringLiteral("minimized");
const QString addFileOption = QStringLiteral("add-file");
const QString addLinkOption = QStringLiteral("add-link");

void describe(QCommandLineParser &parser)
{
    parser.setApplicationDescription(
        QCoreApplication::translate("CommandLine", "A desktop remote control for qBittorrent."));
    parser.addHelpOption();
    parser.addVersionOption();
    parser.addOptions({
        {minimizedOption, QCoreApplication::translate("CommandLine", "Start in the tray, without showing the window.")},
        {addFileOption, QCoreApplication::translate("CommandLine", "Choose torrent files to add.")},
        {addLinkOption, QCoreApplication::translate("CommandLine", "Enter links to add.")},
    });
    parser.addPositionalArgument(
        QStringLiteral("torrents"),
        QCoreApplication::translate("CommandLine", ".torrent files, magnet or web links, or info-hashes to add."),
        QCoreApplication::translate("CommandLine", "[torrents...]"));
}

CommandLine readParsed(const QCommandLineParser &parser)
{
    return {.sources = TntAddingFlow::sourcesOf(parser.positionalArguments()),
            .minimized = parser.isSet(minimizedOption),
            .addFile = parser.isSet(addFileOption),
            .addLink = parser.isSet(addLinkOption)};
}

} // namespace

CommandLine CommandLine::ofProgram(const QStringList &arguments)
{
    QCommandLineParser parser;
    describe(parser);
    parser.process(arguments);
    return readParsed(parser);
}

bool CommandLine::asksForHelpOrVersion(const QStringList &arguments)
{
    static const QStringList answered{QStringLiteral("-h"),         QStringLiteral("-?"), QStringLiteral("--help"),
                                      QStringLiteral("--help-all"), QStringLiteral("-v"), QStringLiteral("--version")};
    // The program's name comes first; after "--" every argument is a torrent.
    for (qsizetype i = 1; i < arguments.size() && arguments.at(i) != u"--"; ++i) {
        if (answered.contains(arguments.at(i)))
            return true;
    }
    return false;
}

std::optional<CommandLine> CommandLine::read(const QStringList &message, QString *error)
{
    QCommandLineParser parser;
    describe(parser);
    // The parser skips its first argument, the program's name, which a message does not carry.
    if (!parser.parse(QStringList{QStringLiteral("quillo")} + message)) {
        if (error)
            *error = parser.errorText();
        return std::nullopt;
    }
    return readParsed(parser);
}

QStringList CommandLine::message() const
{
    QStringList message;
    for (const auto &[on, option] : {std::pair{minimized, minimizedOption}, std::pair{addFile, addFileOption},
                                     std::pair{addLink, addLinkOption}}) {
        if (on)
            message << QStringLiteral("--") + option;
    }
    for (const QUrl &source : sources)
        message << source.toString(QUrl::FullyEncoded);
    return message;
}
