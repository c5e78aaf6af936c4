#include "presence/QuickAnswerLogic.h"

#include "foundation/EnumNames.h"

#include <QCoreApplication>

#include <algorithm>

namespace pobblewig {

namespace {

using ProactiveLogic::QuickAnswer;

struct Texts {
    Q_DECLARE_TR_FUNCTIONS(QuickAnswerLogic)
};

std::vector<QuickAnswer> answers(const InterventionRecord& record)
{
    using enum QuickAnswer;
    if (record.triggerType == u"daily_briefing")
        return { gotIt, notNow, thatsWrong };
    return { gotIt, notNow, thatsWrong, remindLater };
}

} // namespace

std::optional<QuickQuestion> QuickAnswerLogic::question(
    const std::vector<ChatMessage>& messages, const std::vector<InterventionRecord>& records)
{
    const auto id = messages.empty() ? std::nullopt : messages.back().relatedInterventionID;
    if (!id)
        return std::nullopt;
    const auto record = std::ranges::find(records, *id, &InterventionRecord::id);
    if (record == records.end() || record->outcome)
        return std::nullopt;
    return QuickQuestion { *id, answers(*record) };
}

QString QuickAnswerLogic::inWords(QuickAnswer answer)
{
    switch (answer) {
    case QuickAnswer::gotIt:
        return Texts::tr("Got it");
    case QuickAnswer::notNow:
        return Texts::tr("Not now");
    case QuickAnswer::thatsWrong:
        return Texts::tr("That's wrong");
    case QuickAnswer::remindLater:
        return Texts::tr("Remind me later");
    }
    Q_UNREACHABLE();
}

QString QuickAnswerLogic::actionID(const Action& action)
{
    return QStringLiteral("%1 %2").arg(
        EnumNames::text(action.answer), action.record.toString(QUuid::WithoutBraces));
}

auto QuickAnswerLogic::action(const QString& id) -> std::optional<Action>
{
    const auto answer = EnumNames::fromName<QuickAnswer>(id.section(u' ', 0, 0).toStdString());
    const QUuid record(id.section(u' ', 1));
    return answer && !record.isNull() ? std::optional(Action { record, *answer }) : std::nullopt;
}

} // namespace pobblewig
