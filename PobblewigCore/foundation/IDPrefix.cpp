#include "foundation/IDPrefix.h"

namespace pobblewig {

namespace {

constexpr qsizetype shortLength = 8;

/// The handle alone, if it stands in "[id:…]".
QStringView bare(QStringView handle)
{
    constexpr QStringView label = u"id:";
    if (handle.startsWith(u'[') && handle.endsWith(u']'))
        handle = handle.sliced(1).chopped(1);
    const auto isLabelled = handle.startsWith(label, Qt::CaseInsensitive);
    return isLabelled ? handle.sliced(label.size()) : handle;
}

} // namespace

QString IDPrefix::shortID(const QUuid& id)
{
    return id.toString(QUuid::WithoutBraces).first(shortLength);
}

bool IDPrefix::matches(const QUuid& id, const QString& prefix)
{
    const auto handle = bare(prefix);
    return (prefix.isEmpty() || !handle.isEmpty())
        && id.toString(QUuid::WithoutBraces).startsWith(handle, Qt::CaseInsensitive);
}

} // namespace pobblewig
