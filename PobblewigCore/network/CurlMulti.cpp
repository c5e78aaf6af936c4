#include "network/CurlMulti.h"

#include <QSocketNotifier>

#include <chrono>

namespace pobblewig {

namespace {

constexpr long mostConnectionsKept = 8;

} // namespace

class CurlMulti::SocketWatch : public QObject {
public:
    SocketWatch(CurlMulti& multi, curl_socket_t socket)
        : m_reading(socket, QSocketNotifier::Read)
        , m_writing(socket, QSocketNotifier::Write)
    {
        connect(&m_reading, &QSocketNotifier::activated, this,
            [&multi, socket] { multi.act(socket, CURL_CSELECT_IN); });
        connect(&m_writing, &QSocketNotifier::activated, this,
            [&multi, socket] { multi.act(socket, CURL_CSELECT_OUT); });
    }

    void waitFor(int what)
    {
        m_reading.setEnabled(what == CURL_POLL_IN || what == CURL_POLL_INOUT);
        m_writing.setEnabled(what == CURL_POLL_OUT || what == CURL_POLL_INOUT);
    }

private:
    QSocketNotifier m_reading;
    QSocketNotifier m_writing;
};

CurlMulti::CurlMulti()
    : m_multi(curl_multi_init())
{
    m_timer.setSingleShot(true);
    m_timer.callOnTimeout([this] { act(CURL_SOCKET_TIMEOUT, 0); });
    const auto onSocket = [](CURL*, curl_socket_t socket, int what, void* self, void*) {
        static_cast<CurlMulti*>(self)->watch(socket, what);
        return 0;
    };
    const auto onTimer = [](CURLM*, long milliseconds, void* self) {
        static_cast<CurlMulti*>(self)->wakeIn(milliseconds);
        return 0;
    };
    auto* const multi = m_multi.get();
    curl_multi_setopt(multi, CURLMOPT_SOCKETFUNCTION, curl_socket_callback(onSocket));
    curl_multi_setopt(multi, CURLMOPT_SOCKETDATA, this);
    curl_multi_setopt(multi, CURLMOPT_TIMERFUNCTION, curl_multi_timer_callback(onTimer));
    curl_multi_setopt(multi, CURLMOPT_TIMERDATA, this);
    curl_multi_setopt(multi, CURLMOPT_MAXCONNECTS, mostConnectionsKept);
}

CurlMulti::~CurlMulti() = default;

void CurlMulti::add(CURL* transfer, Ended ended)
{
    m_transfers[transfer] = std::move(ended);
    curl_multi_add_handle(m_multi.get(), transfer);
}

void CurlMulti::remove(CURL* transfer)
{
    if (m_transfers.erase(transfer) > 0)
        curl_multi_remove_handle(m_multi.get(), transfer);
}

void CurlMulti::watch(curl_socket_t socket, int what)
{
    auto& watch = m_watches[socket];
    if (!watch)
        watch.reset(new SocketWatch(*this, socket));
    watch->waitFor(what);
    // This may run from the watch's own signal.
    if (what == CURL_POLL_REMOVE)
        m_watches.erase(socket);
}

void CurlMulti::wakeIn(long milliseconds)
{
    if (milliseconds < 0)
        m_timer.stop();
    else
        m_timer.start(std::chrono::milliseconds(milliseconds));
}

void CurlMulti::act(curl_socket_t socket, int events)
{
    int count = 0;
    curl_multi_socket_action(m_multi.get(), socket, events, &count);
    while (const auto* message = curl_multi_info_read(m_multi.get(), &count)) {
        const auto result = message->data.result;
        const auto ended = m_transfers.extract(message->easy_handle);
        curl_multi_remove_handle(m_multi.get(), ended.key());
        ended.mapped()(result);
    }
}

} // namespace pobblewig
