#include "PobblewigDemoModel/DemoReactions.h"

#include "PobblewigDemoModel/DemoWords.h"

#include <algorithm>

namespace pobblewig {

namespace {

struct Feeling {
    QString emotion;
    QRegularExpression words;
};

/// The first that fits counts. Nothing serious is joked about.
const std::vector<Feeling>& feelings()
{
    const auto feeling = [](const char* emotion, const char* words) {
        return Feeling { QString::fromLatin1(emotion),
            DemoWords::pattern(QString::fromUtf8(words)) };
    };
    static const std::vector all {
        feeling("none", R"(\b(died|dead|death|funeral|cancer|hospital|suicid\w*|grief|divorce)\b)"),
        feeling("sympathetic", R"(\b(tired|exhausted|stressed|overwhelmed|anxious|lonely|sick)\b)"),
        feeling("celebrating",
            R"(\b(passed|it works|finally|submitted|handed in|got an a|won|hooray|yay|done!)\b|🎉)"),
        feeling("frustrated", R"(\b(ugh|argh|stuck|crash\w*|broken|annoy\w*|hate|fails? again)\b)"),
        feeling("shocked", R"(\b(wow|omg|no way|what the|unbelievable|seriously)\b|!\?)"),
        feeling("confused", R"(\b(confus\w*|huh|don't (get|understand)|makes no sense)\b|\?\?)"),
        feeling("offended", R"(\b(stupid|useless|ugly|dumb|shut up|boring)\b)"),
        feeling("skeptical", R"(\b(are you sure|really\?|doubt|as if|sure you)\b)"),
        feeling("smug", R"(\b(you were right|told you|as you said|good advice)\b)"),
        feeling("amused", R"(\b(lol|haha\w*|hehe|funny|joke|lmao)\b|😂|🤣)"),
        feeling(
            "devoted", R"(\b(promise|guard|watch over|protect|stay with me|good (girl|boy))\b)"),
        feeling("sad", R"(\b(goodbye|bye|miss(ed)? you|leaving|sorry)\b)"),
    };
    return all;
}

} // namespace

JSONValue DemoReactions::judged(const QString& prompt, const QDateTime&)
{
    constexpr double sure = 0.8;
    const auto mark = QStringLiteral("\"\"\"");
    const auto said = prompt.section(mark, 1, 1);
    const auto found = std::ranges::find_if(
        feelings(), [&](const Feeling& feeling) { return feeling.words.match(said).hasMatch(); });
    const auto emotion = found == feelings().end() ? QStringLiteral("none") : found->emotion;
    return JSONValue::Object { { QStringLiteral("emotion"), emotion },
        { QStringLiteral("confidence"), sure } };
}

} // namespace pobblewig
