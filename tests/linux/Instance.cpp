// A process that claims the data directory of its first argument, with the link of its second, and
// writes a line about all that happens to it.

#include "PobblewigLinux/OpenRequestLogic.h"
#include "PobblewigLinux/SingleInstance.h"

#include <QCoreApplication>

#include <cstdio>

using namespace pobblewig;

namespace {

void say(const QString& line)
{
    std::puts(qPrintable(line));
    std::fflush(stdout);
}

} // namespace

int main(int argc, char** argv)
{
    QCoreApplication application(argc, argv);
    const auto arguments = QCoreApplication::arguments();
    ApplicationBus bus;
    QObject::connect(&bus, &ApplicationBus::activated, [] { say(QStringLiteral("activated")); });
    QObject::connect(&bus, &ApplicationBus::openRequested,
        [](const QUrl& link) { say(QStringLiteral("open ") + link.toString()); });
    QObject::connect(&bus, &ApplicationBus::quitRequested, &application, &QCoreApplication::quit);

    SingleInstance instance(QDir(arguments.at(1)), bus);
    const auto claim = instance.claim(OpenRequestLogic::link(arguments.mid(2)));
    if (claim == SingleInstance::Claim::first)
        say(QStringLiteral("first"));
    if (claim == SingleInstance::Claim::handedOver)
        say(QStringLiteral("handed over"));
    if (claim == SingleInstance::Claim::unanswered)
        say(instance.refusal());
    return claim == SingleInstance::Claim::first ? QCoreApplication::exec() : 0;
}
