#include "wire/ModelDesk.h"

#include "settings/EnvironmentWriting.h"
#include "wire/OpenAICompatibleProvider.h"

#include <QCoreApplication>
#include <QProcessEnvironment>

namespace pobblewig {

namespace {

using namespace std::chrono_literals;

constexpr auto longestTrial = 30s;
constexpr int shortReply = 16;
/// For servers that want none: the lane needs some key to be one.
constexpr QStringView noKey = u"not-needed";

struct Texts {
    Q_DECLARE_TR_FUNCTIONS(ModelDesk)
};

QString serverVariable(ModelUse use)
{
    auto name = LaneLogic::modelVariable(use);
    return name.replace(QStringLiteral("_ID"), QStringLiteral("_BASE_URL"));
}

ModelSource source(ModelUse use, const Environment& environment)
{
    const auto name = LaneLogic::modelVariable(use);
    if (!variable(environment, name))
        return ModelSource::none;
    if (!QProcessEnvironment::systemEnvironment().value(name).isEmpty())
        return ModelSource::session;
    const auto isDemo = variable(environment, QStringLiteral("MAIN_MODEL_PROVIDER"))
        == QStringLiteral("demo model");
    return isDemo ? ModelSource::demo : ModelSource::file;
}

bool isUsable(const QUrl& url)
{
    return url.isValid() && !url.host().isEmpty()
        && (url.scheme() == u"http" || url.scheme() == u"https");
}

LLMConfiguration configuration(const ModelDesk::Choice& choice)
{
    return { .providerName = {},
        .baseURL = QUrl(choice.baseURL.trimmed()),
        .modelID = choice.modelID.trimmed(),
        .apiKey = choice.key.isEmpty() ? noKey.toString() : choice.key };
}

/// Why the choice cannot be kept, or nothing.
std::optional<QString> refused(ModelUse use, const ModelDesk::Choice& choice,
    const Environment& environment, const QString& file)
{
    if (!isUsable(QUrl(choice.baseURL.trimmed())))
        return Texts::tr("The address must begin with http:// or https:// and name a server.");
    if (choice.modelID.trimmed().isEmpty())
        return Texts::tr("Name the model.");
    if (file.isEmpty())
        return Texts::tr("There is no file to keep the choice in.");
    if (source(use, environment) == ModelSource::session)
        return Texts::tr("The variable %1 of this session names the model, and wins. Remove it "
                         "where it is set.")
            .arg(LaneLogic::modelVariable(use));
    return std::nullopt;
}

QString keyNotKept(KeychainHelper::State state, const QString& file)
{
    const auto why = state == KeychainHelper::State::locked
        ? Texts::tr("The keyring is locked.")
        : Texts::tr("This desktop has no keyring.");
    return Texts::tr("%1 Nothing was changed. The key can stand in the file %2 instead, which only "
                     "you can read.")
        .arg(why, file);
}

Environment variables(ModelUse use, const ModelDesk::Choice& choice, ModelDesk::KeyPlace place)
{
    const auto isInFile = place == ModelDesk::KeyPlace::file;
    return { { LaneLogic::modelVariable(use), choice.modelID.trimmed() },
        { serverVariable(use), choice.baseURL.trimmed() },
        { LaneLogic::keyVariable(use),
            choice.key.isEmpty() ? noKey.toString()
                : isInFile       ? choice.key
                                 : QString() } };
}

Task<ModelDesk::Trial> answered(LLMConfiguration configuration, HTTPClient* http, Clock now)
{
    OpenAICompatibleProvider provider(std::move(configuration), *http);
    const auto start = now();
    auto request = LLMRequest { .messages = { { .role = LLMMessage::Role::user,
                                    .content = QStringLiteral("Say hello in one word.") } },
        .maxTokens = shortReply };
    request.longest = longestTrial;
    const auto completion = co_await provider.completeWithUsage(std::move(request));
    if (!completion)
        co_return tl::unexpected(completion.error());
    co_return now() - start;
}

} // namespace

ModelDesk::ModelDesk(Dependencies dependencies)
    : m(std::move(dependencies))
{
}

Task<std::vector<LaneState>> ModelDesk::lanes()
{
    std::vector<LaneState> lanes;
    for (const auto use : { ModelUse::main, ModelUse::vision, ModelUse::librarian })
        lanes.push_back(co_await lane(use));
    co_return lanes;
}

Task<std::vector<LocalServers::Server>> ModelDesk::localServers()
{
    return LocalServers::find(&m.http);
}

Task<std::vector<QString>> ModelDesk::models(Choice server)
{
    OpenAICompatibleProvider provider(configuration(server), m.http);
    co_return co_await provider.models();
}

Task<ModelDesk::Trial> ModelDesk::tryOut(Choice choice)
{
    return answered(configuration(choice), &m.http, m.moment.clock);
}

Task<ModelDesk::Trial> ModelDesk::tryOut(ModelUse use)
{
    auto configuration = co_await m.lanes.configuration(use, m.environment());
    if (!configuration)
        co_return tl::unexpected<LLMFailure>(LLMError::notConfigured({}));
    co_return co_await answered(*std::move(configuration), &m.http, m.moment.clock);
}

Task<tl::expected<void, QString>> ModelDesk::choose(ModelUse use, Choice choice, KeyPlace place)
{
    if (auto refusal = refused(use, choice, m.environment(), m.environmentFile))
        co_return tl::unexpected(*std::move(refusal));
    const auto account = LaneLogic::keyAccount(use);
    const auto previous = co_await m.keychain.read(account);
    const auto isForKeyring = !choice.key.isEmpty() && place == KeyPlace::keyring;
    if (isForKeyring) {
        co_await m.keychain.write(account, choice.key);
        if (co_await m.keychain.read(account) != choice.key)
            co_return tl::unexpected(keyNotKept(m.keychain.state(), m.environmentFile));
    }
    const auto written = EnvironmentWriting::write(
        m.environmentFile, variables(use, choice, place), FileOperations());
    if (written)
        co_return {};
    if (previous && isForKeyring)
        co_await m.keychain.write(account, *previous);
    else if (isForKeyring)
        co_await m.keychain.remove(account);
    co_return tl::unexpected(
        Texts::tr("The choice could not be kept: %1").arg(written.error().description()));
}

QString ModelDesk::fileLines(ModelUse use, const Choice& choice)
{
    return EnvironmentWriting::lines(variables(use, choice, KeyPlace::file));
}

Task<LaneState> ModelDesk::lane(ModelUse use)
{
    const auto environment = m.environment();
    const auto configuration = co_await m.lanes.configuration(use, environment);
    LaneState state {
        .use = use, .source = source(use, environment), .lastError = m.requests.lastError(use)
    };
    if (!configuration)
        co_return state;
    if (configuration->usesCloudAuth)
        state.source = ModelSource::account;
    state.server = configuration->baseURL.toString();
    state.modelID = configuration->modelID;
    state.hasKey = !configuration->apiKey.isEmpty() && configuration->apiKey != noKey;
    co_return state;
}

} // namespace pobblewig
