#pragma once

#include "AppCoordinator.h"
#include "activity/ScriptedFrontmostApp.h"
#include "memory/MemorySnapshot.h"
#include "support/Awaited.h"
#include "support/FakeKeychain.h"
#include "support/RequestParts.h"
#include "support/ScratchDirectory.h"
#include "support/ScriptedCalendar.h"
#include "support/ScriptedHTTPClient.h"
#include "support/ScriptedModels.h"
#include "support/ScriptedProvider.h"

#include <QDirIterator>
#include <QSignalSpy>
#include <QTest>

namespace pobblewig {

struct ScriptedOccupation : OccupationProviding {
    Occupation now = Occupation::none;

    Task<Occupation> occupation() override { co_return Occupation(now); }
};

/// The program without its windows, in a directory of its own, on a clock that goes on whenever it
/// is looked at.
class World {
public:
    static constexpr TimePoint morning { std::chrono::seconds(1772352900) };

    World()
    {
        for (auto* replying : { &model, &librarian })
            replying->onReply = [this] { time += std::chrono::seconds(2); };
        restart();
    }

    /// The program is started anew over the same directory.
    void restart()
    {
        m_program.reset();
        auto models = std::make_unique<ScriptedModels>();
        models->main = &model;
        models->librarian = &librarian;
        m_program = std::make_unique<AppCoordinator>(AppCoordinator::Parts {
            .directory = DataDirectory(scratch),
            .http = std::make_unique<ScriptedHTTPClient>(),
            .keychain = std::make_unique<FakeKeychain>(),
            .environment = [] { return Environment(); },
            .wording = PlatformWording::linuxDesktop,
            .moment = { [this] { return time += step; }, [] { return Calendar(); } },
            .models = std::move(models),
            .calendarProvider = std::make_unique<ScriptedCalendar>(),
            .observation = { .frontmostProvider = &desktop },
            .occupation = &occupation,
            .pollInterval = pollInterval,
        });
        m_program->start();
        QTRY_VERIFY(state<MemorySnapshot>().activeDailySession);
    }

    AppCoordinator* operator->() const { return m_program.get(); }
    AppCoordinator& operator*() const { return *m_program; }

    template <typename Record>
    const Record& state() const
    {
        return m_program->state().of<Record>();
    }

    void poll() const { awaited(m_program->pollOnce()); }

    /// A whole turn.
    void ask(const QString& text, const QString& reply = QStringLiteral("a reply"))
    {
        model.enqueue(reply);
        m_program->chat().submit(text);
        QTRY_VERIFY(!m_program->chat().isInTurn());
    }

    /// What the latest request told the model besides the conversation.
    QString prompt() const { return prompts(model.requests().back().messages); }

    /// The names of the files that hold a text, sorted.
    QStringList filesThatHold(const QString& text) const
    {
        QStringList found;
        QDirIterator files(scratch.path().path(), QDir::Files | QDir::Hidden | QDir::System,
            QDirIterator::Subdirectories);
        while (files.hasNext()) {
            QFile file(files.next());
            if (file.open(QIODevice::ReadOnly) && file.readAll().contains(text.toUtf8()))
                found.append(files.fileName());
        }
        found.sort();
        return found;
    }

    ScratchDirectory scratch;
    TimePoint time = morning;
    std::chrono::milliseconds step { 1 };
    std::chrono::milliseconds pollInterval = std::chrono::hours(1);
    ScriptedFrontmostApp desktop;
    ScriptedOccupation occupation;
    ScriptedProvider model;
    ScriptedProvider librarian;

private:
    std::unique_ptr<AppCoordinator> m_program;
};

} // namespace pobblewig
