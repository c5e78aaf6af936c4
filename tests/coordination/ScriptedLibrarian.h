#pragma once

#include "memory/librarian/ReadingAlong.h"
#include "support/ScriptedModels.h"
#include "support/ScriptedProvider.h"
#include "support/ScriptedStores.h"

namespace pobblewig {

/// A memory, and a librarian whose model says what the test gives it to say.
struct ScriptedLibrarian : ScriptedStores {
    explicit ScriptedLibrarian(const std::optional<DataDirectory>& directory = std::nullopt)
        : ScriptedStores(directory)
    {
        models.librarian = &model;
        model.onReply = [this] { time += std::chrono::seconds(2); };
        memory.sessions.ensureActiveSession(time, Calendar());
    }

    static QString noSituation() { return {}; }

    /// The program ends and is there again.
    void relaunch()
    {
        std::destroy_at(&readingAlong);
        std::construct_at(&readingAlong, all, librarian, noSituation);
    }

    /// Nothing to remember and nothing to tell, but only after `model.release()`.
    void enqueueHeld(std::optional<LLMFailure> failure = std::nullopt)
    {
        model.enqueue({ { LLMToken { QStringLiteral("{}") } }, std::move(failure), true });
    }

    ScriptedProvider model;
    ScriptedModels models;
    LibrarianService librarian { all, moment, models };
    ReadingAlong readingAlong { all, librarian, noSituation };
};

} // namespace pobblewig
