#include "PobblewigDemoModel/DemoToolCall.h"

#include <QJsonDocument>

#include <algorithm>
#include <array>

namespace pobblewig {

namespace {

constexpr std::array<QStringView, 7> changes { u"set_temporary_mode", u"propose_calendar_event",
    u"propose_reminder", u"update_settings", u"set_persona", u"set_mascot", u"forget_memory" };

} // namespace

bool DemoToolCall::isChange() const
{
    return std::ranges::find(changes, QStringView(name)) != changes.end();
}

QString DemoToolCall::argumentsText() const
{
    const auto object = JSONValue(arguments).toJson().toObject();
    return QString::fromUtf8(QJsonDocument(object).toJson(QJsonDocument::Compact));
}

} // namespace pobblewig
