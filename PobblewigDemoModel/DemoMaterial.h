#pragma once

#include <QDateTime>
#include <QString>

#include <vector>

/// Reads the material in prompts for maintaining memory.
namespace pobblewig::DemoMaterial {

/// The text after the first `heading` and before `end`, or all the rest if `end` is missing. Empty
/// without that heading.
QString after(const QString& prompt, QStringView heading, QStringView end);

/// The same for the last part, which ends before the description of the answer.
QString lastAfter(const QString& prompt, QStringView heading);

struct Line {
    QDateTime time;
    QString text;
};

/// The lines that begin with a time: "[2026-03-01T08:15:00Z] …". Times are in the given zone.
std::vector<Line> stampedLines(const QString& text, const QTimeZone& zone);

/// What the user states in a conversation and does not later ask to forget.
std::vector<Line> userStatements(const QString& conversation, const QTimeZone& zone);

} // namespace pobblewig::DemoMaterial
