#include "wire/LaneLogic.h"

#include <array>

namespace pobblewig {

namespace {

using ProviderRouting::Lane;

struct UseNames {
    QStringView variableStem;
    QStringView keyAccount;
};

constexpr std::array useNames {
    UseNames { u"MAIN", u"main-model-api-key" },
    UseNames { u"VISION", u"vision-model-api-key" },
    UseNames { u"LIBRARIAN", u"librarian-model-api-key" },
    UseNames { u"MEME", u"meme-model-api-key" },
};

QString variableName(ModelUse use, QStringView suffix)
{
    return QStringLiteral("%1_MODEL_%2").arg(useNames[size_t(use)].variableStem, suffix);
}

std::optional<QUrl> serverURL(const QString& text)
{
    const QUrl url(text, QUrl::StrictMode);
    if (!url.isValid() || !url.scheme().startsWith(u"http") || url.host().isEmpty())
        return std::nullopt;
    return url;
}

bool haveSameOrigin(const QString& one, const QString& other)
{
    const auto origin = [](const QUrl& url) {
        const auto usualPort = url.scheme() == u"https" ? 443 : 80;
        return std::tuple(url.scheme(), url.host(), url.port(usualPort));
    };
    const auto first = serverURL(one);
    const auto second = serverURL(other);
    return first && second && origin(*first) == origin(*second);
}

QString managedModelID(Lane lane, const MarketConfig& market)
{
    switch (lane) {
    case Lane::main:
        return market.managedMainModelID;
    case Lane::librarian:
        return market.managedLibrarianModelID;
    case Lane::vision:
        return market.managedVisionModelID;
    }
    Q_UNREACHABLE();
}

bool isLibrarian(ModelUse use)
{
    return LaneLogic::managedLane(use) == Lane::librarian;
}

std::optional<QString> ownModelID(ModelUse use, const Environment& environment)
{
    return variable(environment, LaneLogic::modelVariable(use));
}

} // namespace

QString LaneLogic::keyVariable(ModelUse use)
{
    return variableName(use, u"API_KEY");
}

QString LaneLogic::keyAccount(ModelUse use)
{
    return useNames[size_t(use)].keyAccount.toString();
}

QString LaneLogic::modelVariable(ModelUse use)
{
    return variableName(isLibrarian(use) ? ModelUse::librarian : use, u"ID");
}

ProviderRouting::Lane LaneLogic::managedLane(ModelUse use)
{
    switch (use) {
    case ModelUse::main:
        return Lane::main;
    case ModelUse::vision:
        return Lane::vision;
    case ModelUse::librarian:
    case ModelUse::meme:
        return Lane::librarian;
    }
    Q_UNREACHABLE();
}

bool LaneLogic::namesModel(ModelUse use, const Environment& environment)
{
    return ownModelID(use, environment)
        || (isLibrarian(use) && ownModelID(ModelUse::main, environment));
}

QString LaneLogic::modelID(ModelUse use, ModelUse keyOwner, const Environment& environment)
{
    if (const auto own = ownModelID(use, environment))
        return *own;
    if (!isLibrarian(use))
        return {};
    const auto mainModel = ownModelID(ModelUse::main, environment);
    return keyOwner == ModelUse::main && mainModel
        ? *mainModel
        : QStringLiteral("deepseek-ai/DeepSeek-V4-Flash");
}

int LaneLogic::maxOutputTokens(ModelUse use, const Environment& environment, int usual)
{
    constexpr int most = 1'000'000;
    const auto given = variable(environment, variableName(use, u"MAX_OUTPUT_TOKENS"));
    const auto tokens = given.value_or(QString()).toInt();
    return tokens > 0 && tokens <= most ? tokens : usual;
}

QString LaneLogic::provider(
    ModelUse use, const Environment& environment, const MarketConfig& market)
{
    return variable(environment, variableName(use, u"PROVIDER"))
        .value_or(market.defaultVendorLabel);
}

QString LaneLogic::baseURL(
    ModelUse use, ModelUse keyOwner, const Environment& environment, const MarketConfig& market)
{
    auto mainURL = variable(environment, variableName(ModelUse::main, u"BASE_URL"))
                       .value_or(market.defaultVendorBaseUrl);
    const auto ownURL = variable(environment, variableName(use, u"BASE_URL"));
    if (keyOwner == use)
        return ownURL.value_or(market.defaultVendorBaseUrl);
    return ownURL && haveSameOrigin(*ownURL, mainURL) ? *ownURL : mainURL;
}

std::optional<LLMConfiguration> LaneLogic::directConfiguration(ModelUse use,
    const std::optional<LaneKey>& key, const Environment& environment, const MarketConfig& market)
{
    if (!key || key->key.isEmpty())
        return std::nullopt;
    const auto model = modelID(use, key->owner, environment);
    if (model.isEmpty())
        return std::nullopt;
    const auto url = serverURL(baseURL(use, key->owner, environment, market));
    if (!url)
        return std::nullopt;
    return LLMConfiguration {
        .providerName = provider(use, environment, market),
        .baseURL = *url,
        .modelID = model,
        .apiKey = key->key,
        .includeStreamUsage = true,
        .usesCloudAuth = false,
        .sessionToken = std::nullopt,
        .completionsPath = QStringLiteral("chat/completions"),
        .lane = std::nullopt,
    };
}

bool LaneLogic::isManaged(Lane lane, const MarketConfig& market)
{
    return !managedModelID(lane, market).isEmpty() && serverURL(market.backendBaseUrl);
}

std::optional<LLMConfiguration> LaneLogic::managedConfiguration(Lane lane,
    const std::optional<QString>& credential, const std::optional<QString>& sessionToken,
    const MarketConfig& market)
{
    if (!credential || credential->isEmpty() || !isManaged(lane, market))
        return std::nullopt;
    return LLMConfiguration {
        .providerName = QStringLiteral("pobblewig-cloud"),
        .baseURL = QUrl(market.backendBaseUrl),
        .modelID = managedModelID(lane, market),
        .apiKey = *credential,
        .includeStreamUsage = true,
        .usesCloudAuth = true,
        .sessionToken = sessionToken,
        .completionsPath = lane == Lane::vision ? QStringLiteral("vision/completions")
                                                : QStringLiteral("chat/completions"),
        .lane = EnumNames::text(lane),
    };
}

} // namespace pobblewig
