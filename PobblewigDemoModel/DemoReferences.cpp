#include "PobblewigDemoModel/DemoReferences.h"

#include "PobblewigDemoModel/DemoDates.h"
#include "PobblewigDemoModel/DemoWords.h"

#include <QRegularExpression>

namespace pobblewig {

namespace {

/// Finds a "title" in a statement, and what it is "about".
struct ItemRule {
    ItemRule(const QString& words, const QString& where, const QString& what,
        const QString& aboutName = {}, const QString& dateName = {})
        : pattern(DemoWords::pattern(words))
        , path(where)
        , summary(what)
        , aboutKey(aboutName)
        , dateKey(dateName)
    {
    }

    /// Matched against the statement without its date, if the item has one.
    QRegularExpression pattern;
    QString path;
    /// With a placeholder for the date, or else for what it is about.
    QString summary;
    /// Keys in the details.
    QString aboutKey;
    QString dateKey;
};

using ItemRules = std::vector<ItemRule>;

const ItemRules& datedRules()
{
    static const auto exams = QStringLiteral("academics.exams");
    static const auto deadlines = QStringLiteral("academics.deadlines");
    static const auto on = QStringLiteral("On %1.");
    static const auto due = QStringLiteral("Due %1.");
    static const auto date = QStringLiteral("date");
    static const auto dueAt = QStringLiteral("dueAt");
    static const ItemRules all {
        { QStringLiteral(
              R"((?:^(?!(?:I|we)\b)|\b(?:my|the|a|an|our|next) )(?<title>(?:[\w-]+ ){0,3}?)"
              R"((?:exam|midterm|quiz)(?: (?:in|for) [\w -]+)?)\b)"),
            exams, on, {}, date },
        { QStringLiteral(R"(^deadlines?\b(?: for| of)?[: ]+(?<title>.+?)(?: is)?$)"), deadlines,
            due, {}, dueAt },
        { QStringLiteral(R"(^(?:I have )?(?<title>.+?)(?: is| are| will be)? due\b)"), deadlines,
            due, {}, dueAt },
        { QStringLiteral(R"(^(?:I|we)\b.*\b(?:have|need|must|got)\b.*\b(?:hand|turn|send) in )"
                         R"((?<title>.+))"),
            deadlines, due, {}, dueAt },
        { QStringLiteral(R"(^(?:I|we)\b.*\b(?:have|need|must|got)\b.*\b(?:submit|deliver) )"
                         R"((?<title>.+))"),
            deadlines, due, {}, dueAt },
    };
    return all;
}

const ItemRules& undatedRules()
{
    static const auto professors = QStringLiteral("academics.professors");
    static const auto decisions = QStringLiteral("decisions");
    static const auto teaches = QStringLiteral("Teaches the user %1.");
    static const auto course = QStringLiteral("course");
    static const auto name = QStringLiteral(R"((?<title>(?:(?:Prof(?:essor)?|Dr|Mrs?|Ms)\.? )?)"
                                            R"((?-i:\p{Lu})[\w.'-]*(?: (?-i:\p{Lu})[\w.'-]*)*))");
    static const auto teacher = QStringLiteral("(?:professor|prof|lecturer|teacher|tutor)");
    static const ItemRules all {
        { QStringLiteral(R"(^my (?:(?<about>[\w -]+?) )?%1 is (?:called )?%2)").arg(teacher, name),
            professors, teaches, course },
        { QStringLiteral(R"(^my %1 (?:for|in|of) (?<about>[\w -]+?) is (?:called )?%2)")
                .arg(teacher, name),
            professors, teaches, course },
        { QStringLiteral(
              R"(^(?<title>(?:Prof(?:essor)?|Dr|Mrs?|Ms)\.? [\w'-]+) teaches (?:(?:me|us) )?(?<about>.+))"),
            professors, teaches, course },
        { QStringLiteral(
              R"(^I(?:['’]m| am)? (?:take|taking|attend|attending|enrolled in|signed up for) )"
              R"((?<title>(?-i:[A-Z]{2,5}) ?\d{3,4}\b.*|.+ (?:course|class|lecture|seminar))$)"),
            QStringLiteral("academics.courses"), QStringLiteral("A course of the user.") },
        { QStringLiteral(
              R"(^my (?<about>mother|mom|mum|father|dad|sister|brother|roommate|flatmate|)"
              R"((?:best )?friend|girlfriend|boyfriend|partner|wife|husband|boss|advisor)(?:'s name)?)"
              R"( is (?:called )?)")
                + name,
            QStringLiteral("people"), QStringLiteral("The user's %1."),
            QStringLiteral("relation") },
        { QStringLiteral(R"(^I(?:['’]ve| have)? decided (?:(?:to|that) )?(?<title>.+))"), decisions,
            QStringLiteral("Decided by the user.") },
        { QStringLiteral(R"(^(?:decisions?|decided|agreed)\b[: ]+(?:(?:to|that) )?(?<title>.+))"),
            decisions, QStringLiteral("Decided together.") },
        { QStringLiteral(R"(^(?<title>every (?:day|morning|evening|night|week|\w+day)\b.+))"),
            QStringLiteral("routines"), QStringLiteral("A routine of the user.") },
    };
    return all;
}

QString offered(const QString& path, const QStringList& paths)
{
    const auto misc = QStringLiteral("misc");
    if (paths.contains(path))
        return path;
    return paths.contains(misc) ? misc : QString();
}

JSONValue::Object item(
    const ItemRule& rule, const QRegularExpressionMatch& match, const QDateTime& date)
{
    const auto about = match.captured(u"about").trimmed();
    JSONValue::Object details;
    if (!rule.dateKey.isEmpty())
        details[rule.dateKey] = DemoDates::format(date);
    if (!about.isEmpty())
        details[rule.aboutKey] = about;
    auto summary = rule.summary;
    if (summary.contains(u"%1"))
        summary = summary.arg(rule.dateKey.isEmpty() ? about : DemoDates::spoken(date));
    return { { QStringLiteral("title"), DemoWords::title(match.captured(u"title")) },
        { QStringLiteral("summary"), summary.replace(QStringLiteral(" ."), QStringLiteral(".")) },
        { QStringLiteral("details"), details } };
}

std::optional<DemoFinding> firstIn(const ItemRules& rules, const QString& statement,
    const QDateTime& date, const QStringList& paths)
{
    for (const auto& rule : rules) {
        const auto match = rule.pattern.match(statement);
        const auto path = offered(rule.path, paths);
        if (DemoWords::title(match.captured(u"title")).isEmpty() || path.isEmpty())
            continue;
        auto entry = item(rule, match, date);
        entry[QStringLiteral("path")] = path;
        return DemoFinding { QStringLiteral("referenceItems"), entry };
    }
    return std::nullopt;
}

} // namespace

std::optional<DemoFinding> DemoReferences::itemIn(
    const QString& statement, const QDateTime& now, const QStringList& paths)
{
    const auto [date, rest] = DemoDates::readTime(statement, now);
    if (date) {
        if (auto dated = firstIn(datedRules(), rest, *date, paths))
            return dated;
    }
    return firstIn(undatedRules(), statement, {}, paths);
}

std::optional<DemoFinding> DemoReferences::sectionIn(const QString& statement)
{
    static const QRegularExpression wish(
        QStringLiteral(R"(\b(?:start|begin|open|make|create|add) (?:me )?a (?:new )?section )"
                       R"((?:about|on|for|called|named) (?<topic>.+))"),
        QRegularExpression::CaseInsensitiveOption);
    const auto topic = wish.match(statement).captured(u"topic");
    const auto slug = DemoWords::slug(topic);
    if (slug.isEmpty())
        return std::nullopt;
    return DemoFinding { QStringLiteral("proposedSections"),
        { { QStringLiteral("path"), QStringLiteral("custom.") + slug },
            { QStringLiteral("title"), DemoWords::title(topic) },
            { QStringLiteral("summary"),
                QStringLiteral("What the user tells about %1.").arg(topic) } } };
}

} // namespace pobblewig
