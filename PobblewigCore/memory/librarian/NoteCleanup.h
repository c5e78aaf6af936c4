#pragma once

#include "foundation/Moment.h"
#include "memory/MemoryStore.h"
#include "memory/librarian/LibrarianAnswers.h"
#include "memory/librarian/LibrarianModel.h"
#include "settings/SettingsStore.h"

namespace pobblewig {

/// Has a model rewrite the notes when they have grown too large, portion by portion. A portion
/// stays as it is unless the answer makes it smaller and keeps most of it.
///
/// Lives on the main thread, as long as the process.
class NoteCleanup {
public:
    /// All of it must outlive this object.
    struct Dependencies {
        const SettingsStore& settings;
        MemoryStore& notes;
        const Moment& moment;
        LibrarianModel& model;
    };

    explicit NoteCleanup(Dependencies dependencies);

    std::optional<TimePoint> lastRunAt() const { return m_lastRunAt; }

    /// Does nothing unless a clean-up is due, or if the model has been asked about the same notes
    /// within a day. Changes nothing of a portion of which the user has changed anything meanwhile.
    /// Gives up when the model cannot be reached, or fails twice in a row.
    Task<> runIfDue(std::stop_token stop);

private:
    enum class Outcome { fine, refused, over };

    Task<> run(std::stop_token stop);
    Task<Outcome> clean(CleanupSnapshot portion, TimePoint begun, std::stop_token stop);
    bool isOvertaken(const CleanupSnapshot& portion) const;
    /// Empty if the portion stays as it is.
    LibrarianAnswers::Parsed<CleanupSnapshot> read(
        const QString& answer, const CleanupSnapshot& portion) const;
    bool mayRemember() const { return m.settings.settings().memoryEnabled; }

    Dependencies m;
    bool m_isUnderWay = false;
    std::optional<TimePoint> m_lastRunAt;
};

} // namespace pobblewig
