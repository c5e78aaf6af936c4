#include "PobblewigDesktop/assistant/ModelStep.h"

#include "PobblewigDesktop/controls/PanelStyle.h"
#include "PobblewigDesktop/controls/WrappedLabel.h"
#include "PobblewigDesktop/pages/LaneTexts.h"
#include "PobblewigDesktop/pages/ModelForm.h"

#include <QCoroTask>

namespace pobblewig {

ModelStep::ModelStep(ModelDesk& desk)
    : FormPage(tr("The model that answers"))
    , m_desk(desk)
    , m_present(new WrappedLabel({}))
{
    addText(tr("Pobblewig talks through a language model: one that runs on this computer, "
               "or one at a service, for which you need its address and a key."));
    addGap();
    PanelStyle::setRole(*m_present, QStringLiteral("detail"));
    add(*m_present);
    auto* const form = new ModelForm(desk, ModelUse::main);
    connect(form, &ModelForm::chosen, this, &ModelStep::refresh);
    add(*form);
}

void ModelStep::showEvent(QShowEvent* event)
{
    FormPage::showEvent(event);
    refresh();
}

void ModelStep::refresh()
{
    QCoro::connect(m_desk.lanes(), this,
        [this](const std::vector<LaneState>& lanes) { showLane(lanes.front()); });
}

void ModelStep::showLane(const LaneState& lane)
{
    if (lane.source == ModelSource::demo)
        PanelStyle::setText(*m_present,
            tr("The built-in demo answers for now. It follows a handful of rules and is enough to "
               "look around. Continue to keep it, and choose a model whenever you like."));
    else
        PanelStyle::setText(*m_present,
            lane.modelID.isEmpty() ? LaneTexts::state(lane)
                                   : tr("In use: %1").arg(LaneTexts::state(lane)));
}

} // namespace pobblewig
