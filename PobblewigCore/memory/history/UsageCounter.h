#pragma once

#include "foundation/JSONFileStore.h"

#include <optional>

namespace pobblewig {

/// All-time totals of tokens and model calls, kept in "usage.json".
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

    explicit UsageCounter(const std::optional<DataDirectory>& directory);

    const Snapshot& snapshot() const { return m_snapshot; }

    void addMainUsage(int prompt, int completion);
    void addLibrarianUsage(int prompt, int completion);
    void addVisionUsage(int prompt, int completion);
    void addIntervention();

    /// Tries again to read a file that could not be read at the start.
    void readAgain();

private:
    void save() const;

    std::optional<JSONFileStore> m_file;
    Snapshot m_snapshot;
};

} // namespace pobblewig
