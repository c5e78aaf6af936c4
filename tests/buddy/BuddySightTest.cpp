#include "buddy/BuddySight.h"

#include <QTest>

namespace pobblewig {

class BuddySightTest : public QObject {
    Q_OBJECT

    using Kind = BuddySight::Window::Kind;
    using Windows = std::vector<BuddySight::Window>;

private Q_SLOTS:
    void aFullScreenIsInFront_data()
    {
        const QRect screen(0, 0, 1280, 800);
        const QRect other(-1920, 0, 1920, 1080);
        const QRect small(100, 100, 500, 400);
        const BuddySight::Window film { screen, Kind::fullScreen };
        const BuddySight::Window text { small };
        QTest::addColumn<Windows>("windows");
        QTest::addColumn<bool>("isInFront");
        const auto row = [](const char* name, const Windows& windows, bool isInFront) {
            QTest::newRow(name) << windows << isInFront;
        };
        row("nothing at all", {}, false);
        row("a window", { text }, false);
        row("a film", { film, text }, true);
        row("a window before the film", { text, film }, false);
        row("a panel and a dialog before it",
            { { { 0, 0, 1280, 30 }, Kind::beside }, { small, Kind::beside }, film }, true);
        row("a film on the other screen", { { other, Kind::fullScreen }, text }, false);
        row("work on the other screen", { { { -900, 50, 800, 600 } }, film }, true);
        row("a film over both screens", { { screen.united(other), Kind::fullScreen } }, true);
        row("a game without a word", { { screen } }, true);
        row("of a scaled size", { { { 0, 0, 1279, 799 } } }, true);
        row("all but a panel", { { { 0, 30, 1280, 770 } } }, false);
        row("as large as there is room", { { screen, Kind::maximised } }, false);
        row("the desktop's icons", { { screen, Kind::beside } }, false);
    }
    void aFullScreenIsInFront()
    {
        QFETCH(Windows, windows);
        QTEST(BuddySight::isFullScreenInFront(windows, { 0, 0, 1280, 800 }), "isInFront");
    }
};

} // namespace pobblewig

QTEST_GUILESS_MAIN(pobblewig::BuddySightTest)
#include "BuddySightTest.moc"
