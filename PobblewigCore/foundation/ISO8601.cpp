#include "foundation/ISO8601.h"

#include <QRegularExpression>

#include <algorithm>

namespace pobblewig {

using namespace std::chrono;

namespace {

constexpr auto earliest = sys_days(year(0) / January / 1);
constexpr auto latest = sys_days(year(9999) / December / 31) + days(1) - seconds(1);
constexpr QStringView pattern = u"dddd-dd-ddTdd:dd:ddZ";
constexpr QStringView blank = u"0000-00-00T00:00:00Z";

void putNumber(QString& text, qsizetype at, qsizetype digits, int number)
{
    for (auto place = at + digits - 1; place >= at; --place, number /= 10)
        text[place] = QChar(u'0' + number % 10);
}

bool matchesPattern(QStringView text)
{
    return std::ranges::equal(text, pattern, [](QChar found, QChar wanted) {
        return wanted == u'd' ? found >= u'0' && found <= u'9' : found == wanted;
    });
}

/// Reads an offset such as "+02:00" or "-0530". Returns nothing for "Z".
minutes offsetFromUTC(QString zone)
{
    if (zone == u"Z")
        return {};
    const auto digits = zone.remove(u':').mid(1);
    const auto offset = hours(digits.first(2).toInt()) + minutes(digits.last(2).toInt());
    return zone.startsWith(u'-') ? -offset : offset;
}

/// The time as a wall clock shows it.
struct WallTime {
    TimePoint asUTC;
    /// Empty if there is none.
    QString zone;
};

std::optional<WallTime> wallTime(const QString& text)
{
    static const QRegularExpression form(
        QStringLiteral("\\A([-0-9]{10})[T ]([0-9]{2}:[0-9]{2})(?:(:[0-9]{2})(?:\\.([0-9]{1,9}))?)?"
                       "(Z|[-+](?:[01][0-9]|2[0-3]):?[0-5][0-9])?\\z"));
    const auto match = form.match(text);
    if (!match.hasMatch())
        return std::nullopt;
    const auto seconds = match.hasCaptured(3) ? match.captured(3) : QStringLiteral(":00");
    const auto second =
        ISO8601::parse(QString(match.captured(1) + u'T' + match.captured(2) + seconds + u'Z'));
    if (!second)
        return std::nullopt;
    const auto fraction = match.captured(4).leftJustified(3, u'0', true).toInt();
    return WallTime { *second + milliseconds(fraction), match.captured(5) };
}

} // namespace

QString ISO8601::format(TimePoint time)
{
    const auto second = std::clamp<sys_seconds>(floor<seconds>(time), earliest, latest);
    const auto day = floor<days>(second);
    const year_month_day date(day);
    const hh_mm_ss clock(second - day);
    QString text = blank.toString();
    putNumber(text, 0, 4, int(date.year()));
    putNumber(text, 5, 2, int(unsigned(date.month())));
    putNumber(text, 8, 2, int(unsigned(date.day())));
    putNumber(text, 11, 2, int(clock.hours().count()));
    putNumber(text, 14, 2, int(clock.minutes().count()));
    putNumber(text, 17, 2, int(clock.seconds().count()));
    return text;
}

std::optional<TimePoint> ISO8601::parse(QStringView text)
{
    if (!matchesPattern(text))
        return std::nullopt;
    const auto number = [&](qsizetype at, qsizetype length) {
        int value = 0;
        for (const auto digit : text.mid(at, length))
            value = 10 * value + (digit.unicode() - u'0');
        return value;
    };
    const year_month_day date(
        year(number(0, 4)), month(unsigned(number(5, 2))), day(unsigned(number(8, 2))));
    const auto hour = number(11, 2);
    const auto minute = number(14, 2);
    const auto second = number(17, 2);
    if (!date.ok() || hour > 23 || minute > 59 || second > 59)
        return std::nullopt;
    return sys_days(date) + hours(hour) + minutes(minute) + seconds(second);
}

std::optional<TimePoint> ISO8601::instant(const QString& text)
{
    const auto time = wallTime(text);
    if (!time || time->zone.isEmpty())
        return std::nullopt;
    return time->asUTC - offsetFromUTC(time->zone);
}

std::optional<TimePoint> ISO8601::instant(const QString& text, const Calendar& calendar)
{
    const auto time = wallTime(text);
    if (!time || !time->zone.isEmpty())
        return instant(text);
    const auto wall =
        QDateTime::fromMSecsSinceEpoch(time->asUTC.time_since_epoch().count(), Qt::UTC);
    const QDateTime local(wall.date(), wall.time(), calendar.timeZone);
    return TimePoint(milliseconds(local.toMSecsSinceEpoch()));
}

} // namespace pobblewig
