#pragma once

#include <QByteArray>
#include <QString>

#include <libical/ical.h>

#include <memory>
#include <optional>
#include <vector>

namespace pobblewig {

/// A parsed text of the iCalendar format.
class ICalendarText {
public:
    /// Returns nothing for a text that ends too early, nests too deep or is something else.
    static std::optional<ICalendarText> parse(const QByteArray& text);

    /// Usually there is one.
    std::vector<icalcomponent*> calendars() const;

    static std::vector<icalcomponent*> components(icalcomponent* parent, icalcomponent_kind kind);
    static std::vector<icalproperty*> properties(icalcomponent* component, icalproperty_kind kind);

    /// The first property of a kind as text, or nothing if it is missing or blank.
    static std::optional<QString> text(icalcomponent* component, icalproperty_kind kind);

    /// The value of a property if it is a time or a day, in the zone that the property names.
    static std::optional<icaltimetype> time(icalproperty* property);

private:
    struct Freeing {
        void operator()(icalcomponent* component) const { icalcomponent_free(component); }
    };

    explicit ICalendarText(icalcomponent* root)
        : m_root(root)
    {
    }

    std::unique_ptr<icalcomponent, Freeing> m_root;
};

} // namespace pobblewig
