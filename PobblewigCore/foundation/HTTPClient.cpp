#include "foundation/HTTPClient.h"

#include <algorithm>

namespace pobblewig {

QByteArray headerValue(const std::vector<HTTPHeader>& headers, QByteArrayView name)
{
    const auto found = std::ranges::find_if(headers,
        [name](const auto& header) { return header.name.compare(name, Qt::CaseInsensitive) == 0; });
    return found == headers.end() ? QByteArray() : found->value;
}

} // namespace pobblewig
