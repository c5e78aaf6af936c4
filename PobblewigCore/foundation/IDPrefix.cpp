#include "foundation/IDPrefix.h"

namespace pobblewig {

namespace {

constexpr qsizetype shortLength = 8;

}

QString IDPrefix::shortID(const QUuid& id)
{
    return id.toString(QUuid::WithoutBraces).first(shortLength);
}

bool IDPrefix::matches(const QUuid& id, const QString& prefix)
{
    return id.toString(QUuid::WithoutBraces).startsWith(prefix, Qt::CaseInsensitive);
}

} // namespace pobblewig
