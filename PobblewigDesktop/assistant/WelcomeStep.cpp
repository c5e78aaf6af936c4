#include "PobblewigDesktop/assistant/WelcomeStep.h"

#include <QHBoxLayout>

namespace pobblewig {

namespace {

constexpr int stageHeight = 150;

} // namespace

WelcomeStep::WelcomeStep(std::unique_ptr<QWidget> buddy)
    : FormPage(tr("Welcome to Pobblewig"))
{
    auto* const stage = new QWidget;
    stage->setFixedHeight(stageHeight);
    auto* const row = new QHBoxLayout(stage);
    row->addWidget(buddy.release(), 0, Qt::AlignHCenter | Qt::AlignBottom);
    add(*stage);
    addText(tr("A small companion that lives at the edge of your screen. Click it to talk: "
               "about your work, your deadlines, or nothing in particular. It remembers "
               "what matters to you, so that you need not say it twice."));
    addText(tr("All that it learns is kept in plain files on this computer. Only the model "
               "that you choose gets to read it, with what you say."));
    addText(tr("The next pages take two minutes. Skip what you like: everything can be "
               "changed later in the settings."));
}

} // namespace pobblewig
