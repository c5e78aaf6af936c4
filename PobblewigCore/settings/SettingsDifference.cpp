#include "settings/SettingsDifference.h"

#include <QJsonDocument>
#include <QJsonObject>

namespace pobblewig {

namespace {

QJsonObject asJSON(const AppSettings& settings)
{
    return QJsonDocument::fromJson(json::text(settings)).object();
}

} // namespace

std::map<QString, JSONValue> SettingsDifference::replaced(
    const AppSettings& before, const AppSettings& after)
{
    const auto old = asJSON(before);
    const auto current = asJSON(after);
    std::map<QString, JSONValue> replaced;
    for (const auto& key : old.keys() + current.keys()) {
        if (old.value(key) != current.value(key))
            replaced[key] = JSONValue::fromJson(old.value(key));
    }
    return replaced;
}

AppSettings SettingsDifference::restored(
    const AppSettings& settings, const std::map<QString, JSONValue>& replaced)
{
    auto values = asJSON(settings);
    for (const auto& [key, value] : replaced) {
        if (value.isNull())
            values.remove(key);
        else
            values[key] = value.toJson();
    }
    return json::decode<AppSettings>(values).value_or(settings);
}

} // namespace pobblewig
