#include "connections/ItemDetails.h"

#include "foundation/Text.h"

namespace pobblewig {

ReferenceItem ItemDetails::newItem(
    QStringView path, const QString& title, QStringView source, TimePoint now)
{
    return { .id = QUuid::createUuid(),
        .path = path.toString(),
        .title = title,
        .source = source.toString(),
        .createdAt = now,
        .updatedAt = now };
}

std::optional<QString> ItemDetails::words(const std::optional<QString>& text)
{
    auto line = text ? Text::foreignLine(*text).trimmed() : QString();
    return line.isEmpty() ? std::nullopt : std::optional(std::move(line));
}

void ItemDetails::add(ReferenceItem& item, QStringView key, const std::optional<QString>& value)
{
    if (const auto text = words(value))
        item.details.insert_or_assign(key.toString(), JSONValue(*text));
}

void ItemDetails::add(ReferenceItem& item, QStringView key, std::optional<double> value)
{
    if (value)
        item.details.insert_or_assign(key.toString(), JSONValue(*value));
}

QString ItemDetails::text(const ReferenceItem& item, QStringView key)
{
    const auto found = item.details.find(QString::fromRawData(key.data(), key.size()));
    return found == item.details.end() ? QString() : found->second.displayString();
}

} // namespace pobblewig
