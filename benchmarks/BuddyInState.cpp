// Shows the buddy in a state, and prints what that costs: the share of a core in per cent, how many
// times a second the process woke up, and how many frames a second it painted.
// Usage: BuddyInState STATE SECONDS [blended], with an X server; "blended" stands in for a
// compositor, without one the window is cut to its shape.

#include "PobblewigDesktop/buddy/BuddyWindow.h"
#include "PobblewigLinux/x11/X11BuddyWindowSystem.h"
#include "support/SelectionOwner.h"

#include <QApplication>
#include <QScreen>
#include <QTemporaryDir>

#include <chrono>
#include <cstdio>
#include <sys/resource.h>

namespace pobblewig {

namespace {

using namespace std::chrono_literals;
using Kind = BuddyState::Kind;

constexpr auto timeToSettle = 5s;

double steadySeconds()
{
    const auto time = std::chrono::steady_clock::now().time_since_epoch();
    return std::chrono::duration<double>(time).count();
}

struct Cost {
    double cpuSeconds = 0;
    double wakeUps = 0;

    static Cost soFar()
    {
        rusage usage {};
        getrusage(RUSAGE_SELF, &usage);
        timespec cpu {};
        clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &cpu);
        return { double(cpu.tv_sec) + double(cpu.tv_nsec) / 1e9, double(usage.ru_nvcsw) };
    }
};

/// Walks to and fro, as a hand would move it.
void carry(BuddyWindow& window, QTimer& timer)
{
    window.view().beginDragging();
    auto step = 0;
    QObject::connect(&timer, &QTimer::timeout, &window, [&window, step]() mutable {
        const auto by = QPoint(++step / 60 % 2 == 0 ? 4 : -4, 0);
        window.move(window.pos() + by);
        window.view().windowMoved(by);
    });
    timer.start(16);
}

/// Seconds that the buddy's clock is ahead, for what takes long to happen.
double enter(const QString& state, BuddyWindow& window, QTimer& timer)
{
    auto& view = window.view();
    if (state == u"asleep")
        return BuddySleep::usualDelay;
    if (state == u"working" || state == u"occluded")
        view.setState({ Kind::working, {} });
    if (state == u"responding")
        view.setState({ Kind::responding, {} });
    if (state == u"notify")
        view.setState({ Kind::notify, QStringLiteral("Lab report due") });
    if (state == u"carried")
        carry(window, timer);
    return 0;
}

void hideBehind(QWidget& cover, const BuddyWindow& window)
{
    cover.setGeometry(window.screen()->geometry());
    cover.show();
    cover.raise();
}

/// Waits until the buddy has settled, counts for some seconds, prints and quits.
class Measurement : public QObject {
public:
    Measurement(BuddyWindow& window, double seconds)
        : m_seconds(seconds)
    {
        window.view().installEventFilter(this);
        QTimer::singleShot(timeToSettle, this, [this] {
            m_before = Cost::soFar();
            m_frames = 0;
        });
        const auto end = timeToSettle + std::chrono::milliseconds(qRound(seconds * 1000));
        QTimer::singleShot(end, this, [this] { print(); });
    }

    bool eventFilter(QObject*, QEvent* event) override
    {
        m_frames += event->type() == QEvent::Paint ? 1 : 0;
        return false;
    }

private:
    void print() const
    {
        const auto after = Cost::soFar();
        std::printf("%.3f %.1f %.1f\n", 100 * (after.cpuSeconds - m_before.cpuSeconds) / m_seconds,
            (after.wakeUps - m_before.wakeUps) / m_seconds, m_frames / m_seconds);
        QApplication::quit();
    }

    double m_seconds;
    Cost m_before;
    int m_frames = 0;
};

} // namespace

} // namespace pobblewig

int main(int argc, char** argv)
{
    using namespace pobblewig;
    QApplication application(argc, argv);
    const auto arguments = QApplication::arguments();
    const auto connection = X11Connection::create();
    if (arguments.size() < 3 || !connection)
        return 2;
    const auto& state = arguments[1];

    std::optional<SelectionOwner> compositor;
    if (arguments.contains(QStringLiteral("blended")))
        compositor.emplace("_NET_WM_CM_S0");
    const QTemporaryDir scratch;
    QSettings settings(scratch.filePath(QStringLiteral("desktop.conf")), QSettings::IniFormat);
    X11BuddyWindowSystem system(*connection);
    auto ahead = 0.0;
    BuddyWindow window(system, settings, [&ahead] { return steadySeconds() + ahead; });
    window.show();
    QTimer timer;
    ahead = enter(state, window, timer);
    QWidget cover(nullptr, Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint);
    if (state == u"occluded")
        QTimer::singleShot(timeToSettle / 2, &cover, [&] { hideBehind(cover, window); });
    const Measurement measurement(window, arguments[2].toDouble());
    return QApplication::exec();
}
