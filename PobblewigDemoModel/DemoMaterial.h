#pragma once

#include <QDateTime>
#include <QString>

#include <vector>

/// What the app lays before a model that is to keep its memory in order.
namespace pobblewig::DemoMaterial {

/// What stands after the first `heading` and before the end, or all the rest if there is no such
/// end. Empty without that heading.
QString after(const QString& prompt, QStringView heading, QStringView end);

/// The same for what comes last, before the form of the answer.
QString lastAfter(const QString& prompt, QStringView heading);

struct Line {
    QDateTime time;
    QString text;
};

/// Those that begin with a time: "[2026-03-01T08:15:00Z] …". In the given zone.
std::vector<Line> stampedLines(const QString& text, const QTimeZone& zone);

/// What the user states in a conversation, and did not take back by asking to forget it.
std::vector<Line> userStatements(const QString& conversation, const QTimeZone& zone);

} // namespace pobblewig::DemoMaterial
