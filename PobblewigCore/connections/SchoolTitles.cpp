#include "connections/SchoolTitles.h"

#include "foundation/Text.h"

namespace pobblewig {

namespace {

constexpr QStringView identityKeys[] { u"canvasAssignmentID", u"classroomCourseWorkID",
    u"canvasCourseID", u"classroomCourseID" };

QString placeOf(const ReferenceItem& item, const QString& title)
{
    return item.path + u'\n' + Text::normalized(title);
}

/// Whether the title is that name, or the name with a qualifier.
bool isTitleOf(const QString& title, const QString& name)
{
    return title == name || (title.startsWith(name + QStringLiteral(" (")) && title.endsWith(u')'));
}

QString qualified(const SchoolItem& found, int number)
{
    QStringList parts;
    if (!found.qualifier.isEmpty())
        parts << found.qualifier;
    if (parts.isEmpty())
        parts << QString::number(number + 1);
    else if (number > 1)
        parts << QString::number(number);
    return QStringLiteral("%1 (%2)").arg(found.item.title, parts.join(QStringLiteral(", ")));
}

} // namespace

SchoolTitles::SchoolTitles(const std::vector<ReferenceItem>& stored)
{
    for (const auto& item : stored) {
        const auto name = identity(item);
        if (name.isEmpty())
            continue;
        m_owners.insert(placeOf(item, item.title), name);
        m_known.insert(name, { item.id, item.createdAt, item.title });
    }
}

ReferenceItem SchoolTitles::titled(SchoolItem found)
{
    auto& item = found.item;
    const auto name = identity(item);
    const auto known = m_known.constFind(name);
    const auto isKnown = known != m_known.cend();
    if (isKnown) {
        item.id = known->id;
        item.createdAt = known->createdAt;
    }
    const auto keeps = isKnown && isTitleOf(known->title, item.title);
    auto title = keeps ? known->title : freeTitle(found);
    if (isKnown && !keeps) {
        m_renamed.push_back(known->id);
        m_owners.remove(placeOf(item, known->title));
    }
    item.title = std::move(title);
    m_owners.insert(placeOf(item, item.title), name);
    m_known.insert(name, { item.id, item.createdAt, item.title });
    return std::move(item);
}

QString SchoolTitles::identity(const ReferenceItem& item)
{
    for (const auto key : identityKeys) {
        const auto found = item.details.find(key.toString());
        if (found != item.details.end())
            return item.source + u' ' + key.toString() + u' ' + found->second.displayString();
    }
    return {};
}

bool SchoolTitles::isTaken(const ReferenceItem& item, const QString& title) const
{
    const auto owner = m_owners.constFind(placeOf(item, title));
    return owner != m_owners.cend() && *owner != identity(item);
}

QString SchoolTitles::freeTitle(const SchoolItem& found) const
{
    auto title = found.item.title;
    for (int number = 1; isTaken(found.item, title); ++number)
        title = qualified(found, number);
    return title;
}

} // namespace pobblewig
