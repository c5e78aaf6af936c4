#include "PobblewigDemoModel/DemoSmallTalk.h"

#include "foundation/Text.h"

#include <array>

namespace pobblewig {

namespace {

constexpr qsizetype longestEcho = 200;

constexpr std::array storyPlaces { u"a lighthouse without a lamp", u"a library under a hill",
    u"the quiet end of a railway platform", u"a kitchen that smelled of cinnamon",
    u"a harbour full of paper boats", u"the roof of a very old school",
    u"a market where nobody was in a hurry", u"a garden that only opened at night",
    u"a workshop for broken clocks", u"an island the size of a table",
    u"a bridge with a bench in its middle", u"a small window with a light in it" };
constexpr std::array storyHappenings { u"it sat down, counted to ten and felt the wind turn",
    u"it borrowed a pencil and forgot to return it",
    u"it made friends with a cat who pretended not to care",
    u"it learned a song with only one note, and sang it well",
    u"it wrote three things down and crossed out two", u"it slept through the whole afternoon",
    u"it asked for the way and was given an apple instead",
    u"it found the answer to a question that nobody had asked" };

QString tellStory()
{
    auto story = QStringLiteral("Settle in, this is a long one. Once there was a small creature "
                                "that lived at the edge of a screen and wanted to see the rest.");
    for (size_t day = 0; day < 2 * storyPlaces.size(); ++day) {
        story += QStringLiteral("\n\nOn day %1 it came to %2. There %3, and in the evening it said "
                                "to itself: tomorrow I go on.")
                     .arg(day + 1)
                     .arg(QStringView(storyPlaces[day % storyPlaces.size()]))
                     .arg(QStringView(storyHappenings[day % storyHappenings.size()]));
    }
    return story + QStringLiteral("\n\nThen it came home, and everything was where it had been.");
}

DemoPlan tellTime(const DemoSentence& sentence)
{
    const auto time = sentence.now.toString(QStringLiteral("HH:mm"));
    return { QStringLiteral("It is %1 by this computer's clock. Still time for one small thing.")
                 .arg(time) };
}

QString help()
{
    return QStringLiteral(
        "Gladly. Each of these sentences shows something:\n\n"
        "- Proposals: \"turn into a pink axolotl\", \"be a deadpan roommate\", \"pause "
        "observation\", \"forget that I like tea\"\n"
        "- A mode for a while: \"focus for 30 minutes\"\n"
        "- Memory: \"I like tea\" and then the button \"New session\", \"what do you know about "
        "tea\", \"remember that I moved\", \"what happened yesterday\", \"when is the essay due\"\n"
        "- Around us: \"what's on my screen\", \"what am I doing\", \"list my folders\"\n"
        "- Small talk: a greeting, \"what time is it\", a long story\n\n"
        "The README lists them all. Whatever else you write, I listen.");
}

DemoPlan echo(const DemoSentence& sentence)
{
    return { QStringLiteral("You asked: \"%1\" A good question, and more than my rules can answer. "
                            "A real model would give it a try.")
                 .arg(Text::firstCharacters(sentence.match.captured(), longestEcho)) };
}

std::function<DemoPlan(const DemoSentence&)> say(const QString& text)
{
    return [=](const DemoSentence&) -> DemoPlan { return { text }; };
}

} // namespace

const DemoRules& DemoSmallTalk::rules()
{
    static const DemoRules all {
        { QStringLiteral(R"(\bstory\b|^long\b|\bsomething long\b|\blong (answer|text|reply)\b)"),
            say(tellStory()) },
        { QStringLiteral(R"(\bwhat('s| is)? (the )?time\b|\bhow late\b)"), tellTime },
        { QStringLiteral(R"(\bhelp\b|\bwhat can you do\b)"), say(help()) },
        { QStringLiteral(R"(\bthank(s| you)\b)"),
            say(QStringLiteral("You are welcome. It was a pleasure.")) },
        { QStringLiteral(R"(\b(tired|stressed|overwhelmed|exhausted|anxious)\b)"),
            say(QStringLiteral(
                "That sounds like a lot. Shall we make it smaller? Choose the one piece that you "
                "could finish in ten minutes, and begin with only that.")) },
        { QStringLiteral(R"(^(hi|hello|hey|good (morning|afternoon|evening))\b)"),
            say(QStringLiteral("Hello, good to see you. What are you working on today?")) },
        { QStringLiteral(R"((?s)^.*\?$)"), echo },
        { QString(),
            say(QStringLiteral(
                "I hear you. My rules have nothing clever to say to that, but I am "
                "glad that you told me. Write \"help\" to see what I understand.")) },
    };
    return all;
}

} // namespace pobblewig
