#include "PobblewigDemoModel/DemoIntents.h"

#include "PobblewigDemoModel/DemoDates.h"
#include "PobblewigDemoModel/DemoGrammar.h"
#include "PobblewigDemoModel/DemoReferences.h"
#include "PobblewigDemoModel/DemoWords.h"

#include <QLocale>
#include <QRegularExpression>

#include <algorithm>
#include <optional>

namespace pobblewig {

namespace {

using DemoIntents::Intent;

struct IntentRule {
    QRegularExpression pattern;
    QString kind;
};

IntentRule rule(const QString& pattern, const QString& kind)
{
    return { QRegularExpression(pattern, QRegularExpression::CaseInsensitiveOption), kind };
}

const std::vector<IntentRule>& rules()
{
    static const auto task = QStringLiteral("task");
    static const std::vector<IntentRule> all {
        rule(QStringLiteral(R"(^I(?:['’]m| am)? (?:still )?waiting (?:for|on) (?<what>.+))"),
            QStringLiteral("waitingState")),
        rule(
            QStringLiteral(R"(^I (?:still )?(?:have to|need to|must|can['’]t) (?<what>decide .+))"),
            QStringLiteral("decision")),
        rule(QStringLiteral(R"(^I(?:['’]ve)? (?:really |still )?(?:have to|need to|must|should|)"
                            R"(got to|gotta) (?<what>.+))"),
            task),
        rule(QStringLiteral(R"(^(?:remind me|don['’]t let me forget)(?: to| about)? (?<what>.+))"),
            task),
        rule(QStringLiteral(R"(^remember to (?<what>.+))"), task),
        rule(QStringLiteral(R"(^I have (?<what>an? [\w ]*(?:appointment|meeting|interview|)"
                            R"(presentation)\b.*))"),
            task),
        rule(QStringLiteral(
                 R"(^(?<day>tomorrow|next week|on \w+day),? I(?: will|['’]ll)? (?<what>.+))"),
            task),
        rule(QStringLiteral(
                 R"(^I(?: will|['’]ll) (?<what>.+ (?:tomorrow|next week|on \w+day)\b.*))"),
            task),
        rule(QStringLiteral(
                 R"(^I(?:['’]d like| want| plan| am planning|['’]m planning) to (?<what>.+))"),
            QStringLiteral("goal")),
    };
    return all;
}

bool isOfTheDay(const QString& what)
{
    static const QRegularExpression trivial(
        QStringLiteral(
            R"(\b(?:nap|eat|breakfast|lunch|dinner|shower|go to bed|groceries|laundry)\b)"),
        QRegularExpression::CaseInsensitiveOption);
    return trivial.match(what).hasMatch();
}

/// Adds the date, since "the day after" means something else a day later.
QString dated(const QString& title, QDate date)
{
    return QStringLiteral("%1 (%2)").arg(
        title, QLocale::c().toString(date, QStringLiteral("dddd, d MMMM")));
}

QString withItsDate(const QString& what, const QDateTime& now)
{
    const auto [time, rest] = DemoDates::readTime(what, now);
    const auto title = DemoWords::title(rest);
    return time && !title.isEmpty() ? dated(title, time->date()) : title;
}

/// Finds an exam or a deadline.
std::optional<Intent> datedItemIn(const DemoMaterial::Line& statement)
{
    const auto stated = DemoGrammar::correctedTo(statement.text).value_or(statement.text);
    const auto item = DemoReferences::itemIn(stated, statement.time,
        { QStringLiteral("academics.exams"), QStringLiteral("academics.deadlines") });
    if (!item)
        return std::nullopt;
    const auto time = DemoDates::readTime(statement.text, statement.time).time;
    const auto title = item->entry.at(QStringLiteral("title")).displayString();
    return Intent { dated(title, time.value_or(statement.time).date()) };
}

/// The first letters of the significant words; "handed" and "hand" share theirs.
QStringList stems(QString text)
{
    static const QRegularExpression date(QStringLiteral(R"( \([^()]*\)$)"));
    QStringList stems;
    for (const auto& word : DemoWords::keywords(text.remove(date)).split(u' ', Qt::SkipEmptyParts))
        stems.append(word.left(4).toLower());
    return stems;
}

/// Whether its date is more than a week ago.
bool isLongOver(const QString& text, const QDateTime& now)
{
    static const QRegularExpression date(QStringLiteral(R"(\(([^()]*)\)$)"));
    // The text has no year: it is a date of the last two months or a future one.
    const auto time = DemoDates::readTime(date.match(text).captured(1), now.addDays(-60)).time;
    return time && time->date().addDays(7) < now.date();
}

bool saysThatSomethingIsDone(const QString& statement)
{
    static const QRegularExpression done(
        QStringLiteral(
            R"(\b(?:finished|handed in|submitted|completed|passed|took|sent|did|done|bought|emailed|)"
            R"(called|paid|wrote|decided|cancelled|canceled|arrived|never mind)\b)"),
        QRegularExpression::CaseInsensitiveOption);
    static const QRegularExpression denial(
        QStringLiteral(R"(\b(?:not|haven['’]t|didn['’]t|isn['’]t|almost|half)\b)"),
        QRegularExpression::CaseInsensitiveOption);
    return done.match(statement).hasMatch() && !denial.match(statement).hasMatch();
}

/// Whether at least half of the intent's words were said.
bool isAbout(const QStringList& said, const Intent& intent)
{
    const auto wanted = stems(intent.text);
    const auto shared =
        std::ranges::count_if(wanted, [&](const auto& stem) { return said.contains(stem); });
    return shared > 0 && 2 * shared >= wanted.size();
}

void add(std::vector<Intent>& intents, const Intent& intent)
{
    const auto isSame = [&](const auto& other) {
        return other.text.compare(intent.text, Qt::CaseInsensitive) == 0;
    };
    if (std::ranges::none_of(intents, isSame))
        intents.push_back(intent);
}

} // namespace

std::optional<Intent> DemoIntents::intentIn(const DemoMaterial::Line& statement)
{
    for (const auto& rule : rules()) {
        const auto match = rule.pattern.match(statement.text);
        const auto what = match.captured(u"what");
        if (what.isEmpty() || isOfTheDay(what))
            continue;
        const auto text =
            withItsDate((what + u' ' + match.captured(u"day")).trimmed(), statement.time);
        if (!text.isEmpty())
            return Intent { text, rule.kind };
    }
    return datedItemIn(statement);
}

auto DemoIntents::openAfter(const QStringList& earlier,
    const std::vector<DemoMaterial::Line>& statements, const QDateTime& now) -> std::vector<Intent>
{
    std::vector<Intent> open;
    for (const auto& text : earlier) {
        if (!isLongOver(text, now))
            add(open, { text });
    }
    for (const auto& statement : statements) {
        if (saysThatSomethingIsDone(statement.text)) {
            const auto said = stems(statement.text);
            std::erase_if(open, [&](const auto& intent) { return isAbout(said, intent); });
        } else if (const auto intent = intentIn(statement)) {
            add(open, *intent);
        }
    }
    return open;
}

} // namespace pobblewig
