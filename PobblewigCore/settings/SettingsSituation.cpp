#include "settings/SettingsSituation.h"

#include "foundation/EnumNames.h"
#include "mascots/Mascot.h"

#include <QStringList>

namespace pobblewig {

namespace {

QString formLine(const AppSettings& settings)
{
    const auto form = SettingsSituation::currentForm(settings);
    if (form.isEmpty())
        return {};
    return QStringLiteral(
        "Your current desktop form: %1 — this is the creature the user sees on their screen right "
        "now. If earlier messages in this conversation call you a different animal, the form was "
        "changed since; this line is current and supersedes them. When you refer to your own form "
        "or species, say %2 and no other animal. If the user asks you to become a different "
        "animal, change the mascot setting with update_settings (key mascot) — once the user "
        "confirms, this line updates.")
        .arg(form, Mascot::userFacing(settings.mascot).id);
}

QString settingsLine(const AppSettings& settings)
{
    QStringList roles;
    for (const auto role : settings.roles)
        roles.append(EnumNames::text(role));
    return QStringLiteral(
        "Your settings (yours to change with update_settings when the user asks; the user confirms "
        "each change): mode %1; roles [%2] — this line is rebuilt every turn and supersedes "
        "anything earlier in this conversation.")
        .arg(EnumNames::text(settings.mode), roles.join(QStringLiteral(", ")));
}

} // namespace

QString SettingsSituation::currentForm(const AppSettings& settings)
{
    const auto* stored = Mascot::find(settings.mascot);
    if (stored && stored->offer == Mascot::Offer::nobody)
        return {};
    const auto& mascot = Mascot::userFacing(settings.mascot);
    const auto& scheme = MascotColorScheme::forID(settings.mascotColorScheme, mascot);
    return QStringLiteral("%1 (%2 color scheme)")
        .arg(mascot.id, QString(scheme.displayName).toLower());
}

std::vector<QString> SettingsSituation::lines(const AppSettings& settings)
{
    std::vector<QString> lines { settingsLine(settings) };
    if (const auto form = formLine(settings); !form.isEmpty())
        lines.insert(lines.begin(), form);
    return lines;
}

} // namespace pobblewig
