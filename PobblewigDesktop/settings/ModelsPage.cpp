#include "PobblewigDesktop/settings/ModelsPage.h"

#include "PobblewigDesktop/pages/FieldRow.h"
#include "PobblewigDesktop/pages/LaneTexts.h"
#include "PobblewigDesktop/pages/ModelForm.h"
#include "conversation/ProblemLogic.h"

#include <QCoroTask>
#include <QPushButton>

#include <algorithm>

namespace pobblewig {

ModelsPage::ModelsPage(ModelDesk& desk)
    : FormPage(tr("Models"))
    , m_desk(desk)
{
    addExplanation(tr("Messages go to the server that you name here, and nowhere else."));
    for (const auto use : { ModelUse::main, ModelUse::vision, ModelUse::librarian })
        addLane(use);
    addHeading(tr("Choose the model that answers"));
    auto* const form = new ModelForm(desk, ModelUse::main);
    connect(form, &ModelForm::chosen, this, &ModelsPage::refresh);
    add(*form);
}

void ModelsPage::showEvent(QShowEvent* event)
{
    FormPage::showEvent(event);
    // A keyring can ask for a password, so it is not opened before.
    refresh();
}

void ModelsPage::addLane(ModelUse use)
{
    const auto name = LaneTexts::name(use);
    auto* const button = new QPushButton(tr("Test"));
    button->setAutoDefault(false);
    auto* const row = new FieldRow({ name }, *button);
    button->setAccessibleName(tr("Test: %1").arg(name));
    m_lanes.push_back({ use, row });
    connect(button, &QPushButton::clicked, this, [this, lane = m_lanes.back()] { tryOut(lane); });
    add(*row);
}

void ModelsPage::refresh()
{
    QCoro::connect(
        m_desk.lanes(), this, [this](const std::vector<LaneState>& lanes) { showLanes(lanes); });
}

void ModelsPage::showLanes(const std::vector<LaneState>& lanes)
{
    for (const auto& lane : m_lanes) {
        const auto state = std::ranges::find(lanes, lane.use, &LaneState::use);
        if (state != lanes.end())
            lane.row->setExplanation(LaneTexts::state(*state));
    }
}

void ModelsPage::tryOut(const Lane& lane)
{
    lane.row->setProblem({});
    lane.row->setExplanation(tr("Asking the model…"));
    QCoro::connect(m_desk.tryOut(lane.use), this, [this, lane](const ModelDesk::Trial& trial) {
        refresh();
        if (trial)
            return;
        const auto problem = ProblemLogic::problem(trial.error(),
            { .asked = {}, .environmentFile = m_desk.environmentFile(), .now = systemNow() });
        lane.row->setProblem(problem.what);
    });
}

} // namespace pobblewig
