#include "foundation/EnvironmentProxies.h"

#include "foundation/ThisComputer.h"

#include <algorithm>

namespace pobblewig {

namespace {

bool covers(QStringView entry, const QString& host)
{
    if (entry.startsWith(u'.'))
        entry = entry.sliced(1);
    if (entry.isEmpty() || !host.endsWith(entry, Qt::CaseInsensitive))
        return false;
    return host.size() == entry.size() || host[host.size() - entry.size() - 1] == u'.';
}

QNetworkProxy parsedProxy(const QString& text)
{
    const auto url = QUrl(text.contains(u"://") ? text : QStringLiteral("http://") + text);
    if (url.host().isEmpty())
        return QNetworkProxy::NoProxy;
    const auto isSocks = url.scheme().startsWith(u"socks");
    return { isSocks ? QNetworkProxy::Socks5Proxy : QNetworkProxy::HttpProxy, url.host(),
        quint16(url.port(isSocks ? 1080 : 8080)), url.userName(), url.password() };
}

} // namespace

QNetworkProxy EnvironmentProxies::proxyFor(const QUrl& url) const
{
    if (isReachedDirectly(url.host()))
        return QNetworkProxy::NoProxy;
    const auto ofScheme = variable(url.scheme() + QStringLiteral("_proxy"));
    return parsedProxy(ofScheme.isEmpty() ? variable(QStringLiteral("all_proxy")) : ofScheme);
}

QList<QNetworkProxy> EnvironmentProxies::queryProxy(const QNetworkProxyQuery& query)
{
    return { proxyFor(query.url()) };
}

QString EnvironmentProxies::variable(const QString& name) const
{
    const auto value = m_environment.value(name);
    return value.isEmpty() ? m_environment.value(name.toUpper()) : value;
}

bool EnvironmentProxies::isReachedDirectly(const QString& host) const
{
    if (isThisComputer(host))
        return true;
    const auto entries = variable(QStringLiteral("no_proxy")).split(u',');
    return std::ranges::any_of(entries, [&](const auto& entry) {
        return entry.trimmed() == u"*" || covers(QStringView(entry).trimmed(), host);
    });
}

} // namespace pobblewig
