#pragma once

#include "conversation/ActionJudge.h"
#include "conversation/ChatService.h"
#include "support/GrantedPermissions.h"
#include "support/Joined.h"
#include "support/ScriptedCalendar.h"
#include "support/ScriptedCapturer.h"
#include "support/ScriptedModels.h"
#include "support/ScriptedProvider.h"
#include "support/TableRow.h"
#include "support/ToolWorld.h"

#include <QSignalSpy>
#include <QTest>

namespace pobblewig {

/// A chat with scripted models, a scripted screen and a memory.
struct ChatFixture : ToolWorld {
    using CaptureAnswer = CaptureConsent::Answer;

    std::chrono::milliseconds patience;
    /// The user's answer when the model asks for a picture, at once; without one, the user is slow.
    std::optional<CaptureAnswer> captureAnswer = CaptureAnswer::lookNow;
    int captureQuestions = 0;
    ScriptedProvider model;
    ScriptedProvider visionModel;
    ScriptedModels models;
    ScriptedCapturer screen;
    GrantedPermissions permissions;
    MemoryToolExecutor executor { everyTool() };
    ScriptedCalendar calendar;
    ActionJudge judge { all, moment, calendar };
    ChatService chat { all, moment,
        { .models = models,
            .situation = situation,
            .toolExecutor = &executor,
            .screen = { &screen, &permissions },
            .patience = patience,
            .wording = PlatformWording::linuxDesktop,
            .loadingPause = std::chrono::milliseconds(0) } };
    QSignalSpy activity { &chat, &ChatService::activityChanged };

    explicit ChatFixture(std::chrono::milliseconds time = CaptureConsent::usualPatience)
        : patience(time)
    {
        auto& consent = chat.captureConsent();
        QObject::connect(&consent, &CaptureConsent::isAskingChanged, &consent, [&] {
            captureQuestions += consent.isAsking() ? 1 : 0;
            if (consent.isAsking() && captureAnswer)
                consent.answer(*captureAnswer);
        });
        models.main = &model;
        chat.setTools(everyTool());
        chat.judge = [this](const auto& action, const auto& requested) {
            return judge.verdict(action, requested);
        };
        settings.update([](auto& changed) { changed.excludedBundleIDs = { u"org.vault"_s }; });
    }

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

    void setConfirmations(std::map<QString, bool> confirmations)
    {
        settings.update([&](auto& changed) { changed.actionConfirmations = confirmations; });
    }

    static SituationSnapshot situation()
    {
        return { .mode = CoachMode::studying, .summary = u"All is quiet."_s };
    }

    static Task<> done() { co_return; }

    bool succeeded() const { return activity.last().at(1).toBool(); }
    QString error() const { return chat.lastError().value_or(QString()); }

    QString texts() const { return joined(chat.messages(), &ChatMessage::text); }
};

} // namespace pobblewig
