#pragma once

#include <QDateTime>
#include <QString>

#include <optional>
#include <utility>

/// Times as people say them.
namespace pobblewig::DemoDates {

struct SpokenTime {
    /// Nothing if none was named. In the time zone of `now`.
    std::optional<QDateTime> time;
    /// The text without the words for it.
    QString rest;
};

/// Reads "tomorrow at 9", "on Friday at 3pm", "in 20 minutes" and the like. A day without an hour
/// means nine in the morning, an hour without a day the next such hour, and an hour from 1 to 6
/// without more the afternoon.
SpokenTime readTime(const QString& text, const QDateTime& now);

/// The first and the last second of the days that lie behind: "yesterday", "last week".
std::optional<std::pair<QDateTime, QDateTime>> readPast(const QString& text, const QDateTime& now);

/// How long "for half an hour" or "for 2 hours" is.
std::optional<int> readMinutes(const QString& text);
QString withoutMinutes(QString text);

/// ISO 8601 with the offset from UTC that holds then.
QString format(const QDateTime& time);

/// For people: "Friday, 27 November, at 15:00".
QString spoken(const QDateTime& time);

} // namespace pobblewig::DemoDates
