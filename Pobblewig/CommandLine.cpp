#include "Pobblewig/CommandLine.h"

#include <QCommandLineParser>
#include <QCoreApplication>

#include <algorithm>
#include <cstdio>
#include <span>
#include <string_view>

namespace pobblewig {

namespace {

constexpr auto description = "A pixel creature that lives on your desktop and talks with you.\n"
                             "Started again, it opens the chat of the one that runs.";

} // namespace

std::optional<int> answerCommandLine(int argc, char** argv)
{
    const auto isOption = [](const char* argument) {
        return std::string_view(argument).starts_with('-');
    };
    if (std::ranges::none_of(std::span(argv, size_t(argc)).subspan(1), isOption))
        return std::nullopt;
    QStringList arguments;
    for (const auto* argument : std::span(argv, size_t(argc)))
        arguments.append(QString::fromLocal8Bit(argument));

    QCommandLineParser parser;
    parser.setApplicationDescription(QString::fromUtf8(description));
    const QCommandLineOption help(
        { QStringLiteral("h"), QStringLiteral("help") }, QStringLiteral("Displays this help."));
    parser.addOption(help);
    const auto version = parser.addVersionOption();
    parser.addPositionalArgument(QStringLiteral("link"),
        QStringLiteral("A pobblewig: link to open."), QStringLiteral("[link]"));
    // What else there is, is for the toolkit.
    parser.parse(arguments);
    if (parser.isSet(version))
        std::puts("Pobblewig " POBBLEWIG_VERSION);
    if (parser.isSet(help)) {
        // Knows the name of the program.
        const QCoreApplication application(argc, argv);
        std::fputs(qPrintable(parser.helpText()), stdout);
    }
    return parser.isSet(version) || parser.isSet(help) ? std::optional(0) : std::nullopt;
}

} // namespace pobblewig
