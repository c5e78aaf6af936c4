#pragma once

#include "memory/ReferenceItem.h"

namespace pobblewig {

/// The courses and the deadlines of every school service.
inline constexpr QStringView coursesPath = u"academics.courses";
inline constexpr QStringView deadlinesPath = u"academics.deadlines";

/// How the items of one service are told from all others.
struct SchoolSource {
    /// `ReferenceItem::source` of its items.
    QStringView name;
    /// The detail that names the course.
    QStringView courseKey;
    /// The detail that names the assignment.
    QStringView workKey;
};

/// An item as a service describes it, whose title may belong to another one as well.
struct SchoolItem {
    ReferenceItem item;
    /// What tells it from others with the same title, such as the code of the course.
    QString qualifier;

    bool operator==(const SchoolItem&) const = default;
};

} // namespace pobblewig
