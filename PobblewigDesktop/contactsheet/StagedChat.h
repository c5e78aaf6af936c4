#pragma once

#include "StoreRoom.h"
#include "conversation/ChatService.h"
#include "foundation/QtKeychainHelper.h"

namespace pobblewig {

/// Speaks when it is prompted.
class StagedModel : public LLMProvider {
public:
    using Prompter = std::optional<LLMStream::Sink>;

    /// The prompter can speak once the model is asked.
    explicit StagedModel(Prompter& prompter)
        : m_prompter(prompter)
    {
    }

    const LLMConfiguration& configuration() const override { return m_configuration; }
    Task<std::vector<QString>> models() override
    {
        co_return std::vector { QStringLiteral("owl-2"), QStringLiteral("emu") };
    }
    LLMStream streamChat(LLMRequest) override
    {
        LLMStream stream;
        m_prompter = stream.sink();
        return stream;
    }

private:
    LLMConfiguration m_configuration { .baseURL = QUrl(QStringLiteral("http://127.0.0.1:11434/v1")),
        .modelID = QStringLiteral("owl") };
    Prompter& m_prompter;
};

/// Lends a staged model for everything.
class StagedModels : public ModelProviding {
public:
    explicit StagedModels(StagedModel::Prompter& prompter)
        : m_prompter(prompter)
    {
    }

    Task<std::unique_ptr<LLMProvider>> makeProvider(ModelUse) override
    {
        co_return std::make_unique<StagedModel>(m_prompter);
    }
    Task<MainModelConfig> mainConfig() override { co_return MainModelConfig(); }
    Task<MainModelConfig> visionConfig() override { co_return MainModelConfig(); }
    Task<LibrarianModelConfig> librarianConfig() override { co_return LibrarianModelConfig(); }

private:
    StagedModel::Prompter& m_prompter;
};

/// A screen with a textbook on it.
class StagedScreen : public ScreenCapturing {
public:
    Task<tl::expected<CapturedScreenshot, ScreenCaptureError>> captureForCurrentContext(
        std::set<QString>) override
    {
        co_return CapturedScreenshot { "JPEG",
            QStringLiteral(
                "Captured \"Problem set 7, exercise 3 - Statistics.pdf\" of Document Viewer") };
    }
};

/// A conversation to be looked at: in memory only, at a fixed moment, with a staged model.
class StagedChat {
public:
    static constexpr TimePoint now { std::chrono::seconds(1772352900) };

    StagedChat();
    Q_DISABLE_COPY_MOVE(StagedChat)
    ~StagedChat();

    ChatService& chat() { return m_chat; }

    void add(const ChatMessage& message);

    /// A question and its answer.
    void exchange(const QString& question, const QString& answer, TimePoint time);

    /// Returns once the model is asked.
    void ask(
        const QString& text, ChatService::Screenshot screenshot = ChatService::Screenshot::without);

    void say(const QString& text) { m_prompter->push(LLMToken { text }); }
    void think(const QString& text) { m_prompter->push(LLMThought { text }); }

    /// Returns once the turn is over, even if it is tried again by itself.
    void fail(const LLMFailure& error);

private:
    static SituationSnapshot situation() { return {}; }

    StagedModel::Prompter m_prompter;
    StagedModels m_models { m_prompter };
    StagedScreen m_screen;
    Moment m_moment { [] { return now; } };
    QtKeychainHelper m_keychain;
    StoreRoom m_room;
    Stores m_stores { m_room.stores() };
    ChatService m_chat;
};

} // namespace pobblewig
