#include "PobblewigDemoModel/DemoReplies.h"

#include "PobblewigDemoModel/SchemaAnswer.h"
#include "foundation/Text.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <QRegularExpression>

#include <algorithm>
#include <array>

namespace pobblewig {

namespace {

constexpr qsizetype longestEcho = 200;

struct Question {
    QString text = {};
    bool hasImage = false;
    QTime now = {};
};

const QString& introduction()
{
    static const auto text = QStringLiteral(
        "Before anything else: I am the built-in demo model, not a real AI. I answer by a handful "
        "of fixed rules, so that you can see how Pobblewig works before you decide on a model.\n\n"
        "To talk with a real one, put MAIN_MODEL_BASE_URL, MAIN_MODEL_ID and MAIN_MODEL_API_KEY "
        "into the file ~/.config/Pobblewig/environment and start me again. A server on your own "
        "computer will do. The README has the details.");
    return text;
}

QString describePicture(const Question&)
{
    return QStringLiteral("Thank you for the picture. I am sure that it is a good one, but a demo "
                          "model has no eyes. With a vision model I could tell you what I see.");
}

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

QString tellStory(const Question&)
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

QString tellTime(const Question& question)
{
    const auto time = question.now.toString(QStringLiteral("HH:mm"));
    return QStringLiteral("It is %1 by this computer's clock. Still time for one small thing.")
        .arg(time);
}

QString help(const Question&)
{
    return QStringLiteral("Gladly. I understand a greeting, \"what time is it\", \"help\", and a "
                          "wish for a long story, which is good for trying out the scrolling. "
                          "Whatever else you write, I listen, and say back what I understood.");
}

QString welcome(const Question&)
{
    return QStringLiteral("You are welcome. It was a pleasure.");
}

QString comfort(const Question&)
{
    return QStringLiteral("That sounds like a lot. Shall we make it smaller? Choose the one piece "
                          "that you could finish in ten minutes, and begin with only that.");
}

QString greet(const Question&)
{
    return QStringLiteral("Hello, good to see you. What are you working on today?");
}

QString echo(const Question& question)
{
    return QStringLiteral("You asked: \"%1\" A good question, and more than my rules can answer. "
                          "A real model would give it a try.")
        .arg(Text::firstCharacters(question.text, longestEcho));
}

QString admitIgnorance(const Question&)
{
    return QStringLiteral("I hear you. My rules have nothing clever to say to that, but I am glad "
                          "that you told me. Write \"help\" to see what I understand.");
}

struct Rule {
    QString pattern;
    QString (*answer)(const Question&);
};

const std::array<Rule, 8>& rules()
{
    static const std::array<Rule, 8> all { {
        { QStringLiteral(R"(\bstory\b|^long\b|\bsomething long\b|\blong (answer|text|reply)\b)"),
            tellStory },
        { QStringLiteral(R"(\bwhat('s| is)? (the )?time\b|\bhow late\b)"), tellTime },
        { QStringLiteral(R"(\bhelp\b|\bwhat can you do\b)"), help },
        { QStringLiteral(R"(\bthank(s| you)\b)"), welcome },
        { QStringLiteral(R"(\b(tired|stressed|overwhelmed|exhausted|anxious)\b)"), comfort },
        { QStringLiteral(R"(^(hi|hello|hey|good (morning|afternoon|evening))\b)"), greet },
        { QStringLiteral(R"(\?$)"), echo },
        { QString(), admitIgnorance },
    } };
    return all;
}

QString answer(const Question& question)
{
    if (question.hasImage)
        return describePicture(question);
    const auto fits = [&](const Rule& rule) {
        const QRegularExpression pattern(rule.pattern, QRegularExpression::CaseInsensitiveOption);
        return question.text.contains(pattern);
    };
    return std::ranges::find_if(rules(), fits)->answer(question);
}

QString formatted(const ChatResponseFormat& format)
{
    const auto value = format.jsonSchema ? SchemaAnswer::emptiest(format.jsonSchema->schema)
                                         : JSONValue(JSONValue::Object());
    const auto object = value.toJson().toObject();
    return QString::fromUtf8(QJsonDocument(object).toJson(QJsonDocument::Compact));
}

/// The newest message of a role, or null.
const ChatRequestMessage* newest(const ChatRequest& request, QStringView role)
{
    for (auto message = request.messages.rbegin(); message != request.messages.rend(); ++message) {
        if (message->role == role)
            return &*message;
    }
    return nullptr;
}

Question question(const ChatRequest& request, QTime now)
{
    const auto* asked = newest(request, u"user");
    if (!asked)
        return { .now = now };
    return { .text = asked->text().trimmed(), .hasImage = asked->hasImage(), .now = now };
}

} // namespace

DemoReply DemoReplies::reply(const ChatRequest& request, QTime now)
{
    if (request.responseFormat && request.responseFormat->type != u"text")
        return { formatted(*request.responseFormat) };
    const auto said = answer(question(request, now));
    if (newest(request, u"assistant"))
        return { said };
    return { introduction() + QStringLiteral("\n\n") + said };
}

} // namespace pobblewig
