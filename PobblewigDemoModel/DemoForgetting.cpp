#include "PobblewigDemoModel/DemoForgetting.h"

#include "PobblewigDemoModel/DemoSections.h"
#include "PobblewigDemoModel/DemoWords.h"
#include "PobblewigDemoModel/ToolAnswers.h"

namespace pobblewig {

namespace {

struct Target {
    QString kind;
    QString key;
    QString value;
};

DemoPlan forget(const DemoSentence& sentence, const QString& what, const Target& target)
{
    const QStringList id { QStringLiteral("forget"), DemoWords::slug(what),
        sentence.now.date().toString(QStringLiteral("yyyyMMdd")) };
    return { QStringLiteral("I can forget that."),
        { { QStringLiteral("forget_memory"),
            { { QStringLiteral("proposalId"), id.join(u'-') },
                { QStringLiteral("target"), target.kind }, { target.key, target.value } } } } };
}

DemoPlan refuseAll(const DemoSentence&)
{
    return { QStringLiteral("Not I, and that is on purpose: the button that deletes everything "
                            "lives in the app's Memory screen.") };
}

DemoPlan forgetSection(const DemoSentence& sentence)
{
    return forget(sentence, sentence.match.captured().section(u' ', 1),
        { QStringLiteral("referenceSection"), QStringLiteral("path"),
            DemoSections::path(sentence.part(u"section")) });
}

DemoPlan forgetObservations(const DemoSentence& sentence)
{
    const auto words = DemoWords::keywords(sentence.part(u"what"));
    return forget(
        sentence, words, { QStringLiteral("observations"), QStringLiteral("query"), words });
}

/// Looks something up, then forgets the first result.
DemoPlan find(const DemoSentence& sentence, const QString& tool, const QString& kind)
{
    const auto words = DemoWords::keywords(sentence.part(u"what"));
    const auto forgetFound = [=](const DemoResults& results) -> DemoPlan {
        const auto id = ToolAnswers::firstID(results, tool);
        if (!id)
            return { QStringLiteral("I found nothing about that, so there is nothing to forget.") };
        return forget(sentence, words, { kind, QStringLiteral("id"), *id });
    };
    return { QStringLiteral("Let me see what I have about that."),
        { { tool, { { QStringLiteral("query"), words } } } }, forgetFound,
        { QStringLiteral("forget_memory") } };
}

DemoPlan forgetItem(const DemoSentence& sentence)
{
    return find(
        sentence, QStringLiteral("memory_search_reference"), QStringLiteral("referenceItem"));
}

DemoPlan forgetNote(const DemoSentence& sentence)
{
    return find(sentence, QStringLiteral("memory_find_notes"), QStringLiteral("note"));
}

} // namespace

const DemoRules& DemoForgetting::rules()
{
    static const DemoRules all {
        { QStringLiteral(R"(^forget (?:it all|everything|all (?:that |of )?(?:it|you)\b))"),
            refuseAll },
        { QStringLiteral(R"(^forget (?:about )?(?:(?:all|my|the|old|past) )*(?<section>%1)$)")
                .arg(DemoSections::names()),
            forgetSection },
        { QStringLiteral(R"(^forget what (?:i (?:said|told you|wrote)|happened)(?<what>.*))"),
            forgetObservations },
        { QStringLiteral(R"(^forget (?:about )?(?:the |my )?)"
                         R"((?:item|course|professor|assignment|deadline|exam) (?<what>.+))"),
            forgetItem },
        { QStringLiteral(R"(^forget (?<what>.+))"), forgetNote },
    };
    return all;
}

} // namespace pobblewig
