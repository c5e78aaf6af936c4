#include "wire/OpenAICompatibleProvider.h"

#include "foundation/Text.h"
#include "foundation/TransportErrorLogic.h"
#include "wire/ChatCompletionsLogic.h"
#include "wire/ServerMessage.h"
#include "wire/ThoughtSplitter.h"
#include "wire/ToolCallAccumulator.h"

#include <QJsonDocument>
#include <QTimer>

#include <memory>

namespace pobblewig {

namespace {

constexpr int enoughOfAnErrorBody = 2001;
constexpr qsizetype mostOfAnErrorLine = 64 * 1024;
constexpr int linesAtOnce = 128;
/// Room for a reply of 200,000 characters in one chunk, all of them escaped.
constexpr qsizetype longestChunk = 2 * 1024 * 1024;

LLMError answerTooLong()
{
    return LLMError::invalidResponse(QStringLiteral("the answer is too long."));
}

/// What a good status brought in place of a reply.
LLMError notAStream(const QByteArray& body)
{
    const auto text = QString::fromUtf8(body);
    if (ServerMessage::isPage(text))
        return LLMError::page(200);
    if (QJsonDocument::fromJson(body).object().contains(QStringLiteral("error")))
        return LLMError::http(0, text);
    return LLMError::invalidResponse(QStringLiteral("it is no chat completion."));
}

/// Where the events of a reply go.
class ReplyEvents {
public:
    ReplyEvents(LLMStream::Sink sink, RequestWatch watch)
        : m_sink(std::move(sink))
        , m_watch(std::move(watch))
    {
    }

    void push(LLMStreamEvent event) const
    {
        m_watch.note(event);
        m_sink.push(std::move(event));
    }

    void finish(const std::optional<LLMFailure>& failure = std::nullopt) const
    {
        m_watch.finish(failure);
        m_sink.finish(failure);
    }

    auto wanted() const { return m_sink.wanted(); }

private:
    LLMStream::Sink m_sink;
    RequestWatch m_watch;
};

/// Turns the lines of a reply's body into events as they arrive.
class ReplyReader {
public:
    ReplyReader(ReplyEvents events, bool wantsThoughts)
        : m_events(std::move(events))
        , m_wantsThoughts(wantsThoughts)
    {
    }

    /// Returns false at the end mark, or at an error in its place.
    bool read(QByteArrayView line);
    void finish();

    /// Whether a part of the reply has arrived, if only that it begins.
    bool hasBegun() const { return m_hasBegun; }

private:
    void read(const StreamChunk& chunk);
    void read(const StreamChunk::Delta& delta);
    void push(const ThoughtSplitter::Parts& parts);
    void noteStray(QByteArrayView line);

    ReplyEvents m_events;
    bool m_wantsThoughts;
    ThoughtSplitter m_thoughts;
    /// The begin of what is no stream of events. Only the first kind of line counts.
    QByteArray m_stray;
    bool m_isStream = false;
    ToolCallAccumulator m_toolCalls;
    LLMFinished m_end;
    std::optional<LLMError> m_error;
    bool m_hasBegun = false;
};

bool ReplyReader::read(QByteArrayView line)
{
    constexpr QByteArrayView prefix = "data:";
    if (!line.startsWith(prefix)) {
        noteStray(line);
        return true;
    }
    m_isStream = true;
    const auto payload = line.sliced(prefix.size()).trimmed();
    if (payload == "[DONE]")
        return false;
    if (payload.size() > longestChunk)
        m_error = answerTooLong();
    else if (const auto chunk = StreamChunk::decode(payload))
        read(*chunk);
    return !m_error;
}

void ReplyReader::read(const StreamChunk& chunk)
{
    const auto& usage = chunk.usage;
    if (usage && (usage->promptTokens || usage->completionTokens)) {
        m_events.push(
            LLMUsage { usage->promptTokens.value_or(0), usage->completionTokens.value_or(0) });
    }
    m_hasBegun |= chunk.choices && !chunk.choices->empty();
    for (const auto& choice : chunk.choices.value_or(std::vector<StreamChunk::Choice>())) {
        if (choice.delta)
            read(*choice.delta);
        m_end.isCutOff |= choice.isCutOff;
    }
    if (chunk.error)
        m_error = LLMError::http(chunk.error->status.value_or(0), chunk.error->message);
}

void ReplyReader::read(const StreamChunk::Delta& delta)
{
    push({ .thought = delta.thought });
    if (delta.content)
        push(m_thoughts.add(*delta.content));
    if (!delta.toolCalls)
        return;
    for (int position = 0; const auto& call : *delta.toolCalls)
        m_toolCalls.add(call, position++);
    if (m_toolCalls.isTooMuch())
        m_error = answerTooLong();
}

void ReplyReader::push(const ThoughtSplitter::Parts& parts)
{
    m_end.hasThought |= parts.wasThought || !parts.thought.isEmpty();
    if (parts.wasThought)
        m_events.push(LLMWasThought());
    if (m_wantsThoughts && !parts.thought.isEmpty())
        m_events.push(LLMThought { parts.thought });
    if (!parts.reply.isEmpty())
        m_events.push(LLMToken { parts.reply });
}

void ReplyReader::noteStray(QByteArrayView line)
{
    const auto isField = line.startsWith("event:") || line.startsWith("id:")
        || line.startsWith("retry:") || line.trimmed() == "[DONE]";
    if (!isField && m_stray.size() < enoughOfAnErrorBody)
        m_stray += line.first(std::min<qsizetype>(line.size(), enoughOfAnErrorBody));
}

void ReplyReader::finish()
{
    push(m_thoughts.finish());
    if (!m_isStream && !m_stray.isEmpty())
        m_error = notAStream(m_stray);
    if (m_error) {
        m_events.finish(*m_error);
        return;
    }
    if (auto calls = m_toolCalls.complete(); !calls.empty())
        m_events.push(LLMToolCalls { std::move(calls) });
    m_events.push(m_end);
    m_events.finish();
}

LLMFailure failure(const TransportError& error)
{
    if (error.kind == TransportError::Kind::notHTTP)
        return LLMError::invalidResponse(QStringLiteral("not an HTTP response"));
    return error;
}

std::optional<LLMError> missingSetting(const LLMConfiguration& configuration)
{
    if (configuration.modelID.isEmpty())
        return LLMError::notConfigured(
            QStringLiteral("no model is chosen (MAIN_MODEL_ID is empty)."));
    if (configuration.apiKey.isEmpty())
        return LLMError::notConfigured(
            QStringLiteral("there is no API key (MAIN_MODEL_API_KEY is empty)."));
    return std::nullopt;
}

Task<QString> errorBody(std::shared_ptr<HTTPStream> lines)
{
    QString body;
    qsizetype characters = 0;
    while (characters < enoughOfAnErrorBody) {
        const auto line = co_await lines->next();
        if (!line)
            break;
        const auto text = QString::fromUtf8(std::get<HTTPLine>(*line).left(mostOfAnErrorLine));
        characters += Text::characterCount(text);
        body += text;
    }
    lines->close();
    co_return body;
}

// After the end mark only the end of the body follows. Reading it lets the next call reuse the
// connection.
Task<> readToTheEnd(std::shared_ptr<HTTPStream> lines)
{
    for (int count = 0; count < 4; ++count) {
        const auto line = co_await lines->next();
        if (!line)
            break;
    }
    lines->close();
}

/// Ends a reply that does not begin in time, however busy its connection is.
std::shared_ptr<QTimer> startPatience(const std::shared_ptr<HTTPStream>& lines, ReplyEvents events,
    TransportError tooLate, std::chrono::milliseconds limit)
{
    auto patience = std::make_shared<QTimer>();
    patience->setSingleShot(true);
    QObject::connect(patience.get(), &QTimer::timeout, patience.get(),
        [lines, events = std::move(events), tooLate = std::move(tooLate)] {
            events.finish(tooLate);
            lines->close();
        });
    patience->start(limit);
    return patience;
}

struct Expectations {
    bool thoughts = false;
    std::shared_ptr<QTimer> patience;
};

Task<> readReply(std::shared_ptr<HTTPStream> lines, ReplyEvents events, Expectations expected)
{
    ReplyReader reader(events, expected.thoughts);
    int count = 0;
    while (const auto line = co_await lines->next()) {
        const auto goesOn = reader.read(std::get<HTTPLine>(*line));
        if (reader.hasBegun())
            expected.patience->stop();
        if (++count % linesAtOnce == 0)
            co_await events.wanted();
        if (goesOn)
            continue;
        reader.finish();
        spawn(readToTheEnd(lines));
        co_return;
    }
    if (lines->error())
        events.finish(failure(*lines->error()));
    else
        reader.finish();
}

Task<> readAnswer(std::shared_ptr<HTTPStream> lines, ReplyEvents events, Expectations expected)
{
    const auto head = co_await lines->next();
    if (!head) {
        events.finish(lines->error() ? std::optional(failure(*lines->error())) : std::nullopt);
        co_return;
    }
    const auto answered = std::get<HTTPHead>(*head);
    if (answered.status >= 200 && answered.status <= 299) {
        co_await readReply(lines, events, expected);
        co_return;
    }
    const auto body = co_await errorBody(lines);
    auto error = LLMError::http(answered.status, body);
    error.retryAfter = headerValue(answered.headers, "Retry-After");
    error.isPage = headerValue(answered.headers, "Content-Type").startsWith("text/html")
        || ServerMessage::isPage(body);
    events.finish(std::move(error));
}

} // namespace

OpenAICompatibleProvider::OpenAICompatibleProvider(LLMConfiguration configuration, HTTPClient& http)
    : OpenAICompatibleProvider(std::move(configuration), http, Patience())
{
}

OpenAICompatibleProvider::OpenAICompatibleProvider(
    LLMConfiguration configuration, HTTPClient& http, Patience patience)
    : m_configuration(std::move(configuration))
    , m_http(http)
    , m_patience(patience)
{
}

LLMStream OpenAICompatibleProvider::streamChat(LLMRequest request)
{
    LLMStream events;
    if (auto error = missingSetting(m_configuration)) {
        events.sink().finish(*std::move(error));
        return events;
    }
    auto asked = httpRequest(request);
    auto tooLate = TransportErrorLogic::beganTooLate(asked.url, m_patience.beginning);
    const auto lines = std::make_shared<HTTPStream>(m_http.stream(std::move(asked)));
    const auto watch = m_watching();
    events.sink().setOnDrop([lines, watch] {
        watch.stop();
        lines->close();
    });
    const ReplyEvents sink(events.sink(), watch);
    const auto patience = startPatience(lines, sink, std::move(tooLate), m_patience.beginning);
    spawn(readAnswer(lines, sink, { request.wantsThoughts, patience }));
    return events;
}

Task<std::vector<QString>> OpenAICompatibleProvider::models()
{
    const auto response =
        co_await m_http.send(ChatCompletionsLogic::modelsRequest(m_configuration));
    if (!response || response->status != 200)
        co_return std::vector<QString>();
    co_return ChatCompletionsLogic::modelNames(response->body);
}

HTTPRequest OpenAICompatibleProvider::httpRequest(const LLMRequest& request) const
{
    const auto payload = ChatCompletionsLogic::buildPayload(
        m_configuration.modelID, request, m_configuration.includeStreamUsage);
    auto result = ChatCompletionsLogic::httpRequest(m_configuration);
    result.body = QJsonDocument(payload).toJson(QJsonDocument::Compact);
    result.timeout = m_patience.silence;
    result.longest = request.longest;
    return result;
}

} // namespace pobblewig
