#include "PobblewigDemoModel/DemoCleanup.h"

#include "PobblewigDemoModel/DemoMaterial.h"
#include "foundation/ISO8601.h"

#include <QHash>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QRegularExpression>
#include <QSet>

namespace pobblewig {

namespace {

bool isTheUsers(const QJsonObject& note)
{
    return note[u"source"].toString() == u"explicitUser";
}

bool isOver(const QJsonObject& note, const QDateTime& now)
{
    const auto end = ISO8601::instant(note[u"expiresAt"].toString());
    return note[u"isTemporary"].toBool() && end
        && end->time_since_epoch() <= std::chrono::milliseconds(now.toMSecsSinceEpoch());
}

/// A text that near duplicates share.
QString gist(const QJsonObject& note)
{
    static const QRegularExpression separators(
        QStringLiteral(R"(\W+)"), QRegularExpression::UseUnicodePropertiesOption);
    return note[u"text"].toString().toCaseFolded().split(separators, Qt::SkipEmptyParts).join(u' ');
}

/// The members with these names, unchanged.
JSONValue picked(const QJsonObject& object, std::initializer_list<QStringView> names)
{
    JSONValue::Object members;
    for (const auto& name : names) {
        if (object.contains(name))
            members[name.toString()] = JSONValue::fromJson(object[name]);
    }
    return members;
}

/// Leaves out the expiry, which the app knows, so that it cannot change.
JSONValue echo(const QJsonObject& note)
{
    return picked(
        note, { u"text", u"category", u"kind", u"source", u"confidence", u"isTemporary" });
}

JSONValue::Array keptNotes(const QJsonArray& notes, const QDateTime& now)
{
    QSet<QString> said;
    for (const auto& value : notes) {
        if (const auto note = value.toObject(); isTheUsers(note))
            said.insert(gist(note));
    }
    JSONValue::Array kept;
    for (const auto& value : notes) {
        const auto note = value.toObject();
        if (!isTheUsers(note) && (isOver(note, now) || said.contains(gist(note))))
            continue;
        said.insert(gist(note));
        kept.push_back(echo(note));
    }
    return kept;
}

} // namespace

JSONValue DemoCleanup::rewritten(const QString& prompt, const QDateTime& now)
{
    const auto json = DemoMaterial::lastAfter(prompt, u"Current memory store JSON:\n");
    const auto memory = QJsonDocument::fromJson(json.toUtf8()).object();
    if (!memory[u"notes"].isArray())
        return JSONValue::Object();
    JSONValue::Array patterns;
    for (const auto& pattern : memory[u"patterns"].toArray())
        patterns.push_back(picked(pattern.toObject(), { u"text", u"confidence" }));
    return JSONValue::Object {
        { QStringLiteral("notes"), keptNotes(memory[u"notes"].toArray(), now) },
        { QStringLiteral("patterns"), patterns },
    };
}

} // namespace pobblewig
