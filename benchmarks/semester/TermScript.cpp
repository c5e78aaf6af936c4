#include "TermScript.h"

#include <QTimeZone>

#include <array>

namespace pobblewig {

namespace {

constexpr int daysOfAWeek = 7;

const std::array sentences { u"Good morning, this is day %1", u"What do you know about tea",
    u"I read chapter %1 today and it was hard going", u"What happened yesterday",
    u"I have to hand in essay %1 by Friday", u"What time is it",
    u"Davis said that lecture %1 was only an introduction" };

class TermWriter {
public:
    explicit TermWriter(const TermPlan& plan)
        : m_plan(plan)
    {
    }

    Term written()
    {
        for (int number = 1; number <= m_plan.length; ++number) {
            if (!m_plan.absent.contain(number) && number != m_plan.abroad.first - 1)
                write(number);
        }
        return std::move(m_days);
    }

private:
    void write(int number);
    TermDay::Ending ending(int number) const;
    void open(bool mayRunOn);
    void talk();
    void switchMemory(TermAct::Kind kind, const QDateTime& at);
    void comeHome();
    void stayUp();

    TermDay& day() { return m_days.back(); }
    bool runsOn(int number) const { return number % m_plan.daysBetweenNights == 0; }
    bool isLate(const TermDay& day) const;
    QDateTime at(int hour, int minute) const;
    void poll(int hour, int minute, bool endsSession);
    void say(const QDateTime& at, std::optional<QStringView> sentence = std::nullopt);

    TermPlan m_plan;
    Term m_days;
    QTimeZone m_zone;
    bool m_isMemoryOn = true;
    int m_sessions = 0;
    size_t m_said = 0;
};

void TermWriter::write(int number)
{
    const QTimeZone zone(m_plan.abroad.contain(number) ? "Pacific/Auckland" : "Europe/Berlin");
    const auto mayRunOn = !m_days.empty() && day().ending == TermDay::Ending::whole
        && day().number == number - 1 && m_zone == zone && runsOn(number);
    m_zone = zone;
    m_days.push_back({ .number = number, .date = m_plan.begin.addDays(number - 1) });
    open(mayRunOn);
    talk();
    if (number == m_plan.abroad.last)
        comeHome();
    if (isLate(day()))
        stayUp();
    m_sessions += day().sessions;
    if (number < m_plan.length)
        day().ending = ending(number);
}

TermDay::Ending TermWriter::ending(int number) const
{
    // Without the librarian and observations a rollover has fewer steps to be killed in.
    if (runsOn(number + 1) || m_plan.memoryOff.contain(number))
        return TermDay::Ending::whole;
    if (m_sessions % daysOfAWeek == 0)
        return TermDay::Ending::killedInTheWeek;
    // Who is killed after the day has to have begun it.
    return number % 5 == 3 && !runsOn(number) ? TermDay::Ending::killedAfterTheDay
                                              : TermDay::Ending::killedAtLaunch;
}

void TermWriter::open(bool mayRunOn)
{
    if (!mayRunOn) {
        const auto isFirst = m_days.size() == 1;
        const auto afterCrash = !isFirst && m_days.rbegin()[1].ending != TermDay::Ending::whole;
        day().acts.push_back({ TermAct::Kind::launch, at(8, 0), {},
            afterCrash ? std::nullopt : std::optional(!isFirst) });
        return;
    }
    const auto wasLate = isLate(m_days.rbegin()[1]);
    if (!wasLate)
        poll(0, 5, false);
    if (day().date == m_plan.clockChange) {
        // Five hours after a reply soon after half past two, which struck twice.
        poll(6, 30, false);
        poll(6, 31, true);
        return;
    }
    poll(5, 30, !wasLate);
    poll(8, 0, wasLate);
}

void TermWriter::talk()
{
    const auto range = m_plan.mostTurns - m_plan.fewestTurns + 1;
    const auto turns = m_plan.fewestTurns + day().number * 5 % range;
    const auto minutes = 12 * 60 / (turns - 1);
    for (int turn = 0; turn < turns; ++turn) {
        if (turn == turns / 2 && day().number % 11 == 5) {
            const auto time = at(9, turn * minutes - 1);
            day().acts.push_back({ TermAct::Kind::startNewSession, time, {}, true });
            ++day().sessions;
        }
        say(at(9, turn * minutes));
    }
    if (day().number == m_plan.memoryOff.first)
        switchMemory(TermAct::Kind::switchMemoryOff, at(21, 20));
    if (day().number == m_plan.memoryOff.last)
        switchMemory(TermAct::Kind::switchMemoryOn, at(21, 20));
    say(at(21, 30), u"Remember that I like tea number %1");
}

/// Amid a session, whose other turns the librarian may read.
void TermWriter::switchMemory(TermAct::Kind kind, const QDateTime& at)
{
    m_isMemoryOn = kind == TermAct::Kind::switchMemoryOn;
    day().acts.push_back({ TermAct::Kind::launch, at });
    day().acts.push_back({ kind, at });
}

/// The same date, a day later: the session goes on.
void TermWriter::comeHome()
{
    m_zone = QTimeZone("Europe/Berlin");
    day().acts.push_back({ TermAct::Kind::launch, at(20, 0), {}, false });
    say(at(20, 30));
}

void TermWriter::stayUp()
{
    say(at(23, 50));
    poll(24, 10, false);
    say(at(24, 40));
    const auto isClockChange = day().date.addDays(1) == m_plan.clockChange;
    say(at(24, 40).addSecs((isClockChange ? 110 : 50) * 60));
}

bool TermWriter::isLate(const TermDay& day) const
{
    return day.number % 9 == 0 || day.date.addDays(1) == m_plan.clockChange;
}

/// Hours and minutes may reach beyond the day.
QDateTime TermWriter::at(int hour, int minute) const
{
    const auto minutes = hour * 60 + minute;
    const auto& date = m_days.back().date;
    return { date.addDays(minutes / (24 * 60)),
        QTime::fromMSecsSinceStartOfDay(minutes % (24 * 60) * 60'000), m_zone };
}

void TermWriter::poll(int hour, int minute, bool endsSession)
{
    day().acts.push_back({ TermAct::Kind::poll, at(hour, minute), {}, endsSession });
}

void TermWriter::say(const QDateTime& at, std::optional<QStringView> sentence)
{
    if (!sentence)
        sentence = sentences[m_said++ % sentences.size()];
    auto text = sentence->toString().replace(QStringLiteral("%1"), QString::number(day().number));
    if (!m_isMemoryOn)
        text = QStringLiteral("Remember that I love ") + unmemorableWord();
    day().acts.push_back({ TermAct::Kind::say, at, text });
}

} // namespace

Term writtenTerm(const TermPlan& plan)
{
    return TermWriter(plan).written();
}

QString unmemorableWord()
{
    return QStringLiteral("zanzibar");
}

} // namespace pobblewig
