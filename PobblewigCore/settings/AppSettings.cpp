#include "settings/AppSettings.h"

#include <algorithm>

namespace pobblewig {

QString AppSettings::defaultCanvasBaseURL()
{
    return QStringLiteral("https://canvas.instructure.com");
}

std::vector<QString> AppSettings::defaultExcludedBundleIDs()
{
    return {
        QStringLiteral("com.1password.1password"),
        QStringLiteral("com.agilebits.onepassword7"),
        QStringLiteral("com.agilebits.onepassword4"),
        QStringLiteral("com.apple.keychainaccess"),
        QStringLiteral("com.lastpass.LastPass"),
        QStringLiteral("com.bitwarden.desktop"),
        QStringLiteral("com.dashlane.dashlanephonefinal"),
    };
}

void AppSettings::restoreDefaultExclusions()
{
    for (const auto& id : defaultExcludedBundleIDs()) {
        if (std::ranges::find(excludedBundleIDs, id) == excludedBundleIDs.end())
            excludedBundleIDs.push_back(id);
    }
}

auto json::Codec<AppSettings>::decode(const QJsonValue& value, const Path& path)
    -> Decoded<AppSettings>
{
    auto settings = RecordCodec<AppSettings>::decode(value, path);
    const auto hasRoles = !value[u"roles"].isUndefined() && !value[u"roles"].isNull();
    const auto role = value[u"persona"];
    if (settings && !hasRoles && role.isString())
        settings->roles.insert(role.toString() == u"codingTutor"
                ? AssistantRole::tutor
                : AssistantRole::accountabilityPartner);
    return settings;
}

} // namespace pobblewig
