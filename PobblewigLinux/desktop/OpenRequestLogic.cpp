#include "PobblewigLinux/desktop/OpenRequestLogic.h"

namespace pobblewig {

std::optional<QUrl> OpenRequestLogic::link(const QStringList& uris)
{
    constexpr qsizetype longest = 2048;
    if (uris.isEmpty() || uris.first().size() > longest)
        return std::nullopt;
    const QUrl url(uris.first(), QUrl::StrictMode);
    if (!url.isValid() || url.scheme() != u"pobblewig")
        return std::nullopt;
    return url;
}

} // namespace pobblewig
