// A process that claims the data directory of its first argument, with the link of its second, and
// writes a line about all that happens to it.

#include "PobblewigLinux/desktop/OpenRequestLogic.h"
#include "PobblewigLinux/desktop/SingleInstance.h"

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

    using Claim = SingleInstance::Claim;
    SingleInstance instance(QDir(arguments.at(1)), bus);
    const auto claim = instance.claim(OpenRequestLogic::link(arguments.mid(2)));
    if (claim == Claim::first)
        instance.announce();
    say(claim == Claim::first            ? QStringLiteral("first")
            : claim == Claim::handedOver ? QStringLiteral("handed over")
                                         : instance.refusal());
    return claim == Claim::first ? QCoreApplication::exec() : 0;
}
