#include "PobblewigDemoModel/DemoInterventions.h"

#include <QRegularExpression>

namespace pobblewig {

namespace {

/// The titles of the items that follow a heading.
QStringList titles(const QString& prompt, const QString& heading)
{
    const auto begin = prompt.indexOf(heading);
    QStringList titles;
    if (begin < 0)
        return titles;
    for (const auto& line : prompt.sliced(begin).section(u'\n', 1).split(u'\n')) {
        if (!line.startsWith(u"- "))
            break;
        titles << line.sliced(2).section(QStringLiteral(" — "), 0, 0);
    }
    return titles;
}

QString timeLeft(int hours)
{
    if (hours < 1)
        return QStringLiteral("in less than an hour");
    return hours == 1 ? QStringLiteral("in about an hour")
                      : QStringLiteral("in about %1 hours").arg(hours);
}

std::optional<QString> reminder(const QString& prompt)
{
    static const QRegularExpression form(
        QStringLiteral("deadline is close: \"(.*)\"( for .*)? is due (.*) \\(about (\\d+) hours"));
    const auto match = form.match(prompt);
    if (!match.hasMatch())
        return std::nullopt;
    return QStringLiteral("“%1”%2 is due %3, %4. Are you on top of it? If you've got this "
                          "handled, tell me and I'll back off.")
        .arg(match.captured(1), match.captured(2), match.captured(3),
            timeLeft(match.captured(4).toInt()));
}

std::optional<QString> checkin(const QString& prompt)
{
    static const QRegularExpression form(
        QStringLiteral("the user has had (.*) active for about (\\d+) minutes"));
    const auto match = form.match(prompt);
    if (!match.hasMatch())
        return std::nullopt;
    return QStringLiteral("%1 has been open for about %2 minutes. If that is what you want to be "
                          "doing, tell me and I'll back off.")
        .arg(match.captured(1), match.captured(2));
}

QString briefing(const QString& prompt)
{
    const auto add = [&](QStringList& to, const QString& word, const QString& heading) {
        const auto found = titles(prompt, heading);
        if (!found.isEmpty())
            to << QStringLiteral("%1: %2.").arg(word, found.join(QStringLiteral(", ")));
    };
    QStringList sentences;
    add(sentences, QStringLiteral("Due soon"), QStringLiteral("Canvas deadlines due"));
    add(sentences, QStringLiteral("Today"), QStringLiteral("Today's remaining calendar events"));
    add(sentences, QStringLiteral("To remember"), QStringLiteral("Reminders due"));
    if (sentences.isEmpty())
        return QStringLiteral("Nothing is due and your schedule is clear. Enjoy the day!");
    return QStringLiteral("Hello! ") + sentences.join(u' ');
}

} // namespace

std::optional<QString> DemoInterventions::message(const ChatRequest& request)
{
    const auto prompt = request.messages.back().text();
    if (request.messages.size() > 1 || !prompt.startsWith(u"Compose "))
        return std::nullopt;
    if (prompt.startsWith(u"Compose the user's daily briefing"))
        return briefing(prompt);
    const auto text = reminder(prompt);
    return text ? text : checkin(prompt);
}

} // namespace pobblewig
