#pragma once

#include <QProcessEnvironment>
#include <QUrl>

namespace pobblewig {

/// The proxies that the environment names: `http_proxy`, `https_proxy`, `all_proxy` and the hosts
/// in `no_proxy`, each also in capitals. This computer itself is always reached directly.
class EnvironmentProxies {
public:
    explicit EnvironmentProxies(const QProcessEnvironment& environment)
        : m_environment(environment)
    {
    }

    /// Returns an empty address where no proxy is used. A SOCKS proxy of the fifth version also
    /// looks up the server's name.
    QUrl proxyFor(const QUrl& url) const;

private:
    QString variable(const QString& name) const;
    bool isReachedDirectly(const QString& host) const;

    QProcessEnvironment m_environment;
};

} // namespace pobblewig
