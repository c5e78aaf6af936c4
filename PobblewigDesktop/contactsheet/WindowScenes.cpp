#include "PobblewigDesktop/contactsheet/WindowScenes.h"

#include "PobblewigDesktop/bubble/BubbleWindow.h"
#include "PobblewigDesktop/chat/past/PastConversations.h"
#include "PobblewigDesktop/presence/BuddyFace.h"
#include "memory/history/ChatArchive.h"
#include "presence/BubbleLogic.h"

#include <QLineEdit>
#include <QPainter>
#include <QTemporaryDir>

namespace pobblewig {

namespace {

using namespace std::chrono_literals;

constexpr QRect room(0, 0, 400, 160);

WindowScene bubble(const char* name, const QString& text, const QRect& buddy)
{
    return { QString::fromUtf8(name), [=](ColorScheme scheme) {
                UnavailableBuddyWindowSystem desktop;
                BubbleWindow bubble(desktop);
                bubble.setTheme(Theme::palette(scheme, QStringLiteral("coral")));
                bubble.setText(text);
                bubble.standBeside(buddy, room);
                const auto drawn = bubble.grab();
                QPixmap picture(room.size() * drawn.devicePixelRatio());
                picture.setDevicePixelRatio(drawn.devicePixelRatio());
                picture.fill(scheme == ColorScheme::light ? 0xc8d6df : 0x101418);
                QPainter painter(&picture);
                BuddyFace::icon(MascotSprite::forID(u"axolotl")).paint(&painter, buddy);
                painter.drawPixmap(bubble.pos(), drawn);
                return picture.toImage();
            } };
}

void archive(
    const DataDirectory& directory, const char* day, const QString& question, const QString& reply)
{
    const auto session = QUuid::createUuid();
    const auto dayKey = QString::fromLatin1(day);
    const auto time = QDateTime::fromString(dayKey + QStringLiteral("T09:12:00Z"), Qt::ISODate);
    const TimePoint moment { std::chrono::milliseconds(time.toMSecsSinceEpoch()) };
    const auto written = ChatArchive::write(directory,
        { { .id = QUuid::createUuid(), .text = question, .timestamp = moment },
            { .id = QUuid::createUuid(),
                .role = ChatMessage::Role::assistant,
                .text = reply,
                .timestamp = moment } },
        dayKey, session);
    if (!written)
        qFatal("The archive cannot be written.");
}

QImage past(ColorScheme scheme, const QString& wanted)
{
    const QTemporaryDir home;
    const DataDirectory directory { QDir(home.path()) };
    archive(directory, "2026-02-27", QStringLiteral("Is a café a good place to learn?"),
        QStringLiteral("**Often.** A cafe is loud enough to hide in:\n\n- bring headphones\n"
                       "- one CAFÉ, one chapter"));
    archive(directory, "2026-02-20", QStringLiteral("متى الامتحان؟"),
        QStringLiteral("الامتحان يوم الجمعة في الساعة 9."));
    const Moment moment { [] { return StagedChat::now; } };
    QtKeychainHelper keychain;
    StoreRoom stores({ .directory = directory, .moment = moment, .keychain = keychain });
    stores.stores().history.append({ .id = QUuid::createUuid(),
        .text = QStringLiteral("Donaudampfschiff").repeated(4),
        .timestamp = StagedChat::now });
    ConversationLibrary library(stores.stores().history, stores.stores().memory, moment, directory);
    PastConversations window(
        library, Calendar { QTimeZone::utc(), QLocale(QStringLiteral("en_GB")) }, moment.clock);
    window.setTheme(Theme::palette(scheme, QStringLiteral("coral")));
    window.show();
    window.findChild<QLineEdit*>()->setText(wanted);
    PanelStage::watch(700ms);
    return window.grab().toImage();
}

} // namespace

std::vector<WindowScene> WindowScenes::all()
{
    const QRect below(room.center().x() - 32, room.bottom() - 40, 64, 40);
    const QRect atTheEdge(room.right() - 64, room.bottom() - 60, 64, 40);
    return {
        bubble("bubble, hello", QStringLiteral("Hello. I am Pobblewig. Click me to talk."), below),
        bubble("bubble, answer",
            BubbleLogic::firstLine(QStringLiteral(
                "The **central limit theorem** says that the averages of many samples "
                "gather around the true mean in a bell shape, whatever the samples")),
            below),
        bubble("bubble, reminder", QStringLiteral("Lab report 🧪, due 18:00"), atTheEdge),
        bubble("bubble, two things wait", BubbleLogic::waitingInWords(2), atTheEdge),
        bubble("bubble, problem",
            QStringLiteral("Nothing answers at 127.0.0.1:11434 on this computer."), below),
        bubble("bubble, Arabic", QStringLiteral("الامتحان يوم الجمعة في الساعة 9."), below),
        { QStringLiteral("past conversations"),
            [](ColorScheme scheme) { return past(scheme, {}); } },
        { QStringLiteral("past conversations, search"),
            [](ColorScheme scheme) { return past(scheme, QStringLiteral("CAFE")); } },
        { QStringLiteral("past conversations, nothing found"),
            [](ColorScheme scheme) { return past(scheme, QStringLiteral("tea")); } },
    };
}

std::vector<WindowScene> WindowScenes::of(const std::vector<PanelScene>& scenes)
{
    std::vector<WindowScene> windows;
    windows.reserve(scenes.size());
    for (const auto& scene : scenes)
        windows.push_back(
            { scene.name, [scene](ColorScheme scheme) { return scene.picture(scheme); } });
    return windows;
}

} // namespace pobblewig
