#pragma once

#include "foundation/Moment.h"
#include "foundation/Stream.h"
#include "foundation/Task.h"
#include "settings/SettingsStore.h"

#include <QTimer>

#include <chrono>
#include <optional>
#include <stop_token>
#include <variant>

namespace pobblewig {

/// Asks the user before the model gets a picture of the screen that only the model asked for.
///
/// Lives on the main thread, as long as the process.
class CaptureConsent : public QObject {
    Q_OBJECT

public:
    enum class Answer { lookNow, notNow, allowUntilQuit };
    enum class Verdict { granted, denied, paused };

    /// How long a question waits. Silence is a refusal.
    static constexpr std::chrono::milliseconds usualPatience = std::chrono::minutes(2);

    /// Both references must outlive this object.
    CaptureConsent(const SettingsStore& settings, const Moment& moment,
        std::chrono::milliseconds patience = usualPatience);

    /// Whether a question waits for the user's answer.
    bool isAsking() const { return m_question.has_value(); }

    /// Waits for the answer, unless the user has allowed pictures until the program quits. Denied
    /// if `stop` is requested meanwhile, or if another question waits. Nothing is granted, and
    /// nobody is asked, while observation is paused.
    Task<Verdict> ask(std::stop_token stop);

    /// Has no effect without a question.
    void answer(Answer answer);

Q_SIGNALS:
    void isAskingChanged();

private:
    using Answers = Stream<Answer, std::monostate>;

    Task<std::optional<Answer>> nextAnswer(std::stop_token stop);
    void settle(std::optional<Answer> answer);
    bool isPaused() const { return m_settings.isPaused(m_moment.now()); }

    const SettingsStore& m_settings;
    const Moment& m_moment;
    QTimer m_silence;
    std::optional<Answers::Sink> m_question;
    bool m_isAllowed = false;
};

} // namespace pobblewig
