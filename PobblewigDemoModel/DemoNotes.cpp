#include "PobblewigDemoModel/DemoNotes.h"

#include "PobblewigDemoModel/DemoDates.h"
#include "PobblewigDemoModel/DemoGrammar.h"
#include "PobblewigDemoModel/DemoWords.h"

#include <QLocale>
#include <QRegularExpression>
#include <QStringList>
#include <QTimeZone>

namespace pobblewig {

namespace {

constexpr double confidence = 0.9;

struct NoteRule {
    QRegularExpression pattern;
    QString category;
    QString kind;
};

const std::vector<NoteRule>& noteRules()
{
    static const auto preferences = QStringLiteral("preferences");
    static const auto preference = QStringLiteral("preference");
    static const auto goal = QStringLiteral("goal");
    static const auto fact = QStringLiteral("fact");
    static const auto context = QStringLiteral("currentContext");
    static const auto often =
        QStringLiteral("(?:(?:really|just|also|still|always|absolutely|so|quite) )*");
    static const auto thing =
        QStringLiteral("(?!(?:it|this|that|you|him|her|them|these|those|to know)$).+");
    static const std::vector<NoteRule> all {
        { DemoWords::pattern(QStringLiteral("^I %1(?:like|love|enjoy|prefer|hate|adore|dislike) %2")
                                 .arg(often, thing)),
            preferences, preference },
        { DemoWords::pattern(QStringLiteral("^I %1(?:do not|don['’]t|can['’]t|cannot) "
                                            "(?:like|enjoy|stand|eat|drink|smoke) %2")
                                 .arg(often, thing)),
            preferences, preference },
        { DemoWords::pattern(QStringLiteral("^my fav(?:ou?)?rite .+? (?:is|are) .+")), preferences,
            preference },
        { DemoWords::pattern(
              QStringLiteral("^(?:do not|don['’]t|never|stop|always) "
                             "(?:nag|remind|remember|interrupt|bother|wake|call|ask)\\w* me\\b.*")),
            preferences, preference },
        { DemoWords::pattern(QStringLiteral("^my (?:\\w+ )?goal\\b.*? is .+")),
            QStringLiteral("goals"), goal },
        { DemoWords::pattern(QStringLiteral("^my (?:dream|aspiration) is .+")),
            QStringLiteral("aspirations"), goal },
        { DemoWords::pattern(QStringLiteral("^my name is .+")), QStringLiteral("misc"), fact },
        { DemoWords::pattern(
              QStringLiteral("^I (?:live|study|work|play|come|usually|always|never|often) .+")),
            context, fact },
        { DemoWords::pattern(
              QStringLiteral("^I(?:['’]m| am) (?:an? (?!bit|little)|allergic to |from |learning "
                             "|studying |vegetarian|vegan).*")),
            context, fact },
        { DemoWords::pattern(QStringLiteral(
              "^I(?:['’]ve| have)? (?:moved|started|quit|joined|adopted|bought|switched|got "
              "engaged) .+")),
            QStringLiteral("history"), QStringLiteral("event") },
    };
    return all;
}

DemoFinding note(const QString& text, const QString& category, const QString& kind)
{
    return { QStringLiteral("notes"),
        { { QStringLiteral("text"), text }, { QStringLiteral("category"), category },
            { QStringLiteral("kind"), kind },
            { QStringLiteral("source"), QStringLiteral("explicitUser") },
            { QStringLiteral("confidence"), confidence } } };
}

/// A wish with a date expires at the end of that day.
DemoFinding datedWish(const QString& wish, const QDateTime& date, const QDateTime& now)
{
    const auto day = QLocale::c().toString(date.date(), QStringLiteral("dddd, d MMMM"));
    auto found = note(QStringLiteral("The user wants to %1 (%2).").arg(wish, day),
        QStringLiteral("currentContext"), QStringLiteral("goal"));
    const auto end = date.date().addDays(1).startOfDay(now.timeZone());
    found.entry[QStringLiteral("isTemporary")] = true;
    found.entry[QStringLiteral("expiresInHours")] = double(now.secsTo(end)) / 3600;
    return found;
}

std::optional<DemoFinding> wishIn(const QString& statement, const QDateTime& now)
{
    static const auto wishes = DemoWords::pattern(
        QStringLiteral("^I(?:['’]d (?:really )?(?:like|love)| would (?:like|love)"
                       "| (?:really )?(?:want|plan|hope|intend|aim)"
                       "|(?:['’]m| am) (?:planning|hoping)) to (?<what>.+)"));
    const auto what = wishes.match(statement).captured(u"what");
    if (what.isEmpty())
        return std::nullopt;
    const auto [date, rest] = DemoDates::readTime(what, now);
    if (date)
        return datedWish(rest, *date, now);
    return note(DemoGrammar::aboutTheUser(QStringLiteral("I want to ") + what),
        QStringLiteral("goals"), QStringLiteral("goal"));
}

std::optional<DemoFinding> statedIn(const QString& statement, const QDateTime& now)
{
    if (auto wish = wishIn(statement, now))
        return wish;
    for (const auto& rule : noteRules()) {
        if (!rule.pattern.match(statement).hasMatch())
            continue;
        static const auto aboutMe = DemoWords::pattern(QStringLiteral("^(?:I|my)\\b"));
        const auto text = aboutMe.match(statement).hasMatch()
            ? DemoGrammar::aboutTheUser(statement)
            : QStringLiteral("The user asked: \"%1\".").arg(statement);
        return note(text, rule.category, rule.kind);
    }
    return std::nullopt;
}

struct TagRule {
    QRegularExpression pattern;
    QStringList tags;
};

TagRule tagged(const QString& pattern, const QString& tags)
{
    return { DemoWords::pattern(QStringLiteral("\\b(?:%1)\\b").arg(pattern)), tags.split(u' ') };
}

const std::vector<TagRule>& tagRules()
{
    static const std::vector<TagRule> all {
        tagged(QStringLiteral("slept (?:badly|poorly|terribly|too little|only .+)|(?:couldn['’]t|"
                              "didn['’]t|barely) (?:sleep|slept)|no sleep|insomnia"),
            QStringLiteral("sleep fatigue")),
        tagged(QStringLiteral("slept|overslept|woke up"), QStringLiteral("sleep")),
        tagged(
            QStringLiteral("tired|exhausted|sleepy|worn out|drained"), QStringLiteral("fatigue")),
        tagged(QStringLiteral("stressed|overwhelmed|anxious|nervous|worried"),
            QStringLiteral("stress mood")),
        tagged(QStringLiteral("happy|proud|excited|relieved|glad|(?:good|great) mood|sad|lonely|"
                              "frustrated|angry|bored|homesick"),
            QStringLiteral("mood")),
        tagged(QStringLiteral("went (?:\\w+ )?(?:running|swimming|cycling|hiking|climbing|jogging|"
                              "dancing|for a (?:run|walk|swim|ride)|to the gym)|worked out|"
                              "exercised|ran \\d+.*"),
            QStringLiteral("movement")),
        tagged(QStringLiteral("ate|(?:skipped|had) (?:breakfast|lunch|dinner)"),
            QStringLiteral("food")),
        tagged(QStringLiteral("finished|handed in|submitted|passed|failed|completed|learned|"
                              "understood"),
            QStringLiteral("progress")),
        tagged(QStringLiteral("met|visited|talked (?:to|with)|party"), QStringLiteral("social")),
        tagged(QStringLiteral("sick|ill|headache|migraine|a cold"), QStringLiteral("health")),
    };
    return all;
}

/// For example "psyc-2010" for "PSYC 2010".
QStringList courseCodes(const QString& statement)
{
    static const QRegularExpression code(QStringLiteral(R"(\b([A-Z]{2,5})[ -]?(\d{3,4})\b)"));
    QStringList codes;
    for (auto matches = code.globalMatch(statement); matches.hasNext();) {
        const auto match = matches.next();
        codes.append((match.captured(1) + u'-' + match.captured(2)).toLower());
    }
    return codes;
}

/// Whether it is a state or an event rather than a plan, a habit or a denial.
bool isOfTheMoment(const QString& statement)
{
    static const auto firstPerson = DemoWords::pattern(
        QStringLiteral("\\b(?:I|my)\\b|^(?:feeling|so|very|slept|went|had|got)\\b"));
    static const auto other = DemoWords::pattern(
        QStringLiteral("\\b(?:will|['’]ll|tomorrow|want|plan|have to|need|should|must|if|when|"
                       "would|['’]d|like|love|hate|prefer|usually|always|never|often|not|"
                       "don['’]t|remind)\\b"));
    return firstPerson.match(statement).hasMatch() && !other.match(statement).hasMatch();
}

QStringList tagsOf(const QString& statement)
{
    QStringList tags;
    for (const auto& rule : tagRules()) {
        if (rule.pattern.match(statement).hasMatch())
            tags += rule.tags;
    }
    if (!tags.isEmpty())
        tags += courseCodes(statement);
    tags.removeDuplicates();
    return tags;
}

} // namespace

std::optional<DemoFinding> DemoNotes::noteIn(const QString& statement, const QDateTime& now)
{
    static const auto sayingWhatIs =
        DemoWords::pattern(QStringLiteral(R"(^(?:it|that|he|she|they|the|my|I meant)\b)"));
    const auto corrected = DemoGrammar::correctedTo(statement);
    if (!corrected)
        return statedIn(statement, now);
    const auto kind = QStringLiteral("correction");
    if (auto stated = statedIn(*corrected, now)) {
        stated->entry[QStringLiteral("kind")] = kind;
        return stated;
    }
    if (!sayingWhatIs.match(*corrected).hasMatch())
        return std::nullopt;
    return note(QStringLiteral("The user corrected: \"%1\".").arg(*corrected),
        QStringLiteral("misc"), kind);
}

std::optional<DemoFinding> DemoNotes::observationIn(const QString& statement)
{
    if (!isOfTheMoment(statement))
        return std::nullopt;
    JSONValue::Array tags;
    for (const auto& tag : tagsOf(statement))
        tags.push_back(tag);
    if (tags.empty())
        return std::nullopt;
    return DemoFinding { QStringLiteral("observations"),
        { { QStringLiteral("summary"), DemoGrammar::aboutTheUser(statement) },
            { QStringLiteral("observedFacts"), JSONValue::Array { statement } },
            { QStringLiteral("source"), QStringLiteral("explicitUser") },
            { QStringLiteral("tags"), tags } } };
}

} // namespace pobblewig
