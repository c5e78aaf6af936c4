// How long the windows of pages take to appear and to scroll, with a settings window and with a
// large memory, beside a plain list of as many texts.

#include "Figure.h"
#include "PobblewigDesktop/memory/MemoryWindow.h"
#include "PobblewigDesktop/settings/SettingsWindow.h"
#include "desktop/ScriptedParts.h"
#include "support/Awaited.h"
#include "support/ScratchDirectory.h"
#include "support/ScriptedProvider.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QListView>
#include <QScrollBar>
#include <QStringListModel>
#include <QTreeView>

namespace pobblewig {

namespace {

constexpr int noteCount = 10'000;
constexpr int observationCount = 100'000;
constexpr int openings = 7;
constexpr int steps = 300;
constexpr double oneFrame = 1000.0 / 60;

using Window = std::unique_ptr<QWidget>;

/// Milliseconds until a new window is painted.
double opening(const std::function<Window()>& make)
{
    std::vector<double> times;
    for (int number = 0; number < openings; ++number) {
        QElapsedTimer time;
        time.start();
        const auto window = make();
        window->show();
        window->grab();
        times.push_back(double(time.nsecsElapsed()) / 1e6);
    }
    return median(times);
}

/// Milliseconds for a step of a screen and the picture of it, where 1 in 100 takes longer.
double scrolling(QWidget& window, QScrollBar& bar)
{
    std::vector<double> times;
    for (int step = 0; step < steps; ++step) {
        QElapsedTimer time;
        time.start();
        bar.setValue(bar.maximum() / steps * step);
        window.grab();
        times.push_back(double(time.nsecsElapsed()) / 1e6);
    }
    std::ranges::sort(times);
    return times[times.size() * 99 / 100];
}

QString sentence(int number)
{
    return QStringLiteral("Said something worth keeping about subject %1.").arg(number);
}

Task<> fill(AppCoordinator* coordinator)
{
    const auto now = ScriptedChat::now;
    std::vector<NewNote> notes;
    for (int number = 0; number < noteCount; ++number)
        notes.push_back({ .text = sentence(number) });
    co_await coordinator->memory().notes.addNotes(std::move(notes), now);
    std::vector<DatedObservation> observations;
    for (int number = 0; number < observationCount; ++number)
        observations.push_back({ .id = QUuid::createUuid(),
            .occurredAt = now - std::chrono::minutes(number),
            .recordedAt = now,
            .summary = sentence(number),
            .tags = { QStringLiteral("subject%1").arg(number % 40) } });
    co_await coordinator->memory().observations.addAll(std::move(observations));
    coordinator->refresh();
}

Window plainList(int count)
{
    QStringList texts;
    for (int number = 0; number < count; ++number)
        texts.append(sentence(number));
    auto list = std::make_unique<QListView>();
    list->setModel(new QStringListModel(texts, list.get()));
    list->setUniformItemSizes(true);
    list->resize(900, 680);
    return list;
}

std::unique_ptr<MemoryWindow> memoryWindow(AppCoordinator& coordinator, const char* page)
{
    auto window = std::make_unique<MemoryWindow>(coordinator, Calendar());
    window->setTheme(Theme::palette(ColorScheme::light, {}));
    window->openPage(QString::fromLatin1(page));
    window->showState(coordinator.state());
    return window;
}

void measureSettings(AppCoordinator& coordinator)
{
    const auto make = [&]() -> Window {
        auto window =
            std::make_unique<SettingsWindow>(coordinator, GeneralPage::Desktop(), Moment());
        window->setTheme(Theme::palette(ColorScheme::light, {}));
        window->showState(coordinator.state());
        return window;
    };
    Figure { .measured = "opening the settings",
        .value = opening(make),
        .peer = "a plain list of 10 texts",
        .peerValue = opening([] { return plainList(10); }),
        .most = 150 }
        .report();
}

void measureMemory(AppCoordinator& coordinator, const char* page, int count)
{
    const auto many = std::to_string(count / 1000) + ",000 " + page;
    const auto peer = plainList(count);
    auto& peerBar = *static_cast<QListView&>(*peer).verticalScrollBar();
    Figure { .measured = "opening " + many,
        .value = opening([&]() -> Window { return memoryWindow(coordinator, page); }),
        .peer = "a plain list of as many",
        .peerValue = opening([=] { return plainList(count); }),
        .most = 300 }
        .report();
    const auto window = memoryWindow(coordinator, page);
    window->show();
    peer->show();
    auto* const bar = window->findChild<QTreeView*>()->verticalScrollBar();
    Figure { .measured = "scrolling " + many + " by a step, 99 per cent",
        .value = scrolling(*window, *bar),
        .peer = "a plain list of as many",
        .peerValue = scrolling(*peer, peerBar),
        .most = oneFrame }
        .report();
}

} // namespace

} // namespace pobblewig

int main(int argc, char** argv)
{
    using namespace pobblewig;
    const QApplication application(argc, argv);
    const ScratchDirectory scratch;
    ScriptedProvider model;
    AppCoordinator coordinator(scriptedParts(scratch.path().path(), model));
    awaited(fill(&coordinator));
    measureSettings(coordinator);
    measureMemory(coordinator, "notes", noteCount);
    measureMemory(coordinator, "observations", observationCount);
    return 0;
}
