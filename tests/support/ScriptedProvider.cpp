#include "support/ScriptedProvider.h"

#include <utility>

namespace pobblewig {

namespace {

void end(const LLMStream::Sink& sink, std::optional<LLMFailure> failure)
{
    if (!failure)
        sink.push(LLMFinished {});
    sink.finish(std::move(failure));
}

} // namespace

ScriptedProvider::ScriptedProvider(LLMConfiguration configuration)
    : m_configuration(std::move(configuration))
{
}

void ScriptedProvider::release()
{
    for (auto& held : std::exchange(m_held, {}))
        end(held.sink, std::move(held.failure));
}

LLMStream ScriptedProvider::streamChat(LLMRequest request)
{
    m_requests.push_back(std::move(request));
    LLMStream stream;
    const auto sink = stream.sink();
    if (m_replies.empty()) {
        end(sink, LLMError::invalidResponse(QStringLiteral("no reply was scripted")));
        return stream;
    }
    auto reply = std::move(m_replies.front());
    m_replies.pop_front();
    for (auto& event : reply.events)
        sink.push(std::move(event));
    sink.setOnDrop([dropped = m_droppedStreams] { ++*dropped; });
    if (reply.isHeld)
        m_held.push_back({ sink, std::move(reply.failure) });
    else
        end(sink, std::move(reply.failure));
    return stream;
}

} // namespace pobblewig
