#pragma once

#include <QTimer>

#include <curl/curl.h>

#include <functional>
#include <map>
#include <memory>

namespace pobblewig {

/// Runs libcurl's transfers in Qt's event loop, on this thread: watches their sockets and keeps
/// their time. A connection whose transfer is complete stays open for the next one to the same
/// server.
class CurlMulti {
public:
    using Ended = std::function<void(CURLcode)>;

    CurlMulti();
    Q_DISABLE_COPY_MOVE(CurlMulti)
    ~CurlMulti();

    /// The transfer starts from the event loop. `ended` runs once the transfer has ended by itself,
    /// when it no longer belongs here.
    void add(CURL* transfer, Ended ended);

    /// Closes the connection of a transfer in progress; does nothing after its end. Must not be
    /// called from libcurl's callbacks.
    void remove(CURL* transfer);

private:
    class SocketWatch;
    struct Library {
        Library() { curl_global_init(CURL_GLOBAL_DEFAULT); }
        Q_DISABLE_COPY_MOVE(Library)
        ~Library() { curl_global_cleanup(); }
    };
    struct Cleanup {
        void operator()(CURLM* multi) const { curl_multi_cleanup(multi); }
    };
    struct DeleteLater {
        void operator()(QObject* object) const { object->deleteLater(); }
    };

    void watch(curl_socket_t socket, int what);
    void wakeIn(long milliseconds);
    void act(curl_socket_t socket, int events);

    Library m_library;
    QTimer m_timer;
    std::map<curl_socket_t, std::unique_ptr<SocketWatch, DeleteLater>> m_watches;
    std::map<CURL*, Ended> m_transfers;
    // Its end still unwatches sockets.
    std::unique_ptr<CURLM, Cleanup> m_multi;
};

} // namespace pobblewig
