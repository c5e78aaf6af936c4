#include "PobblewigLinux/calendars/ICalendarText.h"

namespace pobblewig {

namespace {

constexpr int deepestNesting = 16;

/// The parser takes components out of each other one call deeper at a time.
bool isNestedTooDeep(QByteArrayView text)
{
    int depth = 0;
    for (qsizetype at = 0; at >= 0 && at < text.size();) {
        const auto line = text.sliced(at).first(std::min<qsizetype>(text.size() - at, 6));
        if (qstrnicmp(line.data(), line.size(), "BEGIN:", 6) == 0)
            ++depth;
        else if (qstrnicmp(line.data(), std::min<qsizetype>(line.size(), 4), "END:", 4) == 0)
            --depth;
        if (depth > deepestNesting)
            return true;
        at = text.indexOf('\n', at);
        at = at < 0 ? at : at + 1;
    }
    return false;
}

} // namespace

std::optional<ICalendarText> ICalendarText::parse(const QByteArray& text)
{
    if (isNestedTooDeep(text))
        return std::nullopt;
    ICalendarText parsed(icalparser_parse_string(text.constData()));
    if (!parsed.m_root || parsed.calendars().empty())
        return std::nullopt;
    return parsed;
}

std::vector<icalcomponent*> ICalendarText::calendars() const
{
    if (icalcomponent_isa(m_root.get()) == ICAL_VCALENDAR_COMPONENT)
        return { m_root.get() };
    return components(m_root.get(), ICAL_VCALENDAR_COMPONENT);
}

std::vector<icalcomponent*> ICalendarText::components(
    icalcomponent* parent, icalcomponent_kind kind)
{
    std::vector<icalcomponent*> found;
    for (auto* each = icalcomponent_get_first_component(parent, kind); each;
         each = icalcomponent_get_next_component(parent, kind))
        found.push_back(each);
    return found;
}

std::vector<icalproperty*> ICalendarText::properties(
    icalcomponent* component, icalproperty_kind kind)
{
    std::vector<icalproperty*> found;
    for (auto* each = icalcomponent_get_first_property(component, kind); each;
         each = icalcomponent_get_next_property(component, kind))
        found.push_back(each);
    return found;
}

std::optional<QString> ICalendarText::text(icalcomponent* component, icalproperty_kind kind)
{
    auto* const property = icalcomponent_get_first_property(component, kind);
    auto* const value = property ? icalproperty_get_value(property) : nullptr;
    // A property may claim a type that is not its own.
    if (!value || icalvalue_isa(value) != ICAL_TEXT_VALUE)
        return std::nullopt;
    auto text = QString::fromUtf8(icalvalue_get_text(value));
    return text.trimmed().isEmpty() ? std::nullopt : std::optional(std::move(text));
}

std::optional<icaltimetype> ICalendarText::time(icalproperty* property)
{
    auto* const value = property ? icalproperty_get_value(property) : nullptr;
    auto time = icaltime_null_time();
    switch (value ? icalvalue_isa(value) : ICAL_NO_VALUE) {
    case ICAL_DATE_VALUE:
        time = icalvalue_get_date(value);
        break;
    case ICAL_DATETIME_VALUE:
        time = icalvalue_get_datetime(value);
        break;
    case ICAL_PERIOD_VALUE:
        time = icalvalue_get_period(value).start;
        break;
    default:
        break;
    }
    return icaltime_is_null_time(time) ? std::nullopt : std::optional(time);
}

} // namespace pobblewig
