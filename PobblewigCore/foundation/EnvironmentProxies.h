#pragma once

#include <QNetworkProxyFactory>
#include <QProcessEnvironment>
#include <QUrl>

namespace pobblewig {

/// The proxies that the environment names: `http_proxy`, `https_proxy`, `all_proxy` and the hosts
/// in `no_proxy`. This machine itself is always reached directly.
class EnvironmentProxies : public QNetworkProxyFactory {
public:
    explicit EnvironmentProxies(const QProcessEnvironment& environment)
        : m_environment(environment)
    {
    }

    QNetworkProxy proxyFor(const QUrl& url) const;

    QList<QNetworkProxy> queryProxy(const QNetworkProxyQuery& query) override;

private:
    QString variable(const QString& name) const;
    bool isReachedDirectly(const QString& host) const;

    QProcessEnvironment m_environment;
};

} // namespace pobblewig
