#pragma once

#include <QMetaObject>
#include <QObject>

#include <coroutine>
#include <deque>
#include <functional>
#include <memory>
#include <optional>
#include <utility>

namespace pobblewig {

/// The producer's end of a stream. It may outlive the stream.
template <typename State>
class StreamSink;

/// Values that arrive over time for one consumer, on the main thread. The buffer has no bound of
/// its own: a producer that can wait does so until more is wanted.
///
///     while (auto value = co_await stream.next())
///         use(*value);
///     if (stream.error()) …
///
/// The consumer always resumes from the event loop, never from inside the producer. Dropping or
/// closing the stream before its end runs the producer's `onDrop`.
template <typename Value, typename Error>
class Stream {
    // A QObject only as the context of queued wake-ups.
    struct State : QObject {
        using ValueType = Value;
        using ErrorType = Error;

        void wake()
        {
            if (!waiter || wakeQueued)
                return;
            wakeQueued = true;
            QMetaObject::invokeMethod(this, &State::resume, Qt::QueuedConnection);
        }

        void resume()
        {
            wakeQueued = false;
            if (const auto handle = std::exchange(waiter, nullptr))
                handle.resume();
        }

        bool isWanted() const { return waiter && values.empty(); }

        void askProducer()
        {
            if (auto produce = std::exchange(onWanted, nullptr))
                QMetaObject::invokeMethod(this, std::move(produce), Qt::QueuedConnection);
        }

        std::deque<Value> values;
        std::optional<Error> error;
        bool isClosed = false;
        bool wakeQueued = false;
        std::coroutine_handle<> waiter;
        std::function<void()> onDrop;
        std::function<void()> onWanted;
    };

    class Next {
    public:
        explicit Next(std::shared_ptr<State> state)
            : m_state(std::move(state))
        {
        }
        Next(const Next&) = default;
        Next& operator=(const Next&) = delete;
        // The consumer's frame may be destroyed while it waits.
        ~Next() { m_state->waiter = nullptr; }

        bool await_ready() const noexcept { return !m_state->values.empty() || m_state->isClosed; }
        void await_suspend(std::coroutine_handle<> handle) noexcept
        {
            m_state->waiter = handle;
            m_state->askProducer();
        }
        std::optional<Value> await_resume()
        {
            if (m_state->values.empty())
                return std::nullopt;
            std::optional<Value> value(std::move(m_state->values.front()));
            m_state->values.pop_front();
            return value;
        }

    private:
        std::shared_ptr<State> m_state;
    };

public:
    using Sink = StreamSink<State>;

    Stream()
        : m_state(new State, [](State* state) { state->deleteLater(); })
    {
    }
    Stream(Stream&&) noexcept = default;
    Stream& operator=(Stream&& other) noexcept
    {
        std::swap(m_state, other.m_state);
        return *this;
    }
    ~Stream()
    {
        if (m_state)
            close();
    }

    Sink sink() const { return Sink(m_state); }

    /// Resolves to the next value, or to nothing once the stream has ended.
    Next next() const { return Next(m_state); }

    /// Ends the stream from the consumer's side: the buffer is discarded, and a waiting consumer
    /// resumes with nothing.
    void close() const
    {
        if (std::exchange(m_state->isClosed, true))
            return;
        m_state->values.clear();
        m_state->wake();
        m_state->askProducer();
        if (const auto onDrop = std::exchange(m_state->onDrop, nullptr))
            onDrop();
    }

    /// Why the stream ended, or nothing after a normal end.
    const std::optional<Error>& error() const { return m_state->error; }

private:
    std::shared_ptr<State> m_state;
};

template <typename State>
class StreamSink {
    class Wanted {
    public:
        explicit Wanted(std::weak_ptr<State> state)
            : m_state(std::move(state))
        {
        }

        bool await_ready() const
        {
            const auto state = m_state.lock();
            return !state || state->isClosed || state->isWanted();
        }
        void await_suspend(std::coroutine_handle<> handle) { m_state.lock()->onWanted = handle; }
        bool await_resume() const
        {
            const auto state = m_state.lock();
            return state && !state->isClosed;
        }

    private:
        std::weak_ptr<State> m_state;
    };

public:
    explicit StreamSink(std::weak_ptr<State> state)
        : m_state(std::move(state))
    {
    }

    void push(typename State::ValueType value) const
    {
        const auto state = m_state.lock();
        if (!state || state->isClosed)
            return;
        state->values.push_back(std::move(value));
        state->wake();
    }

    /// Resolves to true once the consumer waits for more, or to false once the stream is closed. A
    /// producer that asks keeps the buffer short and leaves the event loop its turns.
    Wanted wanted() const { return Wanted(m_state); }
    bool isWanted() const
    {
        const auto state = m_state.lock();
        return state && state->isWanted();
    }

    /// `produce` runs once, from the event loop, when the consumer next waits for more or closes
    /// the stream.
    void setOnWanted(std::function<void()> produce) const
    {
        const auto state = m_state.lock();
        if (!state)
            return;
        state->onWanted = std::move(produce);
        if (state->isWanted() || state->isClosed)
            state->askProducer();
    }

    void finish(std::optional<typename State::ErrorType> error = std::nullopt) const
    {
        const auto state = m_state.lock();
        if (!state || state->isClosed)
            return;
        state->isClosed = true;
        state->error = std::move(error);
        state->onDrop = nullptr;
        state->wake();
        state->askProducer();
    }

    /// `onDrop` runs once if the consumer drops the stream before its end.
    void setOnDrop(std::function<void()> onDrop) const
    {
        if (const auto state = m_state.lock())
            state->onDrop = std::move(onDrop);
    }

private:
    std::weak_ptr<State> m_state;
};

} // namespace pobblewig
