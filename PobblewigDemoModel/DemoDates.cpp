#include "PobblewigDemoModel/DemoDates.h"

#include <QLocale>
#include <QRegularExpression>
#include <QTimeZone>

namespace pobblewig {

namespace {

QTime usualTime()
{
    return { 9, 0 };
}

QRegularExpression pattern(const QString& text)
{
    return QRegularExpression(text, QRegularExpression::CaseInsensitiveOption);
}

const QString& amount()
{
    static const auto text = QStringLiteral(
        R"((?<count>\d{1,4}|half an|an?|one|two|three|four|five|six|seven|eight|nine|ten)[ -]*)");
    return text;
}

const QRegularExpression& duration()
{
    static const auto words = pattern(
        QStringLiteral(R"(\bfor )") + amount() + QStringLiteral(R"((?<unit>min|h)[a-z]*\b)"));
    return words;
}

double count(const QString& word)
{
    static const QStringList names { QStringLiteral("half an"), QStringLiteral("one"),
        QStringLiteral("two"), QStringLiteral("three"), QStringLiteral("four"),
        QStringLiteral("five"), QStringLiteral("six"), QStringLiteral("seven"),
        QStringLiteral("eight"), QStringLiteral("nine"), QStringLiteral("ten") };
    const auto name = names.indexOf(word.toLower());
    if (name >= 0)
        return name == 0 ? 0.5 : double(name);
    return word.startsWith(u'a', Qt::CaseInsensitive) ? 1 : word.toInt();
}

int minutesOf(const QRegularExpressionMatch& match)
{
    const auto isHours = match.captured(u"unit").startsWith(u'h', Qt::CaseInsensitive);
    return int(count(match.captured(u"count")) * (isHours ? 60 : 1));
}

/// 11 for "Nov", "november" and "Nov."
int monthNamed(const QString& name)
{
    for (int month = 1; month <= 12; ++month) {
        const auto known = QLocale::c().monthName(month, QLocale::ShortFormat);
        if (name.startsWith(known, Qt::CaseInsensitive))
            return month;
    }
    return 0;
}

QDate nextWeekday(const QString& name, QDate today)
{
    auto day = today.addDays(1);
    while (QLocale::c().dayName(day.dayOfWeek()).compare(name, Qt::CaseInsensitive) != 0)
        day = day.addDays(1);
    return day;
}

/// Takes expressions of time out of a text, one kind after the other.
class TimeReader {
public:
    TimeReader(const QString& text, const QDateTime& now)
        : m_rest(text)
        , m_now(now)
    {
    }

    DemoDates::SpokenTime read();

private:
    QRegularExpressionMatch take(const QRegularExpression& words);
    std::optional<QDateTime> takeSpan();
    void takeDay();
    void takeDate();
    void takePartOfDay();
    void takeClock();
    QTime clock(const QRegularExpressionMatch& match) const;
    QDateTime moment() const;

    QString m_rest;
    QDateTime m_now;
    QDate m_day;
    QTime m_time;
    bool m_isLate = false;
};

DemoDates::SpokenTime TimeReader::read()
{
    const auto soon = takeSpan();
    if (!soon) {
        takeDay();
        takeDate();
        takePartOfDay();
        takeClock();
    }
    const auto isNamed = m_day.isValid() || m_time.isValid();
    const auto time = soon || !isNamed ? soon : std::optional(moment());
    return { time, m_rest.simplified() };
}

QRegularExpressionMatch TimeReader::take(const QRegularExpression& words)
{
    auto match = words.match(m_rest);
    if (match.hasMatch())
        m_rest.replace(match.capturedStart(), match.capturedLength(), QStringLiteral(" "));
    return match;
}

/// Returns the time for minutes and hours from now; days and weeks set only the day.
std::optional<QDateTime> TimeReader::takeSpan()
{
    static const auto words = pattern(QStringLiteral(R"(\bin )") + amount()
        + QStringLiteral(R"((?<unit>min|h(?:ou)?r|day|week)[a-z]*\b)"));
    const auto match = take(words);
    if (!match.hasMatch())
        return std::nullopt;
    const auto unit = match.captured(u"unit").toLower();
    if (unit == u"day" || unit == u"week") {
        m_day = m_now.date().addDays(
            qint64(count(match.captured(u"count")) * (unit == u"day" ? 1 : 7)));
        takeClock();
        return moment();
    }
    const auto second = m_now.time().second();
    return m_now.addSecs(60 * minutesOf(match) - second).addMSecs(-m_now.time().msec());
}

void TimeReader::takeDay()
{
    static const auto words = pattern(QStringLiteral(
        R"(\b(?:on |this |next |for )?(?:(?<near>the day after tomorrow|today|tomorrow|tonight))"
        R"(|(?<weekday>(?:mon|tues|wednes|thurs|fri|satur|sun)day))\b)"));
    const auto match = take(words);
    const auto near = match.captured(u"near").toLower();
    if (!match.captured(u"weekday").isEmpty())
        m_day = nextWeekday(match.captured(u"weekday"), m_now.date());
    else if (!near.isEmpty())
        m_day = m_now.date().addDays(near.startsWith(u"the") ? 2 : int(near == u"tomorrow"));
    m_isLate = near == u"tonight";
    if (m_isLate)
        m_time = QTime(20, 0);
}

void TimeReader::takeDate()
{
    static const auto iso = pattern(QStringLiteral(R"(\b(?:on )?(\d{4}-\d\d-\d\d)\b)"));
    static const auto names =
        QStringLiteral("(?:jan|feb|mar|apr|may|jun|jul|aug|sep|oct|nov|dec)[a-z]*");
    static const auto dayFirst = pattern(QStringLiteral(
        R"(\b(?:on )?(?:the )?(?<day>\d{1,2})(?:st|nd|rd|th)? (?:of )?(?<month>%1)\b)")
                                             .arg(names));
    static const auto monthFirst = pattern(
        QStringLiteral(R"(\b(?:on )?(?<month>%1) (?<day>\d{1,2})(?:st|nd|rd|th)?\b)").arg(names));
    if (const auto match = take(iso); match.hasMatch())
        m_day = QDate::fromString(match.captured(1), Qt::ISODate);
    for (const auto* words : { &dayFirst, &monthFirst }) {
        const auto match = take(*words);
        if (!match.hasMatch())
            continue;
        const auto month = monthNamed(match.captured(u"month"));
        const auto day = match.captured(u"day").toInt();
        m_day = QDate(m_now.date().year(), month, day);
        if (m_day.isValid() && m_day < m_now.date())
            m_day = QDate(m_now.date().year() + 1, month, day);
    }
}

void TimeReader::takePartOfDay()
{
    static const auto words = pattern(QStringLiteral(
        R"(\b(?:in the |this |at )?(morning|noon|midday|afternoon|evening|night)\b)"));
    const auto part = take(words).captured(1).toLower();
    if (part == u"morning")
        m_time = usualTime();
    else if (part == u"noon" || part == u"midday")
        m_time = QTime(12, 0);
    else if (part == u"afternoon")
        m_time = QTime(15, 0);
    else if (!part.isEmpty())
        m_time = QTime(19, 0);
    m_isLate = m_isLate || m_time.hour() > 12;
}

void TimeReader::takeClock()
{
    static const auto words = pattern(
        QStringLiteral(R"(\b(?|at (\d{1,2})(?:[:.](\d\d))?(?: ?([ap]m))?)"
                       R"(|(\d{1,2})(?:[:.](\d\d))? ?([ap]m)|(\d{1,2}):(\d\d)())(?: o'clock)?\b)"));
    const auto time = clock(words.match(m_rest));
    if (!time.isValid())
        return;
    take(words);
    m_time = time;
}

QTime TimeReader::clock(const QRegularExpressionMatch& match) const
{
    if (!match.hasMatch())
        return {};
    const auto hour = match.captured(1).toInt();
    const auto minute = match.captured(2);
    const auto half = match.captured(3).toLower();
    const auto isBareAfternoon =
        half.isEmpty() && minute.isEmpty() && hour >= 1 && hour <= 6 && m_time != usualTime();
    const auto isLate = half == u"pm" || (half.isEmpty() && (m_isLate || isBareAfternoon));
    if (!half.isEmpty() && hour > 12)
        return {};
    if (hour == 12 && !half.isEmpty())
        return QTime(half == u"am" ? 0 : 12, minute.toInt());
    return QTime(isLate && hour < 12 ? hour + 12 : hour, minute.toInt());
}

QDateTime TimeReader::moment() const
{
    const auto time = m_time.isValid() ? m_time : usualTime();
    const auto zone = m_now.timeZone();
    if (m_day.isValid())
        return QDateTime(m_day, time, zone);
    const QDateTime today(m_now.date(), time, zone);
    return today > m_now ? today : QDateTime(m_now.date().addDays(1), time, zone);
}

} // namespace

DemoDates::SpokenTime DemoDates::readTime(const QString& text, const QDateTime& now)
{
    return TimeReader(text, now).read();
}

std::optional<std::pair<QDateTime, QDateTime>> DemoDates::readPast(
    const QString& text, const QDateTime& now)
{
    static const auto words = pattern(
        QStringLiteral(R"(\b(?:(?<day>today|yesterday)|(?<week>(?:last|this|past) week))\b)"));
    const auto match = words.match(text);
    if (!match.hasMatch())
        return std::nullopt;
    const auto isToday = match.captured(u"day").startsWith(u't', Qt::CaseInsensitive);
    const auto today = now.date();
    const auto first = today.addDays(match.captured(u"day").isEmpty() ? -7 : isToday ? 0 : -1);
    const auto last = match.captured(u"week").isEmpty() ? first : today;
    const QTime lastSecond(23, 59, 59);
    return std::pair { first.startOfDay(now.timeZone()),
        QDateTime(last, lastSecond, now.timeZone()) };
}

std::optional<int> DemoDates::readMinutes(const QString& text)
{
    const auto match = duration().match(text);
    return match.hasMatch() ? std::optional(minutesOf(match)) : std::nullopt;
}

QString DemoDates::withoutMinutes(QString text)
{
    return text.remove(duration()).simplified();
}

QString DemoDates::format(const QDateTime& time)
{
    return time.toOffsetFromUtc(time.offsetFromUtc()).toString(Qt::ISODate);
}

QString DemoDates::spoken(const QDateTime& time)
{
    return QLocale::c().toString(time, QStringLiteral("dddd, d MMMM, 'at' HH:mm"));
}

} // namespace pobblewig
