#include "network/EnvironmentProxies.h"

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

QUrl parsedProxy(const QString& text)
{
    QUrl proxy(text.contains(u"://") ? text : QStringLiteral("http://") + text);
    if (proxy.host().isEmpty())
        return {};
    const auto isSocks = proxy.scheme().startsWith(u"socks");
    if (proxy.scheme() == u"socks" || proxy.scheme() == u"socks5")
        proxy.setScheme(QStringLiteral("socks5h"));
    if (proxy.port() < 0 && proxy.scheme() != u"https")
        proxy.setPort(isSocks ? 1080 : 8080);
    return proxy.adjusted(QUrl::RemovePath | QUrl::RemoveQuery | QUrl::RemoveFragment);
}

} // namespace

QUrl EnvironmentProxies::proxyFor(const QUrl& url) const
{
    if (isReachedDirectly(url.host()))
        return {};
    const auto ofScheme = variable(url.scheme() + QStringLiteral("_proxy"));
    return parsedProxy(ofScheme.isEmpty() ? variable(QStringLiteral("all_proxy")) : ofScheme);
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
