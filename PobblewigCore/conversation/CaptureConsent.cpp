#include "conversation/CaptureConsent.h"

#include <utility>

namespace pobblewig {

CaptureConsent::CaptureConsent(
    const SettingsStore& settings, const Moment& moment, std::chrono::milliseconds patience)
    : m_settings(settings)
    , m_moment(moment)
{
    m_silence.setSingleShot(true);
    m_silence.setInterval(patience);
    connect(&m_silence, &QTimer::timeout, this, [this] { settle(std::nullopt); });
}

auto CaptureConsent::ask(std::stop_token stop) -> Task<Verdict>
{
    if (isPaused())
        co_return Verdict::paused;
    if (!m_isAllowed) {
        const auto answer = co_await nextAnswer(std::move(stop));
        if (!answer || *answer == Answer::notNow)
            co_return Verdict::denied;
    }
    // A pause may have begun while the question waited.
    co_return isPaused() ? Verdict::paused : Verdict::granted;
}

void CaptureConsent::answer(Answer answer)
{
    if (isAsking() && answer == Answer::allowUntilQuit)
        m_isAllowed = true;
    settle(answer);
}

auto CaptureConsent::nextAnswer(std::stop_token stop) -> Task<std::optional<Answer>>
{
    if (isAsking())
        co_return std::nullopt;
    const Answers answers;
    m_question = answers.sink();
    m_silence.start();
    Q_EMIT isAskingChanged();
    const std::stop_callback stopped(stop, [this] { settle(std::nullopt); });
    co_return co_await answers.next();
}

void CaptureConsent::settle(std::optional<Answer> answer)
{
    const auto question = std::exchange(m_question, std::nullopt);
    if (!question)
        return;
    m_silence.stop();
    if (answer)
        question->push(*answer);
    question->finish();
    Q_EMIT isAskingChanged();
}

} // namespace pobblewig
