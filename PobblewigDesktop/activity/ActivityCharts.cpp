#include "PobblewigDesktop/activity/ActivityCharts.h"

#include <QCoreApplication>

#include <algorithm>
#include <array>
#include <cmath>

namespace pobblewig {

namespace {

using namespace std::chrono_literals;

struct Texts {
    Q_DECLARE_TR_FUNCTIONS(ActivityCharts)
};

constexpr auto leastGap = 5min;
constexpr size_t mostBars = 8;
constexpr int hoursBetweenTicks = 4;
constexpr double hour = 3600;

constexpr std::array categoryOrder { AppCategory::development, AppCategory::productivity,
    AppCategory::browsing, AppCategory::social, AppCategory::entertainment, AppCategory::other };

QString time(TimePoint at, const Calendar& calendar)
{
    return calendar.locale.toString(calendar.dateTime(at).time(), QLocale::ShortFormat);
}

double total(const std::vector<ActivityDay>& days)
{
    double seconds = 0;
    for (const auto& [category, inCategory] : ActivityDayLogic::categories(days))
        seconds += inCategory;
    return seconds;
}

QString observed(const std::vector<ActivityDay>& days)
{
    const auto inUse = total(days);
    const auto idle = ActivityDayLogic::idle(days);
    if (inUse + idle <= 0)
        return Texts::tr("Nothing was observed.");
    const auto words = Texts::tr("%1 in use").arg(ActivityCharts::duration(inUse));
    return idle <= 0 ? words
                     : Texts::tr("%1, %2 without input").arg(words, ActivityCharts::duration(idle));
}

std::vector<ChartTick> hours(const ActivityDay& day, const Calendar& calendar)
{
    std::vector<ChartTick> ticks;
    const std::chrono::duration<double> length = day.end - day.start;
    for (int at = 0; at < 24; at += hoursBetweenTicks) {
        const QDateTime moment(day.day, QTime(at, 0), calendar.timeZone);
        const TimePoint point(std::chrono::milliseconds(moment.toMSecsSinceEpoch()));
        ticks.push_back({ (point - day.start) / length, time(point, calendar) });
    }
    ticks.push_back({ 1, time(day.end, calendar) });
    return ticks;
}

/// Builds the line of a day piece by piece.
class DayLine {
public:
    DayLine(const ActivityDay& day, const Calendar& calendar)
        : m_day(day)
        , m_calendar(calendar)
    {
    }

    void add(const ActivitySpan& span)
    {
        if (m_before && span.from - *m_before >= leastGap)
            add(Texts::tr("Nothing observed"), { .from = *m_before, .to = span.from },
                ChartMark::noColor);
        add(span.isIdle ? Texts::tr("%1, without input").arg(span.application) : span.application,
            span, int(span.category));
        m_before = std::max(m_before.value_or(span.to), span.to);
    }

    ChartContents contents { .values = LineChart() };

private:
    void add(const QString& what, const ActivitySpan& span, int color)
    {
        const auto begins = time(span.from, m_calendar);
        const auto ends = time(span.to, m_calendar);
        const auto length = ActivityCharts::duration(span.seconds());
        std::get<LineChart>(contents.values)
            .pieces.push_back({ share(span.from), share(span.to), color,
                Texts::tr("%1, %2 to %3, %4").arg(what, begins, ends, length), span.isIdle });
        contents.rows.push_back({ begins, ends, what, length });
    }

    double share(TimePoint at) const
    {
        const std::chrono::duration<double> length = m_day.end - m_day.start;
        return (at - m_day.start) / length;
    }

    const ActivityDay& m_day;
    const Calendar& m_calendar;
    std::optional<TimePoint> m_before;
};

ChartContents bars(const std::vector<BarChart::Bar>& bars, const QString& name)
{
    ChartContents contents { .columns = { name, Texts::tr("Time") } };
    for (const auto& bar : bars)
        contents.rows.push_back({ bar.name, bar.valueText });
    contents.values = BarChart { bars };
    return contents;
}

std::vector<ChartTick> ticks(double most, const std::function<QString(double)>& text)
{
    std::vector<ChartTick> ticks;
    for (const auto value : ChartLogic::steps(most))
        ticks.push_back({ value, text(value) });
    return ticks;
}

struct Lane {
    QString name;
    int color;
    qint64 UsageCounter::Snapshot::*read;
    qint64 UsageCounter::Snapshot::*written;
    qint64 UsageCounter::Snapshot::*calls;
};

std::array<Lane, 3> allLanes()
{
    using U = UsageCounter::Snapshot;
    return { {
        { Texts::tr("Conversation"), int(AppCategory::productivity), &U::mainPromptTokens,
            &U::mainCompletionTokens, &U::chatCalls },
        { Texts::tr("Librarian"), int(AppCategory::browsing), &U::librarianPromptTokens,
            &U::librarianCompletionTokens, &U::librarianCalls },
        { Texts::tr("Pictures"), int(AppCategory::social), &U::visionPromptTokens,
            &U::visionCompletionTokens, &U::visionCalls },
    } };
}

ColumnChart::Column column(const ActivityDay& day, const Calendar& calendar)
{
    const auto seconds = ActivityDayLogic::categories({ day });
    ColumnChart::Column column { .name = calendar.locale.dayName(
                                     day.day.dayOfWeek(), QLocale::ShortFormat) };
    const auto inFull = calendar.locale.dayName(day.day.dayOfWeek());
    for (const auto category : categoryOrder) {
        const auto found = seconds.find(category);
        if (found != seconds.end())
            column.parts.push_back({ found->second / hour, int(category),
                QStringLiteral("%1, %2: %3")
                    .arg(inFull, ActivityCharts::name(category),
                        ActivityCharts::duration(found->second)) });
    }
    return column;
}

} // namespace

QString ActivityCharts::duration(double seconds)
{
    const auto minutes = qint64(seconds / 60);
    if (minutes == 0)
        return Texts::tr("under 1 min");
    if (minutes < 60)
        return Texts::tr("%1 min").arg(minutes);
    return minutes % 60 == 0 ? Texts::tr("%1 h").arg(minutes / 60)
                             : Texts::tr("%1 h %2 min").arg(minutes / 60).arg(minutes % 60);
}

QString ActivityCharts::name(AppCategory category)
{
    switch (category) {
    case AppCategory::entertainment:
        return Texts::tr("Entertainment");
    case AppCategory::social:
        return Texts::tr("Social");
    case AppCategory::development:
        return Texts::tr("Development");
    case AppCategory::browsing:
        return Texts::tr("Browsing");
    case AppCategory::productivity:
        return Texts::tr("Productivity");
    case AppCategory::other:
        return Texts::tr("Other");
    }
    Q_UNREACHABLE();
}

ChartContents ActivityCharts::line(const ActivityDay& day, const Calendar& calendar)
{
    DayLine line(day, calendar);
    for (const auto& span : day.spans)
        line.add(span);
    auto contents = std::move(line.contents);
    std::get<LineChart>(contents.values).ticks = hours(day, calendar);
    contents.summary = observed({ day });
    contents.columns = { Texts::tr("From"), Texts::tr("To"), Texts::tr("Application"),
        Texts::tr("Time") };
    return contents;
}

ChartContents ActivityCharts::categories(const std::vector<ActivityDay>& days)
{
    std::vector<BarChart::Bar> all;
    for (const auto& [category, seconds] : ActivityDayLogic::categories(days))
        all.push_back({ name(category), seconds, duration(seconds), int(category) });
    std::ranges::stable_sort(all, std::ranges::greater(), &BarChart::Bar::value);
    return bars(all, Texts::tr("Category"));
}

ChartContents ActivityCharts::applications(const std::vector<ActivityDay>& days)
{
    std::vector<BarChart::Bar> all;
    double rest = 0;
    for (const auto& application : ActivityDayLogic::applications(days)) {
        const auto seconds = application.seconds;
        if (all.size() < mostBars)
            all.push_back(
                { application.name, seconds, duration(seconds), int(application.category) });
        else
            rest += seconds;
    }
    if (rest > 0)
        all.push_back({ Texts::tr("All others"), rest, duration(rest), int(AppCategory::other) });
    return bars(all, Texts::tr("Application"));
}

ChartContents ActivityCharts::days(const std::vector<ActivityDay>& days, const Calendar& calendar)
{
    ColumnChart chart;
    ChartContents contents { .summary = observed(days),
        .columns = { Texts::tr("Day"), Texts::tr("Time") } };
    double most = 0;
    for (const auto& day : days) {
        const auto seconds = total({ day });
        most = std::max(most, seconds / hour);
        chart.columns.push_back(column(day, calendar));
        contents.rows.push_back({ calendar.locale.toString(day.day, QLocale::LongFormat),
            seconds > 0 ? duration(seconds) : Texts::tr("nothing observed") });
    }
    chart.ticks = ticks(most, [](double value) { return Texts::tr("%1 h").arg(value); });
    contents.values = std::move(chart);
    return contents;
}

ChartContents ActivityCharts::lanes(const UsageCounter::Snapshot& usage, const QLocale& locale)
{
    BarChart chart;
    ChartContents contents { .columns = { Texts::tr("Model"), Texts::tr("Calls"),
                                 Texts::tr("Tokens read"), Texts::tr("Tokens written") } };
    for (const auto& lane : allLanes()) {
        const auto tokens = usage.*lane.read + usage.*lane.written;
        chart.bars.push_back({ lane.name, double(tokens), locale.toString(tokens), lane.color });
        contents.rows.push_back({ lane.name, locale.toString(usage.*lane.calls),
            locale.toString(usage.*lane.read), locale.toString(usage.*lane.written) });
    }
    contents.values = std::move(chart);
    return contents;
}

ChartContents ActivityCharts::usage(
    const std::vector<UsageCounter::Day>& days, QDate today, const QLocale& locale)
{
    constexpr int shownDays = 14;
    ColumnChart chart;
    ChartContents contents { .columns = { Texts::tr("Day") } };
    double most = 0;
    for (const auto& lane : allLanes())
        contents.columns.append(lane.name);
    for (auto day = today.addDays(1 - shownDays); day <= today; day = day.addDays(1)) {
        const auto found =
            std::ranges::find(days, day.toString(Qt::ISODate), &UsageCounter::Day::day);
        const auto usage = found == days.end() ? UsageCounter::Snapshot() : found->usage;
        const auto inFull = locale.toString(day, QLocale::ShortFormat);
        ColumnChart::Column column { .name = QString::number(day.day()) };
        QStringList row { inFull };
        double sum = 0;
        for (const auto& lane : allLanes()) {
            const auto tokens = usage.*lane.read + usage.*lane.written;
            row.append(locale.toString(tokens));
            sum += double(tokens);
            column.parts.push_back({ double(tokens), lane.color,
                Texts::tr("%1, %2: %3 tokens").arg(inFull, lane.name, locale.toString(tokens)) });
        }
        most = std::max(most, sum);
        chart.columns.push_back(std::move(column));
        contents.rows.push_back(std::move(row));
    }
    chart.ticks = ticks(most, [&](double value) { return locale.toString(qint64(value)); });
    contents.values = std::move(chart);
    return contents;
}

} // namespace pobblewig
