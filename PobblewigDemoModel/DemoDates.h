#pragma once

#include <QDateTime>
#include <QString>

#include <optional>
#include <utility>

/// Reads times as people write them.
namespace pobblewig::DemoDates {

struct SpokenTime {
    /// Not set if no time was mentioned. In the time zone of `now`.
    std::optional<QDateTime> time;
    /// The text without the expression of time.
    QString rest;
};

/// Reads "tomorrow at 9", "on Friday at 3pm", "in 20 minutes" and similar. A day without an hour
/// means nine in the morning, an hour without a day the next such hour, and a plain hour from 1 to
/// 6 the afternoon.
SpokenTime readTime(const QString& text, const QDateTime& now);

/// The first and last second of past days: "yesterday", "last week".
std::optional<std::pair<QDateTime, QDateTime>> readPast(const QString& text, const QDateTime& now);

/// The length of "for half an hour" or "for 2 hours".
std::optional<int> readMinutes(const QString& text);
QString withoutMinutes(QString text);

/// ISO 8601 with the offset from UTC at that time.
QString format(const QDateTime& time);

/// For the user: "Friday, 27 November, at 15:00".
QString spoken(const QDateTime& time);

} // namespace pobblewig::DemoDates
