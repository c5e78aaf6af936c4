#include "buddy/BuddyGlide.h"

#include "support/TableRow.h"

namespace pobblewig {

class BuddyGlideTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void itSlidesOnAsItWasThrown_data()
    {
        columns<QPoint, double, QPoint, QPoint>("step", "pause", "least", "most");
        row("thrown to the right", QPoint(10, 0), 0.0, QPoint(60, 0), QPoint(140, 0));
        row("to the upper left", QPoint(-10, -5), 0.0, QPoint(-140, -70), QPoint(-60, -30));
        row("with care", QPoint(1, 0), 0.0, QPoint(), QPoint());
        row("held still first", QPoint(10, 0), 0.3, QPoint(), QPoint());
        row("as if shot", QPoint(90, 0), 0.0, QPoint(300, 0), QPoint(400, 0));
    }
    void itSlidesOnAsItWasThrown()
    {
        QFETCH(QPoint, step);
        QFETCH(double, pause);
        QFETCH(QPoint, least);
        QFETCH(QPoint, most);
        throwIt(step, pause, m_everywhere);
        QVERIFY(m_glide.isGliding() == (most != least));
        const auto way = slide() - m_released;
        QVERIFY(QRect(least, most).adjusted(0, 0, 1, 1).contains(way));
        QVERIFY(m_now - m_releasedAt < 1);
    }

    void itStopsAtAnEdgeWithoutALeap()
    {
        const auto end = 16 * 10;
        // In the way, there already, and beyond it.
        for (const auto& [width, x] :
            { std::pair(end + 31, end + 30), { end + 1, end }, { 100, end } }) {
            throwIt({ 10, 0 }, 0, { 0, 0, width, 500 });
            auto before = m_released;
            while (m_glide.isGliding()) {
                const auto next = step();
                QVERIFY((next - before).manhattanLength() <= 10);
                before = next;
            }
            QCOMPARE(before, QPoint(x, 200));
            QVERIFY(m_now - m_releasedAt < 1);
        }
    }

    void aHandOrAStopEndsIt()
    {
        throwIt({ 10, 0 }, 0, m_everywhere);
        const auto place = step();
        m_glide.grab(place, m_now);
        QVERIFY(!m_glide.isGliding());
        m_glide.release(m_everywhere, m_now);
        QVERIFY(!m_glide.isGliding());
        throwIt({ 10, 0 }, 0, m_everywhere);
        const auto last = step();
        m_glide.stop();
        m_now += 1;
        QCOMPARE(m_glide.tick(m_now), last);
    }

    void motionsInABunchAreNoLeap()
    {
        m_glide.grab({ 0, 200 }, m_now);
        m_now += 0.1;
        for (int x = 1; x <= 8; ++x)
            m_glide.carry({ x, 200 }, m_now + 0.0001 * x);
        m_glide.release(m_everywhere, m_now + 0.001);
        QVERIFY(!m_glide.isGliding());
    }

private:
    void throwIt(QPoint step, double pause, const QRect& bounds)
    {
        m_released = { 0, 200 };
        m_glide.grab(m_released, m_now);
        for (int i = 0; i < 16; ++i) {
            m_now += frame;
            m_released += step;
            m_glide.carry(m_released, m_now);
        }
        m_now += pause;
        m_releasedAt = m_now;
        m_glide.release(bounds, m_now);
    }

    QPoint step()
    {
        m_now += frame;
        return m_glide.tick(m_now);
    }

    QPoint slide()
    {
        auto place = m_released;
        while (m_glide.isGliding())
            place = step();
        return place;
    }

    static constexpr double frame = 1.0 / 60;

    const QRect m_everywhere { -5000, -5000, 10000, 10000 };
    double m_now = 1000;
    double m_releasedAt = 0;
    QPoint m_released;
    BuddyGlide m_glide;
};

} // namespace pobblewig

QTEST_GUILESS_MAIN(pobblewig::BuddyGlideTest)
#include "BuddyGlideTest.moc"
