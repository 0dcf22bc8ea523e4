// SPDX-License-Identifier: GPL-3.0-or-later
// The command line of veltrix-sample-services.
#include "sample/options.h"

#include <QCommandLineParser>

namespace veltrix::sample
{

namespace
{

const char *const commandTable = R"(
Search terms that begin with "sample:" make the services misbehave. What follows the command is
searched for ("sample:slow running"); alone, the command searches for "photo editor".

  command      search              hints            research
  throttled    403, empty          403              -
  limited      429, empty          429              429, Retry-After: 60
  unavailable  -                   503              503, Retry-After: 10
  error        500                 500              500, JSON of the platform
  boot, idle, worker, missing                       503, 504, 546, 404 of the platform
  pending                                           202, Retry-After: 1; the next call is ready
  stale                                             200 "stale", Retry-After: 90
  failed                                            200 "failed", Retry-After: 600
  slow         after 3 seconds     after 3 seconds  after 3 seconds
  garbage      200 with HTML       200 with HTML    200 with HTML
  cut          half of the body    half             half
  huge         40 MiB              -                -
)";

struct Parser {
    Parser()
    {
        parser.setApplicationDescription(QStringLiteral(
            "Speaks the protocols of the App Store's services, on loopback and about made-up "
            "apps.\nPrints a line for each service and runs until it gets SIGTERM or SIGINT."));
        for (const QCommandLineOption *option :
             {&help, &port, &httpsPort, &date, &throttle, &faults, &faultSeed, &researchBehind,
              &researchPending, &updateVersion, &updateSeed, &readyFile, &certificateFile, &logFile,
              &dieWithParent})
            parser.addOption(*option);
    }

    [[nodiscard]] QString helpText() const
    {
        return parser.helpText() + QString::fromUtf8(commandTable);
    }

    QCommandLineParser parser;
    QCommandLineOption help{{u"h"_qs, u"help"_qs}, u"Print this text."_qs};
    QCommandLineOption port{u"port"_qs, u"Port of the HTTP services; 0 takes a free one."_qs,
                            u"number"_qs, u"0"_qs};
    QCommandLineOption httpsPort{u"https-port"_qs,
                                 u"Port of the HTTPS services; 0 takes a free one."_qs,
                                 u"number"_qs, u"0"_qs};
    QCommandLineOption date{u"date"_qs, u"The day (YYYY-MM-DD) that rankings are made for."_qs,
                            u"day"_qs};
    QCommandLineOption throttle{u"throttle"_qs,
                                u"Searches and look-ups let through a minute; 0 means all."_qs,
                                u"number"_qs, u"0"_qs};
    QCommandLineOption faults{u"faults"_qs, u"Let this many of a hundred requests fail."_qs,
                              u"percent"_qs, u"0"_qs};
    QCommandLineOption faultSeed{u"fault-seed"_qs, u"Decides which of them fail, and how."_qs,
                                 u"number"_qs, u"1"_qs};
    QCommandLineOption researchBehind{
        u"research-behind"_qs, u"Date research answers so long ago, which makes them stale."_qs,
        u"seconds"_qs, u"0"_qs};
    QCommandLineOption researchPending{
        u"research-pending"_qs, u"Answer the first research question about a keyword with 202."_qs};
    QCommandLineOption updateVersion{u"update-version"_qs, u"The version that the feed offers."_qs,
                                     u"version"_qs, u"99.0.0"_qs};
    QCommandLineOption updateSeed{u"update-seed"_qs,
                                  u"Seed of the signing key: 32 bytes in base64."_qs, u"base64"_qs};
    QCommandLineOption readyFile{
        u"ready-file"_qs, u"Write the printed lines to this file, too, when all is ready."_qs,
        u"file"_qs};
    QCommandLineOption certificateFile{u"certificate-file"_qs,
                                       u"Write the certificate authority (PEM) to this file."_qs,
                                       u"file"_qs};
    QCommandLineOption logFile{u"log"_qs, u"Add method, path and status of each request."_qs,
                               u"file"_qs};
    QCommandLineOption dieWithParent{u"die-with-parent"_qs,
                                     u"End when the starting process ends."_qs};
};

Farewell refusal(const QString &text)
{
    return {text + QLatin1Char('\n'), 2};
}

/// The value of an option as a number in a range.
std::optional<int> numberOf(const QCommandLineParser &parser, const QCommandLineOption &option,
                            int largest)
{
    bool isNumber = false;
    const int number = parser.value(option).toInt(&isNumber);
    if (!isNumber || number < 0 || number > largest)
        return std::nullopt;
    return number;
}

} // namespace

std::variant<Options, Farewell> readOptions(const QStringList &arguments)
{
    Parser cli;
    if (!cli.parser.parse(arguments))
        return refusal(cli.parser.errorText());
    if (cli.parser.isSet(cli.help))
        return Farewell{cli.helpText(), 0};
    const std::optional<int> port = numberOf(cli.parser, cli.port, 65'535);
    const std::optional<int> httpsPort = numberOf(cli.parser, cli.httpsPort, 65'535);
    const std::optional<int> throttle = numberOf(cli.parser, cli.throttle, 1'000'000);
    if (!port || !httpsPort || !throttle)
        return refusal(QStringLiteral("Ports and the throttle are whole numbers from 0."));
    const std::optional<int> faults = numberOf(cli.parser, cli.faults, 100);
    const std::optional<int> faultSeed = numberOf(cli.parser, cli.faultSeed, 1'000'000);
    if (!faults || !faultSeed)
        return refusal(
            QStringLiteral("Faults are a whole number from 0 to 100, their seed one from 0."));
    const std::optional<int> behind = numberOf(cli.parser, cli.researchBehind, 86'400);
    if (!behind)
        return refusal(QStringLiteral("The research service is up to 86400 seconds behind."));
    Options options;
    options.port = *port;
    options.httpsPort = *httpsPort;
    options.throttle = *throttle;
    options.faults = *faults;
    options.faultSeed = static_cast<std::uint64_t>(*faultSeed);
    if (cli.parser.isSet(cli.date)) {
        options.date = QDate::fromString(cli.parser.value(cli.date), Qt::ISODate);
        if (!options.date->isValid())
            return refusal(QStringLiteral("The date must be a day such as 2026-11-21."));
    }
    if (cli.parser.isSet(cli.updateSeed)) {
        options.updateSeed = QByteArray::fromBase64(cli.parser.value(cli.updateSeed).toLatin1());
        if (options.updateSeed.size() != 32)
            return refusal(QStringLiteral("The update seed must be 32 bytes in base64."));
    }
    options.researchBehind = std::chrono::seconds(*behind);
    options.researchPending = cli.parser.isSet(cli.researchPending);
    options.updateVersion = cli.parser.value(cli.updateVersion);
    options.readyFile = cli.parser.value(cli.readyFile);
    options.certificateFile = cli.parser.value(cli.certificateFile);
    options.logFile = cli.parser.value(cli.logFile);
    options.dieWithParent = cli.parser.isSet(cli.dieWithParent);
    return options;
}

} // namespace veltrix::sample
