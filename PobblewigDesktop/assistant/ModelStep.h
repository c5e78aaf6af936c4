#pragma once

#include "PobblewigDesktop/pages/FormPage.h"
#include "wire/ModelDesk.h"

namespace pobblewig {

class WrappedLabel;

/// The choice of the model that answers.
class ModelStep : public FormPage {
    Q_OBJECT

public:
    /// The desk must outlive the page.
    explicit ModelStep(ModelDesk& desk);

    void showState(const PublishedState&) override { }

protected:
    void showEvent(QShowEvent* event) override;

private:
    void refresh();
    void showLane(const LaneState& lane);

    ModelDesk& m_desk;
    WrappedLabel* m_present;
};

} // namespace pobblewig
