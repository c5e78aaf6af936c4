#include "PobblewigDesktop/contactsheet/ReplyScenes.h"

#include "PobblewigDesktop/chat/MessageInput.h"

#include <QKeyEvent>
#include <QListView>

namespace pobblewig {

namespace {

PanelScene answered(const char* name, const QString& question, const QString& reply)
{
    return { QString::fromUtf8(name), [=](PanelStage& stage) {
                stage.panel.resize(440, 760);
                stage.talk.exchange(question, reply, StagedChat::now - std::chrono::minutes(2));
            } };
}

QString code()
{
    return QStringLiteral(
        "Use `std::ranges::sort` with a *projection*:\n\n```cpp\n#include <algorithm>\n\n"
        "void sortByAge(std::vector<Person>& people)\n{\n"
        "    std::ranges::sort(people, {}, &Person::age); // stable_sort keeps equal ones in "
        "order\n"
        "}\n```\n\nThen:\n\n1. build with `-std=c++20`\n2. run it\n   - once with few people\n"
        "   - once with **many**\n\n> Premature optimisation is the root of all evil.\n\n"
        "See [the reference](https://en.cppreference.com/w/cpp/algorithm/ranges/sort) or "
        "https://isocpp.org.");
}

QString table()
{
    return QStringLiteral(
        "## Your week\n\nTwo deadlines, one exam:\n\n"
        "| Day | What | Hours |\n|:----|:-----|------:|\n| Monday | Lab report, **due 12:00** | 3 "
        "|\n"
        "| Wednesday | Read chapter 4 of *Statistics for people who would rather do anything else* "
        "| 2.5 |\n| Friday | Exam | 1 |\n\n### Before Monday\n\n- [x] collect the data\n"
        "- [ ] draw the figures\n- [ ] write ~~everything~~ the discussion\n\n---\n\nGood luck.");
}

QString manyLines()
{
    QString text;
    for (int day = 1; day <= 20; ++day)
        text += QStringLiteral("**Day %1.** Repeat what you learned, then do one exercise.\n\n")
                    .arg(day);
    return text;
}

/// With the buttons of the message that is current by keyboard.
void answerAgain(PanelStage& stage)
{
    const auto time = StagedChat::now - std::chrono::minutes(2);
    stage.talk.add({ .id = QUuid::createUuid(),
        .text = QStringLiteral("A name for a snail?"),
        .timestamp = time });
    stage.talk.add({ .id = QUuid::createUuid(),
        .role = ChatMessage::Role::assistant,
        .text = QStringLiteral("Turbo, because it does not."),
        .timestamp = time,
        .earlier = std::vector { QStringLiteral("Speedy.") } });
    stage.panel.activateWindow();
    stage.panel.findChild<QListView*>()->setFocus(Qt::TabFocusReason);
}

void write(PanelStage& stage, int key, const QString& text)
{
    auto* const input = stage.panel.findChild<MessageInput*>();
    input->setPlainText(text);
    QKeyEvent press(QEvent::KeyPress, key, Qt::NoModifier);
    QCoreApplication::sendEvent(input, &press);
}

void queue(PanelStage& stage)
{
    stage.talk.ask(QStringLiteral("A name for a snail?"));
    stage.talk.say(QStringLiteral("Turbo, because"));
    write(stage, Qt::Key_Return,
        QStringLiteral("And one for its friend, who is a rather slow hare with a cold?"));
    write(stage, Qt::Key_Return, QStringLiteral("And one for me?"));
}

void edit(PanelStage& stage)
{
    stage.talk.exchange(QStringLiteral("A name for a snial?"), QStringLiteral("For a what?"),
        StagedChat::now - std::chrono::minutes(2));
    write(stage, Qt::Key_Up, {});
}

} // namespace

std::vector<PanelScene> ReplyScenes::all()
{
    return {
        answered("reply, code", QStringLiteral("How do I sort people by age in C++?"), code()),
        answered("reply, table", QStringLiteral("What is up this week?"), table()),
        answered(
            "reply, forty lines", QStringLiteral("Plan twenty days of revision."), manyLines()),
        answered("reply, Hindi", QStringLiteral("फोटोसिंथेसिस क्या है?"),
            QStringLiteral(
                "**प्रकाश संश्लेषण** में पौधे सूर्य के प्रकाश से भोजन बनाते हैं:\n\n1. प्रकाश का अवशोषण\n"
                "2. जल का विघटन\n\n> ऑक्सीजन निकलती है।")),
        answered("reply, Arabic", QStringLiteral("ما هو التمثيل الضوئي؟"),
            QStringLiteral(
                "**التمثيل الضوئي** عملية تصنع بها النباتات غذاءها:\n\n1. امتصاص الضوء\n2. "
                "تحليل الماء\n\n- يستخدم `CO2`\n\n> ينتج الأكسجين.")),
        answered("reply, emoji", QStringLiteral("❤️ ☕ 👍🏽 🏳️‍🌈"),
            QStringLiteral(
                "# 🎓 Well done 🎉\n\n- ❤️ heart, ☕ coffee, ✔ tick, ☀️ sun\n- 👍🏽 "
                "thumb, 🏳️‍🌈 flag, "
                "👩‍👩‍👧‍👦 family, 1️⃣ keycap\n- © and ™ are text, 12 # "
                "too")),
        { QStringLiteral("reply, Arabic, growing"),
            [](PanelStage& stage) {
                stage.talk.ask(QStringLiteral("متى الامتحان؟"));
                stage.talk.say(QStringLiteral("الامتحان يوم الجمعة، في"));
            } },
        { QStringLiteral("reply, given again"), answerAgain },
        { QStringLiteral("next message"), queue },
        { QStringLiteral("editing"), edit },
    };
}

} // namespace pobblewig
