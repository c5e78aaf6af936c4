#include "markdown/LinkAddress.h"

#include <QUrl>

namespace pobblewig {

namespace {

const QStringView mail = u"mailto";

}

QString LinkAddress::safe(const QString& address)
{
    const QUrl url(address, QUrl::TolerantMode);
    const auto scheme = url.scheme();
    const auto isWeb = (scheme == u"https" || scheme == u"http") && !url.host().isEmpty();
    const auto isMail = scheme == mail && url.path().contains(u'@');
    return url.isValid() && (isWeb || isMail) ? address : QString();
}

QString LinkAddress::origin(const QString& safeAddress)
{
    const QUrl url(safeAddress, QUrl::TolerantMode);
    return url.scheme() == mail ? url.path() : url.host();
}

bool LinkAddress::names(QStringView text, const QString& origin)
{
    for (const auto* scheme : { u"https://", u"http://", u"mailto:" }) {
        if (text.startsWith(QStringView(scheme), Qt::CaseInsensitive))
            text = text.sliced(QStringView(scheme).size());
    }
    if (!text.startsWith(origin, Qt::CaseInsensitive))
        return false;
    return text.size() == origin.size() || QStringView(u"/?#:").contains(text[origin.size()]);
}

} // namespace pobblewig
