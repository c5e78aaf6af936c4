#include "conversation/ProblemLogic.h"

#include "conversation/ProblemTexts.h"
#include "foundation/Overloaded.h"
#include "wire/ServerMessage.h"

#include <QDateTime>
#include <QLocale>

#include <algorithm>

namespace pobblewig {

namespace {

using namespace std::chrono;

using Action = ChatProblem::Action;
using ProblemLogic::Circumstances;

constexpr auto longestWait = hours(24);
constexpr auto longestWaitByItself = seconds(60);
constexpr int mostRetriesByItself = 3;

ChatProblem aboutPage(const LLMError& error, const Circumstances& at)
{
    if (error.status == 404)
        return ProblemTexts::nothingThere(at);
    return error.status >= 500 && error.status != 511
        ? ProblemTexts::serverTrouble(error.status, at)
        : ProblemTexts::page(at);
}

ChatProblem withTime(ChatProblem problem, const LLMError& error, const Circumstances& at)
{
    problem.retryAt = ProblemLogic::retryTime(error.retryAfter, at.now);
    return problem;
}

ChatProblem aboutQuota(const LLMError& error, const Circumstances& at)
{
    if (error.text.contains(u"insufficient_quota"))
        return ProblemTexts::noCredit(at);
    return withTime(ProblemTexts::tooManyRequests(at), error, at);
}

ChatProblem aboutStatus(const LLMError& error, const Circumstances& at)
{
    switch (error.status) {
    case 0:
        return ProblemTexts::brokeOff(at);
    case 401:
        return ProblemTexts::keyRefused(at);
    case 402:
        return ProblemTexts::noCredit(at);
    case 403:
        return ProblemTexts::notAllowed(at);
    case 404:
        return ProblemTexts::nothingThere(at);
    case 407:
        return ProblemTexts::proxyRefuses(at);
    case 408:
    case 504:
        return ProblemTexts::noAnswer(at);
    case 413:
        return ProblemTexts::tooLarge(at);
    case 429:
        return aboutQuota(error, at);
    default:
        break;
    }
    if (error.status >= 500)
        return withTime(ProblemTexts::serverTrouble(error.status, at), error, at);
    return error.status < 400 ? ProblemTexts::page(at) : ProblemTexts::refused(error.status, at);
}

ChatProblem aboutAnswer(const LLMError& error, const Circumstances& at)
{
    switch (error.complaint()) {
    case ServerComplaint::contextOverflow:
        return ProblemTexts::conversationTooLong();
    case ServerComplaint::imagesUnsupported:
        return ProblemTexts::cannotSee(at);
    case ServerComplaint::modelLoading:
        return ProblemTexts::stillLoading();
    case ServerComplaint::modelUnknown:
        return ProblemTexts::modelUnknown(at);
    case ServerComplaint::toolsUnsupported:
    case ServerComplaint::plain:
        break;
    }
    return error.isPage ? aboutPage(error, at) : aboutStatus(error, at);
}

ChatProblem aboutModel(const LLMError& error, const Circumstances& at)
{
    switch (error.kind) {
    case LLMError::Kind::notConfigured:
        return ProblemLogic::noModel(at.environmentFile);
    case LLMError::Kind::onlyThought:
        return ProblemTexts::onlyThought(at);
    case LLMError::Kind::invalidResponse: {
        auto problem = error.isPage ? ProblemTexts::page(at) : ProblemTexts::noReply(at);
        problem.details = error.description();
        return problem;
    }
    case LLMError::Kind::http: {
        auto problem = aboutAnswer(error, at);
        problem.details = ServerMessage::text(error.text);
        return problem;
    }
    }
    Q_UNREACHABLE();
}

ChatProblem aboutTransport(const TransportError& error, const Circumstances& at)
{
    auto problem = ProblemTexts::transport(error.kind, at);
    problem.details = error.description();
    return problem;
}

/// How many characters two names have in common at their beginning.
auto likeness(const QString& wanted)
{
    return [&wanted](const QString& name) {
        const auto [end, ignored] = std::ranges::mismatch(
            name, wanted, {}, [](QChar c) { return c.toLower(); },
            [](QChar c) { return c.toLower(); });
        return std::distance(name.begin(), end);
    };
}

} // namespace

ChatProblem ProblemLogic::problem(const LLMFailure& failure, const Circumstances& circumstances)
{
    return std::visit(
        Overloaded {
            [&](const LLMError& error) { return aboutModel(error, circumstances); },
            [&](const TransportError& error) { return aboutTransport(error, circumstances); },
        },
        failure);
}

ChatProblem ProblemLogic::noModel(const QString& environmentFile)
{
    return ProblemTexts::noModel(environmentFile);
}

bool ProblemLogic::isWorthRetrying(const LLMError& error)
{
    using Kind = LLMError::Kind;
    if (error.kind == Kind::notConfigured || error.kind == Kind::onlyThought)
        return false;
    const auto about = error.complaint();
    const auto isKnown =
        about != ServerComplaint::plain && about != ServerComplaint::toolsUnsupported;
    // Who names a time does not want to be asked before.
    return !isKnown && error.retryAfter.isEmpty();
}

bool ProblemLogic::concernsModel(const LLMFailure& failure, const AskedModel& asked)
{
    const auto* const error = std::get_if<LLMError>(&failure);
    const auto isAboutModel = error && error->kind == LLMError::Kind::http
        && (error->status == 404 || error->complaint() == ServerComplaint::modelUnknown);
    return isAboutModel && !asked.isManaged;
}

ChatProblem ProblemLogic::offering(
    ChatProblem problem, std::vector<QString> models, const Circumstances& circumstances)
{
    const auto& wanted = circumstances.asked.modelID;
    if (models.empty() || std::ranges::find(models, wanted) != models.end())
        return problem;
    std::ranges::stable_sort(models, std::ranges::greater(), likeness(wanted));
    if (models.size() > mostModels)
        models.resize(mostModels);
    auto offer = ProblemTexts::modelUnknown(circumstances);
    offer.advice = ProblemTexts::modelAdvice();
    offer.action = Action::chooseModel;
    offer.details = std::move(problem.details);
    offer.models = std::move(models);
    return offer;
}

std::optional<TimePoint> ProblemLogic::retryTime(const QByteArray& retryAfter, TimePoint now)
{
    bool isNumber = false;
    const auto number = retryAfter.trimmed().toDouble(&isNumber);
    if (isNumber) {
        const auto isSensible = number >= 0 && number <= duration<double>(longestWait).count();
        return isSensible ? std::optional(now + ceil<milliseconds>(duration<double>(number)))
                          : std::nullopt;
    }
    auto date = QLocale::c().toDateTime(QString::fromLatin1(retryAfter.trimmed()),
        QStringLiteral("ddd, dd MMM yyyy hh:mm:ss 'GMT'"));
    if (!date.isValid())
        return std::nullopt;
    date.setTimeSpec(Qt::UTC);
    const TimePoint moment { milliseconds(date.toMSecsSinceEpoch()) };
    return moment - now <= longestWait ? std::optional(std::max(moment, now)) : std::nullopt;
}

int ProblemLogic::secondsLeft(const ChatProblem& problem, TimePoint now)
{
    return problem.retryAt ? std::max(0, int(ceil<seconds>(*problem.retryAt - now).count())) : 0;
}

bool ProblemLogic::retriesByItself(const ChatProblem& problem, const Wait& wait)
{
    return problem.retryAt && !wait.hasTyped && wait.earlierRetries < mostRetriesByItself
        && *problem.retryAt - wait.since < longestWaitByItself;
}

} // namespace pobblewig
