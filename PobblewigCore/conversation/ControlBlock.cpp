#include "conversation/ControlBlock.h"

#include <QJsonArray>
#include <QJsonDocument>

#include <algorithm>

namespace pobblewig {

namespace {

/// Returns nothing if this is not a list, or if an entry lacks the string.
std::optional<QJsonArray> listOf(const QJsonValue& list, const QString& requiredString)
{
    if (!list.isArray())
        return std::nullopt;
    auto entries = list.toArray();
    const auto isComplete = [&](const QJsonValue& entry) {
        return entry.toObject().value(requiredString).isString();
    };
    return std::ranges::all_of(entries, isComplete) ? std::optional(std::move(entries))
                                                    : std::nullopt;
}

std::vector<QJsonObject> firstObjects(const QJsonArray& entries)
{
    const auto count = std::min(entries.size(), ControlBlock::maxEntries);
    std::vector<QJsonObject> objects;
    for (qsizetype index = 0; index < count; ++index)
        objects.push_back(entries.at(index).toObject());
    return objects;
}

MemoryToolCall toolCall(const QJsonObject& entry)
{
    const auto name = json::wellFormed(entry.value(u"name").toString());
    const auto args = JSONValue::fromJson(entry.value(u"args").toObject());
    return { .name = name, .args = *args.object() };
}

} // namespace

std::optional<std::vector<QJsonObject>> ControlBlock::actionPayloads(QStringView body)
{
    const auto document = QJsonDocument::fromJson(body.trimmed().toUtf8());
    const auto list =
        document.isArray() ? QJsonValue(document.array()) : document.object().value(u"actions");
    const auto entries = listOf(list, QStringLiteral("type"));
    return entries ? std::optional(firstObjects(*entries)) : std::nullopt;
}

std::vector<MemoryToolCall> ControlBlock::toolCalls(QStringView body)
{
    const auto document = QJsonDocument::fromJson(body.trimmed().toUtf8());
    const auto entries = listOf(document.object().value(u"tools"), QStringLiteral("name"));
    std::vector<MemoryToolCall> calls;
    for (const auto& entry : firstObjects(entries.value_or(QJsonArray())))
        calls.push_back(toolCall(entry));
    return calls;
}

} // namespace pobblewig
