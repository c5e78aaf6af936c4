#pragma once

#include "AppCoordinator.h"
#include "PobblewigDesktop/buddy/BuddyView.h"

namespace pobblewig {

/// Shows the memes on the buddy: reactions for a moment, and those that it wears.
class MemeStage : public QObject {
    Q_OBJECT

public:
    explicit MemeStage(BuddyView& view);

    /// Called once. The coordinator must outlive this object.
    void follow(AppCoordinator& coordinator);

private:
    /// What decides about the memes that the buddy wears.
    struct Wardrobe {
        QString mascot;
        int scans = 0;

        bool operator==(const Wardrobe&) const = default;
    };

    void showState();
    void wear(const std::map<MemeMascotSlot, Meme>& memes);

    BuddyView& m_view;
    AppCoordinator* m_coordinator = nullptr;
    Wardrobe m_wardrobe;
};

} // namespace pobblewig
