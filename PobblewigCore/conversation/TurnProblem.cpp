#include "conversation/TurnProblem.h"

#include "conversation/ProblemLogic.h"

#include <utility>

namespace pobblewig {

namespace {

ModelUse use(const AskedModel& asked)
{
    return asked.isForPictures ? ModelUse::vision : ModelUse::main;
}

} // namespace

TurnProblem::TurnProblem(ModelProviding& models, const Moment& moment, QString environmentFile)
    : m_models(models)
    , m_moment(moment)
    , m_environmentFile(std::move(environmentFile))
{
}

void TurnProblem::report(const LLMFailure& failure, const AskedModel& asked)
{
    m_asked = asked;
    begin(ProblemLogic::problem(failure, { asked, m_environmentFile, m_moment.now() }),
        description(failure));
    if (ProblemLogic::concernsModel(failure, asked))
        spawn(offerModels(asked));
}

void TurnProblem::report(const QString& text)
{
    begin({ .what = text }, text);
}

void TurnProblem::clear()
{
    m_text.reset();
    if (m_current)
        show(std::nullopt);
}

void TurnProblem::chooseModel(const QString& modelID)
{
    m_models.chooseModel(use(m_asked), modelID);
}

void TurnProblem::begin(ChatProblem problem, const QString& text)
{
    m_text = text;
    m_since = m_moment.now();
    show(std::move(problem));
}

void TurnProblem::show(std::optional<ChatProblem> problem)
{
    m_current = std::move(problem);
    Q_EMIT changed();
}

Task<> TurnProblem::offerModels(AskedModel asked)
{
    const auto before = m_current;
    const std::shared_ptr<LLMProvider> provider = co_await m_models.makeProvider(use(asked));
    // Both can have changed since the request.
    if (!provider || provider->configuration().baseURL != asked.server)
        co_return;
    auto models = co_await provider->models();
    if (m_current != before)
        co_return;
    auto offer = ProblemLogic::offering(
        *before, std::move(models), { asked, m_environmentFile, m_moment.now() });
    if (offer != *before)
        show(std::move(offer));
}

} // namespace pobblewig
