#include "PobblewigLinux/modules/NetworkModule.h"

#include "network/CurlHTTPClient.h"

namespace pobblewig {

std::unique_ptr<HTTPClient> NetworkModule::makeHTTPClient()
{
    return std::make_unique<CurlHTTPClient>();
}

} // namespace pobblewig
