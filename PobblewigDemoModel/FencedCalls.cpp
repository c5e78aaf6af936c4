#include "PobblewigDemoModel/FencedCalls.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QRegularExpression>

namespace pobblewig {

namespace {

QJsonObject action(const DemoToolCall& call)
{
    auto object = JSONValue(call.arguments).toJson().toObject();
    object[QStringLiteral("type")] = call.name;
    return object;
}

QJsonObject request(const DemoToolCall& call)
{
    return { { QStringLiteral("name"), call.name },
        { QStringLiteral("args"), JSONValue(call.arguments).toJson() } };
}

} // namespace

QString FencedCalls::written(const std::vector<DemoToolCall>& calls, Kind kind)
{
    const auto areChanges = kind == Kind::changes;
    QJsonArray entries;
    for (const auto& call : calls)
        entries.append(areChanges ? action(call) : request(call));
    const QJsonObject body { { areChanges ? QStringLiteral("actions") : QStringLiteral("tools"),
        entries } };
    return QStringLiteral("```%1\n%2\n```")
        .arg(areChanges ? QStringLiteral("buddy-actions") : QStringLiteral("buddy-tools"),
            QString::fromUtf8(QJsonDocument(body).toJson(QJsonDocument::Compact)));
}

std::optional<std::vector<FencedCalls::Result>> FencedCalls::results(const QString& message)
{
    if (!message.startsWith(u"Tool results (local, deterministic):"))
        return std::nullopt;
    static const QRegularExpression heading(
        QStringLiteral("^### ([a-z_]+)$"), QRegularExpression::MultilineOption);
    const auto end = message.lastIndexOf(QStringLiteral("\n\nNow answer the user's question"));
    const auto body = message.left(end < 0 ? message.size() : end);
    std::vector<Result> found;
    qsizetype textStart = 0;
    const auto closeLast = [&](qsizetype textEnd) {
        if (!found.empty())
            found.back().text = body.sliced(textStart, textEnd - textStart).trimmed();
    };
    for (auto headings = heading.globalMatch(body); headings.hasNext();) {
        const auto match = headings.next();
        closeLast(match.capturedStart());
        found.push_back({ match.captured(1), {} });
        textStart = match.capturedEnd();
    }
    closeLast(body.size());
    return found;
}

} // namespace pobblewig
