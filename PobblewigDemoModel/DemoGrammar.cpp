#include "PobblewigDemoModel/DemoGrammar.h"

#include "PobblewigDemoModel/DemoWords.h"

#include <QRegularExpression>

namespace pobblewig {

namespace {

constexpr qsizetype longestStatement = 300;

QStringList clauses(QString text)
{
    static const auto ends = DemoWords::pattern(
        QStringLiteral(R"((?<!\b[DM]r)(?<!\bMs)(?<!\bMrs)(?<!\bProf)([.!?;]+)(?=\s|$))"));
    static const auto joints =
        DemoWords::pattern(QStringLiteral(R"(,? (?:and|but|so) (?=(?:I|my)\b))"));
    text.replace(ends, QStringLiteral("\\1\n")).replace(joints, QStringLiteral("\n"));
    return text.split(u'\n', Qt::SkipEmptyParts);
}

bool isQuestion(const QString& clause)
{
    static const auto wish =
        DemoWords::pattern(QStringLiteral(R"(^(?:please )?(?:can|could|would|will) you\b)"));
    return clause.endsWith(u'?') && !wish.match(clause).hasMatch();
}

QString statement(const QString& clause)
{
    static const auto opening = DemoWords::pattern(QStringLiteral(
        R"(^(?:(?:hello|good (?:morning|evening)|again|also|well|oh|by the way|btw|honestly)\b[ ,]*)"
        R"(|(?:remember|note|write)(?: down)?(?: that\b|[ :]+(?!to\b))[ :]*)+(?=\w))"));
    static const auto end = DemoWords::pattern(QStringLiteral(R"([\s.,;:!?]+$)"));
    return DemoWords::withoutCourtesies(clause).remove(opening).remove(end);
}

QString withoutEmphasis(QString text)
{
    static const auto before = DemoWords::pattern(QStringLiteral(
        R"(\b(I(?: am|['’]m)?) (?:(?:really|just|also|absolutely|still|quite|so|very) )+(?=\w))"));
    static const auto after = DemoWords::pattern(
        QStringLiteral(R"((?:,? (?:a lot|(?:very|so) much|too|again|as well|by the way|btw|)"
                       R"(you know|now|right now|today|at the moment))+$)"));
    return text.replace(before, QStringLiteral("\\1 ")).remove(after);
}

bool isUsualVerb(const QString& verb)
{
    static const auto usual = DemoWords::pattern(
        QStringLiteral(R"(^(?:like|love|enjoy|prefer|hate|dislike|adore|feel|need|want|plan|hope|)"
                       R"(intend|live|study|work|play|take|eat|drink|sleep|know|think|keep|go)$)"));
    return usual.match(verb).hasMatch();
}

/// The form after "the user"; past tenses and modal verbs stay.
QString singular(const QString& verb)
{
    if (verb == u"am" || verb == u"m")
        return QStringLiteral("is");
    if (verb == u"have" || verb == u"ve")
        return QStringLiteral("has");
    if (verb.startsWith(u"don"))
        return QStringLiteral("does not");
    if (!isUsualVerb(verb))
        return verb;
    if (verb == u"study")
        return QStringLiteral("studies");
    return verb == u"go" ? QStringLiteral("goes") : verb + u's';
}

/// The form after "they".
QString plural(const QString& verb)
{
    if (verb == u"am" || verb == u"m")
        return QStringLiteral("are");
    if (verb == u"ve")
        return QStringLiteral("have");
    return verb == u"was" ? QStringLiteral("were") : verb;
}

QString whole(const QString& verb)
{
    return verb == u"ll" ? QStringLiteral("will") : verb == u"d" ? QStringLiteral("would") : verb;
}

QString possessive(const QString& word, bool isFirst)
{
    if (word == u"my")
        return isFirst ? QStringLiteral("the user's") : QStringLiteral("their");
    if (word == u"mine")
        return QStringLiteral("theirs");
    return word == u"me" ? QStringLiteral("them") : QStringLiteral("themselves");
}

/// The third person of "I like", "I'm" or "my".
QString replacement(const QRegularExpressionMatch& match, bool isFirst)
{
    if (match.hasCaptured(u"own"))
        return possessive(match.captured(u"own").toLower(), isFirst);
    const auto verb = (match.captured(u"short") + match.captured(u"verb")).toLower();
    const auto often = match.captured(u"often").toLower();
    return isFirst ? QStringLiteral("the user ") + often + whole(singular(verb))
                   : QStringLiteral("they ") + often + whole(plural(verb));
}

} // namespace

QStringList DemoGrammar::statements(const QString& text)
{
    QStringList found;
    for (const auto& clause : clauses(text)) {
        const auto trimmed = clause.simplified();
        const auto said = statement(trimmed);
        if (!said.isEmpty() && said.size() <= longestStatement && !isQuestion(trimmed))
            found.append(said);
    }
    return found;
}

std::optional<QString> DemoGrammar::correctedTo(const QString& statement)
{
    static const auto correction = DemoWords::pattern(QStringLiteral(
        R"(^(?:actually|no|nope|wait|correction|sorry|not quite)\b[ ,:]+(?<what>.+))"));
    const auto what = correction.match(statement).captured(u"what");
    return what.isEmpty() ? std::nullopt : std::optional(what);
}

QString DemoGrammar::aboutTheUser(const QString& statement)
{
    static const auto firstPerson = DemoWords::pattern(QStringLiteral(
        R"(\bI(?:['’](?<short>m|ve|ll|d)| (?<often>(?:usually|always|often|never) )?)"
        R"((?<verb>[a-z]+(?:['’]t)?))\b|\b(?<own>my|mine|me|myself)\b)"));
    const auto text = withoutEmphasis(statement);
    QString told;
    qsizetype end = 0;
    for (auto matches = firstPerson.globalMatch(text); matches.hasNext();) {
        const auto match = matches.next();
        told += QStringView(text).sliced(end, match.capturedStart() - end);
        told += replacement(match, end == 0);
        end = match.capturedEnd();
    }
    told += QStringView(text).sliced(end);
    return told.left(1).toUpper() + told.mid(1) + u'.';
}

} // namespace pobblewig
