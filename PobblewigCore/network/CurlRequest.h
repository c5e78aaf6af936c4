#pragma once

#include "foundation/HTTPClient.h"

#include <curl/curl.h>

#include <memory>

namespace pobblewig {

/// A request as libcurl sends it: over HTTP/1.1 and to this address alone, without cookies, stored
/// passwords or compression. The system's certificates decide whether a server is trusted.
class CurlRequest {
public:
    /// The proxy is asked in place of the server, unless its address is empty.
    CurlRequest(HTTPRequest request, const QUrl& proxy);
    Q_DISABLE_COPY_MOVE(CurlRequest)
    ~CurlRequest() = default;

    const HTTPRequest& request() const { return m_request; }
    CURL* handle() const { return m_handle.get(); }

private:
    struct Cleanup {
        void operator()(CURL* handle) const { curl_easy_cleanup(handle); }
        void operator()(curl_slist* list) const { curl_slist_free_all(list); }
    };

    void setAddress(const QUrl& proxy);
    void setTrust();
    void setHeaders();
    void setBody();

    HTTPRequest m_request;
    std::unique_ptr<curl_slist, Cleanup> m_headers;
    std::unique_ptr<CURL, Cleanup> m_handle;
};

} // namespace pobblewig
