#include "PobblewigLinux/modules/LateHTTPClient.h"

#include "PobblewigLinux/modules/HTTPClientMaking.h"

namespace pobblewig {

LateHTTPClient::LateHTTPClient(const ModuleLoader& modules)
    : m_modules(modules)
{
}

Task<tl::expected<HTTPResponse, TransportError>> LateHTTPClient::send(HTTPRequest request)
{
    if (const auto error = load())
        co_return tl::unexpected(*error);
    co_return co_await m_client->send(std::move(request));
}

HTTPStream LateHTTPClient::stream(HTTPRequest request)
{
    const auto error = load();
    if (!error)
        return m_client->stream(std::move(request));
    HTTPStream nothing;
    nothing.sink().finish(*error);
    return nothing;
}

std::optional<TransportError> LateHTTPClient::load()
{
    if (m_client)
        return std::nullopt;
    const auto module = m_modules.load<HTTPClientMaking>(QStringLiteral("network"));
    if (!module)
        return TransportError { .text = module.error() };
    m_client = (*module)->makeHTTPClient();
    return std::nullopt;
}

} // namespace pobblewig
