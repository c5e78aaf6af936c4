#pragma once

#include "foundation/JSONFileStore.h"

#include <QDate>

#include <functional>
#include <optional>
#include <vector>

namespace pobblewig {

/// Tokens and model calls: all-time totals, kept in "usage.json", and the latest days, kept in
/// "usage_days.json".
class UsageCounter {
public:
    struct Snapshot {
        qint64 mainPromptTokens = 0;
        qint64 mainCompletionTokens = 0;
        qint64 librarianPromptTokens = 0;
        qint64 librarianCompletionTokens = 0;
        qint64 visionPromptTokens = 0;
        qint64 visionCompletionTokens = 0;
        qint64 chatCalls = 0;
        qint64 librarianCalls = 0;
        qint64 visionCalls = 0;
        qint64 interventions = 0;

        bool operator==(const Snapshot&) const = default;

        static constexpr auto jsonFields()
        {
            using namespace json;
            return std::tuple { defaulted("mainPromptTokens", &Snapshot::mainPromptTokens),
                defaulted("mainCompletionTokens", &Snapshot::mainCompletionTokens),
                defaulted("librarianPromptTokens", &Snapshot::librarianPromptTokens),
                defaulted("librarianCompletionTokens", &Snapshot::librarianCompletionTokens),
                defaulted("visionPromptTokens", &Snapshot::visionPromptTokens),
                defaulted("visionCompletionTokens", &Snapshot::visionCompletionTokens),
                defaulted("chatCalls", &Snapshot::chatCalls),
                defaulted("librarianCalls", &Snapshot::librarianCalls),
                defaulted("visionCalls", &Snapshot::visionCalls),
                defaulted("interventions", &Snapshot::interventions) };
        }
    };

    /// What was used on one day.
    struct Day {
        /// Such as "2026-03-01".
        QString day;
        Snapshot usage;

        bool operator==(const Day&) const = default;

        static constexpr auto jsonFields()
        {
            using namespace json;
            return std::tuple { required("day", &Day::day), required("usage", &Day::usage) };
        }
    };

    static constexpr size_t mostDays = 400;

    /// `today` gives the user's day. Without it no days are recorded.
    explicit UsageCounter(
        const std::optional<DataDirectory>& directory, std::function<QDate()> today = {});

    const Snapshot& snapshot() const { return m_snapshot; }

    /// The latest days with any use, oldest first.
    const std::vector<Day>& days() const { return m_days; }

    void addMainUsage(int prompt, int completion);
    void addLibrarianUsage(int prompt, int completion);
    void addVisionUsage(int prompt, int completion);
    void addIntervention();

    /// Tries again to read a file that could not be read at the start.
    void readAgain();

private:
    void add(const std::function<void(Snapshot&)>& use);
    Day& thisDay();
    void save() const;

    std::function<QDate()> m_today;
    std::optional<JSONFileStore> m_file;
    std::optional<JSONFileStore> m_daysFile;
    Snapshot m_snapshot;
    std::vector<Day> m_days;
};

} // namespace pobblewig
