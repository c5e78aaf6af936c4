#pragma once

#include "conversation/ChatService.h"
#include "support/BorrowedProvider.h"
#include "support/ScriptedCapturer.h"
#include "support/ScriptedProvider.h"
#include "support/ToolWorld.h"

#include <QSignalSpy>
#include <QTest>

namespace pobblewig {

inline ChatService::Dependencies dependencies(LLMProvider*& main, LLMProvider*& vision)
{
    return {
        .mainProvider = [&main] { return BorrowedProvider::lent(main); },
        .visionProvider = [&vision] { return BorrowedProvider::lent(vision); },
        .mainConfig = []() -> Task<MainModelConfig> { co_return MainModelConfig(); },
        .situationProvider = []() -> Task<SituationSnapshot> {
            co_return SituationSnapshot { .mode = CoachMode::studying,
                .summary = QStringLiteral("All is quiet.") };
        },
        .calendar = [] { return Calendar(); },
        .clock = [] { return TimePoint(std::chrono::seconds(1772352900)); },
    };
}

/// A chat with scripted models, a scripted screen and a memory.
struct ChatFixture : ToolWorld {
    ScriptedProvider model;
    ScriptedProvider visionModel;
    LLMProvider* main = &model;
    LLMProvider* vision = nullptr;
    ChatHistoryStore history { std::nullopt };
    UsageCounter usage { std::nullopt };
    ScriptedCapturer screen;
    int permissionRequests = 0;
    MemoryToolExecutor executor { everyTool() };
    bool isMemoryEnabled = true;
    std::map<QString, bool> confirmations;
    std::optional<QUuid> session;
    ChatService chat { history, usage, withTools(dependencies(main, vision)) };
    QSignalSpy activity { &chat, &ChatService::activityChanged };

    void finishTurn() { QTRY_VERIFY(!chat.isStreaming() && !activity.last().at(0).toBool()); }

    /// The model answers with these, one for each request.
    template <typename... Replies>
    void ask(const QString& text, Replies... replies)
    {
        (model.enqueue(std::move(replies)), ...);
        chat.submit(text);
        finishTurn();
    }

    /// Without waiting for the end.
    bool look() { return chat.submit(QStringLiteral("look"), ChatService::Screenshot::with); }

    ChatService::Dependencies withTools(ChatService::Dependencies dependencies)
    {
        dependencies.memoryEnabledProvider = [this] { return isMemoryEnabled; };
        dependencies.sessionIDProvider = [this] { return session; };
        dependencies.toolExecutor = [this] { return &executor; };
        dependencies.actionConfirmations = [this] { return confirmations; };
        dependencies.screenshots = { &screen,
            []() -> Task<std::set<QString>> { co_return { QStringLiteral("org.vault") }; },
            [this] { return requestPermission(); } };
        return dependencies;
    }

    Task<> requestPermission()
    {
        ++permissionRequests;
        co_return;
    }

    bool succeeded() const { return activity.last().at(1).toBool(); }
    QString error() const { return chat.lastError().value_or(QString()); }

    QString texts() const
    {
        QStringList result;
        for (const auto& message : chat.messages())
            result.append(message.text);
        return result.join(u'|');
    }
};

} // namespace pobblewig
