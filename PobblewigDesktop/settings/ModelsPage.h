#pragma once

#include "PobblewigDesktop/pages/FormPage.h"
#include "wire/ModelDesk.h"

namespace pobblewig {

/// Which models answer, where they are named, and the choice of another one.
class ModelsPage : public FormPage {
    Q_OBJECT

public:
    /// The desk must outlive the page.
    explicit ModelsPage(ModelDesk& desk);

    void showState(const PublishedState&) override { }

protected:
    void showEvent(QShowEvent* event) override;

private:
    struct Lane {
        ModelUse use;
        FieldRow* row;
    };

    void addLane(ModelUse use);
    void refresh();
    void showLanes(const std::vector<LaneState>& lanes);
    void tryOut(const Lane& lane);

    ModelDesk& m_desk;
    std::vector<Lane> m_lanes;
};

} // namespace pobblewig
