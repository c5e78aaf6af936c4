#include "PobblewigDesktop/comingup/ComingUpTexts.h"

#include "PobblewigDesktop/controls/Mirroring.h"

#include <QCoreApplication>
#include <QRegularExpression>

namespace pobblewig {

namespace {

using Section = ComingUpSection::Kind;

struct Texts {
    Q_DECLARE_TR_FUNCTIONS(ComingUpTexts)
};

/// Day and month as the language writes them in a long date.
QString withoutYear(QDate day, const QLocale& locale)
{
    static const QRegularExpression year(
        QStringLiteral(R"([,،]?\s*('[^']*'\s*)?y+(\s?'[^']*'|年|년)?\.?)"));
    auto format = locale.dateFormat(QLocale::LongFormat).remove(year).trimmed();
    // In English, the comma belongs to the long date.
    if (locale.language() == QLocale::English || locale.language() == QLocale::C)
        format.replace(QStringLiteral("dddd, d MMMM"), QStringLiteral("dddd d MMMM"));
    return locale.toString(day, format);
}

QString pastDay(QDate day, QDate today, const QLocale& locale)
{
    constexpr int week = 7;
    const auto daysAgo = day.daysTo(today);
    if (daysAgo == 0)
        return Texts::tr("Today");
    if (daysAgo == 1)
        return Texts::tr("Yesterday");
    return daysAgo < week ? locale.standaloneDayName(day.dayOfWeek())
                          : locale.toString(day, QLocale::ShortFormat);
}

QString progress(ComingUpEntry::Progress progress)
{
    switch (progress) {
    case ComingUpEntry::Progress::open:
        break;
    case ComingUpEntry::Progress::submitted:
        return Texts::tr("Submitted");
    case ComingUpEntry::Progress::graded:
        return Texts::tr("Graded");
    case ComingUpEntry::Progress::completed:
        return Texts::tr("Done");
    }
    return {};
}

} // namespace

QString ComingUpTexts::heading(const ComingUpSection& section, QDate today, const QLocale& locale)
{
    if (section.kind == Section::overdue)
        return Texts::tr("Overdue");
    if (section.kind == Section::someTime)
        return Texts::tr("Some time");
    if (section.day == today)
        return Texts::tr("Today");
    return section.day == today.addDays(1) ? Texts::tr("Tomorrow")
                                           : withoutYear(section.day, locale);
}

QString ComingUpTexts::time(
    const ComingUpEntry& entry, Section section, QDate today, const Calendar& calendar)
{
    if (!entry.time)
        return {};
    const auto moment = calendar.dateTime(*entry.time);
    const auto clock = calendar.locale.toString(moment.time(), QLocale::ShortFormat);
    const auto isAllDay = entry.timing == ComingUpEntry::Timing::none;
    if (section == Section::overdue) {
        const auto day = pastDay(moment.date(), today, calendar.locale);
        return isAllDay ? day : QStringLiteral("%1, %2").arg(day, clock);
    }
    if (isAllDay)
        return entry.kind == ComingUpEntry::Kind::event ? Texts::tr("All day") : QString();
    return entry.timing == ComingUpEntry::Timing::until ? Texts::tr("until %1").arg(clock) : clock;
}

QString ComingUpTexts::detail(const ComingUpEntry& entry, const QLocale& locale)
{
    QStringList parts { isolated(entry.group) };
    if (entry.points)
        parts << (*entry.points == 1
                ? Texts::tr("1 point")
                : Texts::tr("%1 points")
                      .arg(locale.toString(*entry.points, 'g', QLocale::FloatingPointShortest)));
    parts << progress(entry.progress);
    parts.removeAll(QString());
    return parts.join(QStringLiteral(" · "));
}

} // namespace pobblewig
