#include "network/CurlTransfer.h"

#include "foundation/TransportErrorLogic.h"
#include "network/CurlErrorLogic.h"

#include <QPointer>

#include <algorithm>
#include <utility>

namespace pobblewig {

namespace {

/// Of all heads of an answer and what follows its chunks.
constexpr qsizetype maximumHeadSize = 64 * 1024;

bool isWebAddress(const QUrl& url)
{
    const auto scheme = url.scheme();
    return url.isValid() && !url.host().isEmpty() && (scheme == u"http" || scheme == u"https");
}

std::vector<HTTPHeader> headers(CURL* handle)
{
    std::vector<HTTPHeader> result;
    curl_header* header = nullptr;
    while ((header = curl_easy_nextheader(handle, CURLH_HEADER, -1, header)))
        result.push_back({ header->name, header->value });
    return result;
}

// Nobody asks for compression, and a little of it can be very much body.
bool isCompressed(const HTTPHeader& header)
{
    const auto coding = header.value.toLower();
    return header.name.toLower() == "transfer-encoding" && coding != "chunked"
        && coding != "identity";
}

} // namespace

HTTPParts CurlTransfer::start(
    CurlMulti& multi, QObject& owner, HTTPRequest request, const QUrl& proxy)
{
    HTTPParts parts;
    if (isWebAddress(request.url))
        new CurlTransfer(multi, owner, parts.sink(), std::move(request), proxy);
    else
        parts.sink().finish(TransportErrorLogic::notAWebAddress(request.url));
    return parts;
}

CurlTransfer::CurlTransfer(
    CurlMulti& multi, QObject& owner, HTTPParts::Sink sink, HTTPRequest request, const QUrl& proxy)
    : QObject(&owner)
    , m_multi(multi)
    , m_sink(std::move(sink))
    , m_request(std::move(request), proxy)
    , m_usesProxy(!proxy.isEmpty())
{
    setCallbacks();
    startTimers();
    m_sink.setOnDrop([transfer = QPointer(this)] {
        if (transfer)
            transfer->drop();
    });
    m_multi.add(m_request.handle(), [this](CURLcode result) { finish(result); });
}

CurlTransfer::~CurlTransfer()
{
    m_multi.remove(m_request.handle());
}

void CurlTransfer::setCallbacks()
{
    const auto onSending = [](void* self, char*, char*, int, int) {
        return static_cast<CurlTransfer*>(self)->beforeSending();
    };
    const auto onProgress = [](void* self, curl_off_t, curl_off_t, curl_off_t, curl_off_t sent) {
        return static_cast<CurlTransfer*>(self)->noteUpload(sent);
    };
    const auto onHeader = [](char* bytes, size_t, size_t count, void* self) {
        return static_cast<CurlTransfer*>(self)->readHeader({ bytes, qsizetype(count) });
    };
    const auto onBody = [](char* bytes, size_t, size_t count, void* self) {
        return static_cast<CurlTransfer*>(self)->readBody({ bytes, qsizetype(count) });
    };
    auto* const handle = m_request.handle();
    curl_easy_setopt(handle, CURLOPT_PREREQFUNCTION, curl_prereq_callback(onSending));
    curl_easy_setopt(handle, CURLOPT_PREREQDATA, this);
    curl_easy_setopt(handle, CURLOPT_NOPROGRESS, 0L);
    curl_easy_setopt(handle, CURLOPT_XFERINFOFUNCTION, curl_xferinfo_callback(onProgress));
    curl_easy_setopt(handle, CURLOPT_XFERINFODATA, this);
    curl_easy_setopt(handle, CURLOPT_HEADERFUNCTION, curl_write_callback(onHeader));
    curl_easy_setopt(handle, CURLOPT_HEADERDATA, this);
    curl_easy_setopt(handle, CURLOPT_WRITEFUNCTION, curl_write_callback(onBody));
    curl_easy_setopt(handle, CURLOPT_WRITEDATA, this);
}

void CurlTransfer::startTimers()
{
    const auto& request = m_request.request();
    m_silence.setSingleShot(true);
    m_silence.callOnTimeout(
        this, [this] { end(TransportErrorLogic::wentSilent(m_request.request())); });
    m_silence.start(request.timeout);
    if (const auto longest = request.longest) {
        QTimer::singleShot(
            *longest, this, [this] { end(TransportErrorLogic::tookTooLong(m_request.request())); });
    }
}

// When a kept connection turns out to be closed, libcurl sends the request again.
int CurlTransfer::beforeSending()
{
    const auto isAgain = std::exchange(m_wasSent, true);
    const auto mayRepeat = m_request.request().method == "GET";
    return isAgain && !mayRepeat ? CURL_PREREQFUNC_ABORT : CURL_PREREQFUNC_OK;
}

int CurlTransfer::noteUpload(curl_off_t sent)
{
    if (std::exchange(m_sent, sent) != sent)
        noteProgress();
    return 0;
}

size_t CurlTransfer::readHeader(QByteArrayView line)
{
    noteProgress();
    m_headSize += line.size();
    if (m_headSize > maximumHeadSize)
        return fail(TransportErrorLogic::headTooLarge(m_request.request().url));
    const auto endsHead = line.trimmed().isEmpty() && !m_hasHead;
    return endsHead ? readHead(line) : size_t(line.size());
}

size_t CurlTransfer::readHead(QByteArrayView lastLine)
{
    const auto status = info(CURLINFO_RESPONSE_CODE);
    if (status < 200)
        return size_t(lastLine.size());
    auto found = headers(m_request.handle());
    if (std::ranges::any_of(found, isCompressed))
        return fail(TransportErrorLogic::notHTTP(m_request.request().url));
    m_sink.push(HTTPResponse { .status = int(status), .headers = std::move(found), .body = {} });
    m_hasHead = true;
    return size_t(lastLine.size());
}

size_t CurlTransfer::readBody(QByteArrayView bytes)
{
    const auto& url = m_request.request().url;
    if (!m_hasHead)
        return fail(TransportErrorLogic::notHTTP(url));
    if (!m_sink.isWanted())
        return pause();
    noteProgress();
    m_received += bytes.size();
    if (m_received > TransportErrorLogic::maximumBodySize)
        return fail(TransportErrorLogic::bodyTooLarge(url));
    m_sink.push(bytes.toByteArray());
    return size_t(bytes.size());
}

size_t CurlTransfer::pause()
{
    m_silence.stop();
    m_sink.setOnWanted([transfer = QPointer(this)] {
        if (transfer)
            transfer->resume();
    });
    return CURL_WRITEFUNC_PAUSE;
}

void CurlTransfer::resume()
{
    if (m_isOver)
        return;
    m_silence.start();
    // Passes on what was held back, without reporting its failure as an end.
    const auto result = curl_easy_pause(m_request.handle(), CURLPAUSE_CONT);
    if (result != CURLE_OK)
        finish(result);
}

void CurlTransfer::noteProgress()
{
    if (m_silence.isActive())
        m_silence.start();
}

size_t CurlTransfer::fail(TransportError error)
{
    m_error = std::move(error);
    return 0;
}

void CurlTransfer::finish(CURLcode result)
{
    if (m_error)
        return end(std::move(m_error));
    const CurlErrorLogic::Ending ending { .result = result,
        .systemError = int(info(CURLINFO_OS_ERRNO)),
        .hasHead = m_hasHead,
        .usesProxy = m_usesProxy,
        .proxyStatus = int(info(CURLINFO_HTTP_CONNECTCODE)),
        .certificateError = info(CURLINFO_SSL_VERIFYRESULT) };
    end(CurlErrorLogic::failure(ending, m_request.request().url));
}

long CurlTransfer::info(CURLINFO kind) const
{
    long value = 0;
    curl_easy_getinfo(m_request.handle(), kind, &value);
    return value;
}

void CurlTransfer::end(std::optional<TransportError> error)
{
    m_sink.finish(std::move(error));
    drop();
}

void CurlTransfer::drop()
{
    m_isOver = true;
    m_silence.stop();
    m_multi.remove(m_request.handle());
    deleteLater();
}

} // namespace pobblewig
