#pragma once

#include "memory/MemoryStore.h"
#include "memory/recall/MemoryRetrievalService.h"
#include "tools/MemoryToolCall.h"
#include "tools/ToolArguments.h"

#include <functional>
#include <variant>

namespace pobblewig {

/// Why a tool has no answer.
using MemoryToolFailure = std::variant<ArgError, MemoryRetrievalError>;

QString description(const MemoryToolFailure& failure);

/// The tools by which a model reads from memory and adds to it, each found by its name.
///
/// Lives on the main thread, as long as the process.
class MemoryTools {
public:
    using Outcome = tl::expected<QString, MemoryToolFailure>;
    using TextProvider = std::function<Task<QString>()>;

    /// All of them outlive the tools.
    struct Dependencies {
        MemoryRetrievalService& retrieval;
        ObservationStore& observations;
        MemoryStore& memory;
        Clock clock = systemNow;
    };

    /// What others know. A tool whose provider is missing answers that it is unavailable.
    struct Providers {
        TextProvider rulesProvider = nullptr;
        TextProvider interventionsProvider = nullptr;
        /// Told of each observation that a model records.
        std::function<Task<>(DatedObservation observation)> observationHook = nullptr;
    };

    /// The user's folders.
    struct AppDataProviders {
        TextProvider listSources = nullptr;
        std::function<Task<QString>(QString source, std::optional<QString> subpath)> listFiles =
            nullptr;
        std::function<Task<QString>(QString source, QString path, std::optional<int> tailLines)>
            readFile = nullptr;
    };

    MemoryTools(Dependencies dependencies, Providers providers);

    Task<Outcome> run(MemoryToolCall call);

    /// What it replaces outlives the calls under way.
    void swapRetrieval(MemoryRetrievalService& retrieval) { m_retrieval = &retrieval; }
    void setProviders(Providers providers) { m_providers = std::move(providers); }
    void setAppDataProviders(AppDataProviders providers) { m_appData = std::move(providers); }

private:
    using Handler = Task<Outcome> (MemoryTools::*)(ToolArguments);

    /// Null for an unknown name.
    static Handler handler(const QString& name);

    Task<Outcome> getTableOfContents(ToolArguments arguments);
    Task<Outcome> readSection(ToolArguments arguments);
    Task<Outcome> searchReference(ToolArguments arguments);
    Task<Outcome> searchObservations(ToolArguments arguments);
    Task<Outcome> listPeriodSummaries(ToolArguments arguments);
    Task<Outcome> expandPeriod(ToolArguments arguments);
    Task<Outcome> getDailySession(ToolArguments arguments);
    Task<Outcome> getActiveContext(ToolArguments arguments);
    Task<Outcome> listActiveGoals(ToolArguments arguments);
    Task<Outcome> findNotes(ToolArguments arguments);
    Task<Outcome> addObservation(ToolArguments arguments);
    Task<Outcome> proposePattern(ToolArguments arguments);
    Task<Outcome> listRules(ToolArguments arguments);
    Task<Outcome> recentInterventions(ToolArguments arguments);
    Task<Outcome> listAppSources(ToolArguments arguments);
    Task<Outcome> listAppFiles(ToolArguments arguments);
    Task<Outcome> readAppFile(ToolArguments arguments);

    MemoryRetrievalService* m_retrieval;
    ObservationStore& m_observations;
    MemoryStore& m_memory;
    Clock m_clock;
    Providers m_providers;
    AppDataProviders m_appData;
};

} // namespace pobblewig
