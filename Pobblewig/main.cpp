#include "Pobblewig/CommandLine.h"
#include "PobblewigDesktop/AppDelegate.h"
#include "PobblewigLinux/LinuxSession.h"
#include "PobblewigLinux/desktop/ApplicationBus.h"
#include "PobblewigLinux/desktop/ApplicationIdentifiers.h"
#include "PobblewigLinux/desktop/Autostart.h"
#include "PobblewigLinux/desktop/BeneathAppDataReader.h"
#include "PobblewigLinux/desktop/DesktopNotifications.h"
#include "PobblewigLinux/desktop/OpenRequestLogic.h"
#include "PobblewigLinux/desktop/SingleInstance.h"
#include "PobblewigLinux/desktop/Sounds.h"
#include "PobblewigLinux/modules/LateCalendarProvider.h"
#include "PobblewigLinux/modules/LateHTTPClient.h"
#include "PobblewigLinux/modules/LatePictureDecoder.h"
#include "PobblewigLinux/x11/TrayWatch.h"
#include "PobblewigLinux/x11/X11BuddyWindowSystem.h"
#include "foundation/JSONFileStore.h"
#include "foundation/QtKeychainHelper.h"

#include <QApplication>
#include <QLocale>
#include <QStandardPaths>

#include <cstdio>
#include <malloc.h>

using namespace pobblewig;

namespace {

/// A Wayland client can neither place itself nor stay on top, so the buddy comes through XWayland
/// where there is one.
void preferX11()
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM") && !qEnvironmentVariableIsEmpty("DISPLAY"))
        qputenv("QT_QPA_PLATFORM", "xcb");
}

QString desktopSettingsPath()
{
    const auto config = QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation);
    return config + QStringLiteral("/Pobblewig/desktop.conf");
}

std::unique_ptr<BuddyWindowSystem> windowSystem(X11Connection* connection)
{
    if (!connection)
        return std::make_unique<UnavailableBuddyWindowSystem>();
    return std::make_unique<X11BuddyWindowSystem>(*connection);
}

/// Where they are built, or where they are installed.
std::optional<QDir> bundledMemes()
{
    const QDir program(QCoreApplication::applicationDirPath());
    const QDir built(program.filePath(QStringLiteral("memes")));
    const QDir installed(program.filePath(QStringLiteral(POBBLEWIG_MEMES)));
    if (built.exists())
        return built;
    return installed.exists() ? std::optional(installed) : std::nullopt;
}

AppCoordinator::Parts parts(LinuxSession& session, QSettings& desktopSettings)
{
    return {
        .directory = std::nullopt,
        .http = std::make_unique<LateHTTPClient>(),
        .keychain = std::make_unique<QtKeychainHelper>(),
        .environment = [] { return currentEnvironment(EnvironmentFile::defaultPath()); },
        .environmentFile = EnvironmentFile::defaultPath(),
        .wording = PlatformWording::linuxDesktop,
        .appDataReading = std::make_unique<BeneathAppDataReader>(),
        .calendarProvider = std::make_unique<LateCalendarProvider>(desktopSettings),
        .observation = { .frontmostProvider = &session.frontmostProvider(),
            .alwaysExcluded = LinuxSession::alwaysExcluded(),
            .identifierOf = ApplicationIdentifiers::identifier,
            .report = session.observation() },
        .screen = { session.capturer(), &session.permissions() },
        .occupation = &session.occupation(),
        .pictures = std::make_shared<LatePictureDecoder>(),
        .bundledMemes = bundledMemes(),
    };
}

/// The status to exit with if another process has the data.
std::optional<int> refusal(SingleInstance& instance, const std::optional<QUrl>& link)
{
    const auto claim = instance.claim(link);
    if (claim == SingleInstance::Claim::first)
        return std::nullopt;
    if (claim == SingleInstance::Claim::handedOver)
        return 0;
    std::fprintf(stderr, "%s\n", qPrintable(instance.refusal()));
    return 1;
}

} // namespace

int main(int argc, char** argv)
{
    if (const auto status = answerCommandLine(argc, argv))
        return *status;
    preferX11();
    QApplication application(argc, argv);
    QApplication::setApplicationName(QStringLiteral("Pobblewig"));
    QApplication::setApplicationVersion(QStringLiteral(POBBLEWIG_VERSION));
    QApplication::setDesktopFileName(QStringLiteral("com.pobblewig.app"));
    QApplication::setQuitOnLastWindowClosed(false);
    const QLocale language(QLocale::system().uiLanguages().value(0));
    QApplication::setLayoutDirection(language.textDirection());

    // Before the lock, which would create the directory under its present name.
    JSONFileStore::migrateLegacyDefaultDirectory();
    ApplicationBus bus;
    SingleInstance instance(JSONFileStore::defaultDirectory(), bus);
    const auto link = OpenRequestLogic::link(QApplication::arguments().mid(1));
    if (instance.isContested()) {
        if (const auto status = refusal(instance, link))
            return *status;
    }

    const auto connection = X11Connection::create();
    const auto buddySystem = windowSystem(connection.get());
    // Made once the buddy is there: they ask the bus.
    std::optional<LinuxSession> session;
    std::optional<DesktopNotifications> notifications;
    Sounds sounds;
    Autostart autostart;
    QSettings desktopSettings(desktopSettingsPath(), QSettings::IniFormat);
    AppDelegate delegate(*buddySystem, desktopSettings);
    QObject::connect(&bus, &ApplicationBus::activated, &delegate, &AppDelegate::openChat);
    QObject::connect(&bus, &ApplicationBus::openRequested, &delegate, &AppDelegate::openLink);
    QObject::connect(&bus, &ApplicationBus::quitRequested, &delegate, &AppDelegate::quit);

    // The bus can wait until the buddy is there.
    std::optional<TrayWatch> trayWatch;
    QObject::connect(&delegate, &AppDelegate::launched, &delegate, [&] {
        instance.announce();
        notifications.emplace();
        auto& presence = delegate.presence();
        presence.useServices(
            { session->hotKeys(), *notifications, sounds, autostart, session->windows() });
        trayWatch.emplace(connection.get());
        QObject::connect(
            &*trayWatch, &TrayWatch::trayAppeared, &presence, &DesktopPresence::showTray);
        trayWatch->start();
        // Only the start needed so much.
        ::malloc_trim(0);
    });
    delegate.launch([&]() -> std::optional<AppCoordinator::Parts> {
        // The lock waits for the disk, so the buddy does not wait for the lock.
        if (const auto status = refusal(instance, link)) {
            QApplication::exit(*status);
            return std::nullopt;
        }
        const auto environment = currentEnvironment(EnvironmentFile::defaultPath());
        return parts(session.emplace(connection.get(), environment), desktopSettings);
    });
    if (link)
        delegate.openLink(*link);
    return QApplication::exec();
}
