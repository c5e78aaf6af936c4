#include "wire/MarketConfig.h"

#include "foundation/Log.h"

#include <QFile>
#include <QFileInfo>
#include <QJsonDocument>

namespace pobblewig {

namespace {

constexpr qint64 largestFile = 1024 * 1024;

tl::expected<MarketConfig, QString> read(const QString& path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return tl::unexpected(file.errorString());
    if (file.size() > largestFile)
        return tl::unexpected(QStringLiteral("larger than 1 MiB"));
    QJsonParseError error;
    const auto document = QJsonDocument::fromJson(file.readAll(), &error);
    if (document.isNull())
        return tl::unexpected(error.errorString());
    return json::decode<MarketConfig>(
        document.isArray() ? QJsonValue(document.array()) : document.object())
        .map_error(&json::DecodeError::description);
}

} // namespace

QStringList MarketConfig::standardFiles()
{
    return { QStringLiteral("Config/market.json"), QStringLiteral(":/market.json") };
}

MarketConfig MarketConfig::load(const Environment& environment, const QStringList& files)
{
    auto candidates = files;
    if (const auto named = variable(environment, QStringLiteral("MARKET_CONFIG_PATH")))
        candidates.prepend(*named);
    for (const auto& path : candidates) {
        if (!QFileInfo(path).isFile())
            continue;
        auto config = read(path);
        if (config)
            return *std::move(config);
        Log::line(QStringLiteral("buddy: market config %1 didn't decode, ignoring it: %2")
                      .arg(path, config.error()));
    }
    return placeholder();
}

} // namespace pobblewig
