#include "PobblewigDemoModel/DemoServer.h"
#include "foundation/TerminationSignals.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QTextStream>

#include <optional>

namespace {

struct Options {
    quint16 port = 0;
    pobblewig::DemoOptions server;
};

std::optional<Options> readOptions(const QCoreApplication& application)
{
    const QCommandLineOption port(QStringLiteral("port"),
        QStringLiteral("Listen there; 0 takes any free port."), QStringLiteral("number"),
        QStringLiteral("0"));
    const QCommandLineOption delay(QStringLiteral("delay-ms"),
        QStringLiteral("Wait so long between two words."), QStringLiteral("milliseconds"),
        QStringLiteral("25"));
    const QCommandLineOption noTools(QStringLiteral("no-native-tools"),
        QStringLiteral("Refuse requests that offer tools, as servers do that know none."));
    QCommandLineParser parser;
    parser.setApplicationDescription(
        QStringLiteral("A model server for trying out Pobblewig: answers by rules, not by AI."));
    parser.addHelpOption();
    parser.addOptions({ port, delay, noTools });
    parser.process(application);

    bool portFits = false;
    bool delayFits = false;
    const Options options { .port = parser.value(port).toUShort(&portFits),
        .server = { .delayBetweenWords =
                        std::chrono::milliseconds(parser.value(delay).toUShort(&delayFits)),
            .refusesTools = parser.isSet(noTools) } };
    return portFits && delayFits ? std::optional(options) : std::nullopt;
}

} // namespace

int main(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    QTextStream errors(stderr);
    const auto options = readOptions(application);
    if (!options) {
        errors << "the port and the delay are numbers from 0 to 65535\n";
        return 2;
    }
    pobblewig::DemoServer server(options->server);
    const auto port = server.listen(options->port);
    if (!port) {
        errors << "port " << options->port << " is not free\n";
        return 1;
    }
    pobblewig::TerminationSignals::quitOnArrival();
    QTextStream(stdout) << "listening on 127.0.0.1:" << *port << Qt::endl;
    return QCoreApplication::exec();
}
