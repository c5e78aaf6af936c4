#include "conversation/TurnDisplay.h"

#include <utility>

namespace pobblewig {

TurnDisplay::TurnDisplay(const Moment& moment)
    : m_watch(moment)
{
}

ChatTurn::Progress TurnDisplay::progress()
{
    return {
        .replyBegins = [this] { beginReply(); },
        .replyGrows = [this](const QString& token) { growPreview(token); },
        .modelThinks = [this](const QString& thought) { noteThought(thought); },
        .replyWasThought = [this](const QString& thought) { takeForThought(thought); },
        .toolsBegin = [this] { m_watch.wait(Waiting::Cause::tools); },
        .toolsRan = [this](const auto& results) { noteTools(results); },
        .modelLoads = [this] { noteLoading(); },
        .oldestLeftOut = [this](size_t) { noteLeftOut(); },
    };
}

void TurnDisplay::begin()
{
    setNotice(std::nullopt);
    m_watch.forgetThoughts();
    emptyPreview();
    m_lastToolCalls.clear();
}

void TurnDisplay::emptyPreview()
{
    const auto wasEmpty = preview().isEmpty();
    m_preview = {};
    if (!wasEmpty)
        Q_EMIT previewChanged();
}

void TurnDisplay::endWaiting()
{
    endLoading();
    m_watch.end();
}

void TurnDisplay::setNotice(std::optional<QString> notice)
{
    m_notice = std::move(notice);
    Q_EMIT noticeChanged();
}

void TurnDisplay::setCaptureIndicator(std::optional<QString> indicator)
{
    m_captureIndicator = std::move(indicator);
    Q_EMIT captureIndicatorChanged();
}

void TurnDisplay::beginReply()
{
    emptyPreview();
    m_watch.wait(Waiting::Cause::reply);
}

void TurnDisplay::growPreview(const QString& token)
{
    endWaiting();
    m_preview.append(token);
    Q_EMIT previewChanged();
}

void TurnDisplay::takeForThought(const QString& text)
{
    emptyPreview();
    m_watch.takeForThought(text);
}

void TurnDisplay::noteThought(const QString& thought)
{
    endLoading();
    m_watch.think(thought);
}

void TurnDisplay::noteTools(const std::vector<MemoryToolResult>& results)
{
    m_lastToolCalls = ChatTurnLogic::outcomeNames(results);
    m_totalToolCalls += int(results.size());
}

void TurnDisplay::noteLoading()
{
    m_isModelLoading = true;
    m_watch.wait(Waiting::Cause::loading);
    setNotice(tr("The model is still loading. Your message waits for it."));
}

void TurnDisplay::noteLeftOut()
{
    setNotice(tr("The conversation is too long for the model: it no longer sees the oldest "
                 "messages."));
}

void TurnDisplay::endLoading()
{
    if (std::exchange(m_isModelLoading, false))
        setNotice(std::nullopt);
}

} // namespace pobblewig
