#include "PobblewigDesktop/assistant/CompanionStep.h"

#include "PobblewigDesktop/controls/PanelStyle.h"
#include "PobblewigDesktop/controls/WrappedLabel.h"
#include "prompts/PersonaPrompts.h"

namespace pobblewig {

CompanionStep::CompanionStep(AppCoordinator& coordinator)
    : CatalogPage(tr("Your companion"), coordinator)
    , m_example(new WrappedLabel({}))
{
    addExplanation(tr("The buddy at the edge of your screen changes with you."));
    addSettings(settings({ u"mascot", u"mascotColorScheme", u"companionPersona" }));
    PanelStyle::setRole(*m_example, QStringLiteral("detail"));
    m_example->setAccessibleName(tr("How that sounds"));
    add(*m_example);
    addSettings(settings({ u"roles" }));
}

void CompanionStep::showState(const PublishedState& state)
{
    CatalogPage::showState(state);
    const auto persona = state.of<SettingsState>().settings.companionPersona;
    auto example = PersonaPrompts::example(persona);
    PanelStyle::setText(*m_example,
        tr("You: %1").arg(example.question) + QChar(QChar::LineSeparator)
            + tr("Pobblewig: %1").arg(example.reply.replace(u'\n', u' ')));
}

} // namespace pobblewig
