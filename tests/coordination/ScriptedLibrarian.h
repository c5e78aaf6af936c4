#pragma once

#include "memory/librarian/ReadingAlong.h"
#include "support/BorrowedProvider.h"
#include "support/FakeKeychain.h"
#include "support/ScriptedProvider.h"

namespace pobblewig {

/// A memory, and a librarian whose model says what the test gives it to say.
struct ScriptedLibrarian {
    static constexpr TimePoint morning { std::chrono::seconds(1772352900) };

    explicit ScriptedLibrarian(const std::optional<DataDirectory>& directory = std::nullopt)
        : memory(directory, [] { return Calendar(); })
        , history(directory)
    {
    }
    Q_DISABLE_COPY_MOVE(ScriptedLibrarian)
    ~ScriptedLibrarian() = default;

    void setMemoryEnabled(bool isEnabled)
    {
        settings.update([&](AppSettings& changed) { changed.memoryEnabled = isEnabled; });
    }

    ReadingAlong::Dependencies dependencies()
    {
        return { .settings = settings,
            .history = history,
            .memory = memory,
            .librarian = librarian,
            .situation = []() -> Task<QString> { co_return QString(); } };
    }

    /// The program ends and is there again.
    void relaunch()
    {
        std::destroy_at(&readingAlong);
        std::construct_at(&readingAlong, dependencies());
    }

    /// Nothing to remember and nothing to tell, but only after `model.release()`.
    void enqueueHeld(std::optional<LLMFailure> failure = std::nullopt)
    {
        model.enqueue({ { LLMToken { QStringLiteral("{}") } }, std::move(failure), true });
    }

    TimePoint time = morning;
    ScriptedProvider model;
    FakeKeychain keychain;
    SettingsStore settings { std::nullopt, keychain };
    MemoryTiers memory;
    ChatHistoryStore history;
    UsageCounter usage { std::nullopt };
    LibrarianService librarian { memory, usage,
        { .providerProvider = [this] { return BorrowedProvider::lent(&model); },
            .configProvider = []() -> Task<LibrarianModelConfig> {
                co_return LibrarianModelConfig();
            },
            .clock = [this] { return time; } } };
    ReadingAlong readingAlong { dependencies() };
};

} // namespace pobblewig
