#include "network/CurlRequest.h"

namespace pobblewig {

namespace {

/// What is read at once.
constexpr long bufferSize = 16 * 1024;

// A line break would start another header.
QByteArray headerLine(const HTTPHeader& header)
{
    auto value = header.value;
    value = value.replace('\r', "").replace('\n', "").trimmed();
    // Without its semicolon an empty header would be left out.
    return value.isEmpty() ? header.name + ";" : header.name + ": " + value;
}

} // namespace

CurlRequest::CurlRequest(HTTPRequest request, const QUrl& proxy)
    : m_request(std::move(request))
    , m_handle(curl_easy_init())
{
    setAddress(proxy);
    setTrust();
    setHeaders();
    setBody();
    curl_easy_setopt(handle(), CURLOPT_BUFFERSIZE, bufferSize);
    curl_easy_setopt(handle(), CURLOPT_NOSIGNAL, 1L);
    // Stop does not wait for a name that is being looked up.
    curl_easy_setopt(handle(), CURLOPT_QUICK_EXIT, 1L);
}

void CurlRequest::setAddress(const QUrl& proxy)
{
    const auto url = m_request.url.toEncoded(QUrl::RemoveFragment);
    curl_easy_setopt(handle(), CURLOPT_URL, url.constData());
    curl_easy_setopt(handle(), CURLOPT_PROTOCOLS_STR, "http,https");
    curl_easy_setopt(handle(), CURLOPT_FOLLOWLOCATION, 0L);
    // One connection for each stream: to drop the stream closes it, and to read slowly slows the
    // server.
    curl_easy_setopt(handle(), CURLOPT_HTTP_VERSION, long(CURL_HTTP_VERSION_1_1));
    curl_easy_setopt(handle(), CURLOPT_PROXY, proxy.toEncoded().constData());
    curl_easy_setopt(handle(), CURLOPT_NOPROXY, "");
    curl_easy_setopt(handle(), CURLOPT_SUPPRESS_CONNECT_HEADERS, 1L);
}

// The system's certificates also stand in a directory, where the one that is needed is found at
// once; the file takes tens of milliseconds to read.
void CurlRequest::setTrust()
{
    if (curl_version_info(CURLVERSION_NOW)->capath)
        curl_easy_setopt(handle(), CURLOPT_CAINFO, nullptr);
}

void CurlRequest::setHeaders()
{
    // The first two lines keep libcurl from adding these headers.
    QByteArrayList lines { "Expect:", "Content-Type:", "Accept-Encoding: identity" };
    for (const auto& header : m_request.headers)
        lines.append(headerLine(header));
    for (const auto& line : lines)
        m_headers.reset(curl_slist_append(m_headers.release(), line.constData()));
    curl_easy_setopt(handle(), CURLOPT_HTTPHEADER, m_headers.get());
    curl_easy_setopt(handle(), CURLOPT_USERAGENT, "Pobblewig");
}

void CurlRequest::setBody()
{
    if (m_request.method == "GET")
        return;
    if (m_request.method == "HEAD") {
        curl_easy_setopt(handle(), CURLOPT_NOBODY, 1L);
        return;
    }
    curl_easy_setopt(handle(), CURLOPT_POSTFIELDS, m_request.body.constData());
    curl_easy_setopt(handle(), CURLOPT_POSTFIELDSIZE_LARGE, curl_off_t(m_request.body.size()));
    curl_easy_setopt(handle(), CURLOPT_CUSTOMREQUEST, m_request.method.constData());
}

} // namespace pobblewig
