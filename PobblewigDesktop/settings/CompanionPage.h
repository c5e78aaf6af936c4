#pragma once

#include "PobblewigDesktop/pages/CatalogPage.h"

namespace pobblewig {

class WrappedLabel;

/// The companion's looks and voice, and what there is to know of its memes.
class CompanionPage : public CatalogPage {
    Q_OBJECT

public:
    /// `coordinator` must outlive the page.
    CompanionPage(const Settings& settings, AppCoordinator& coordinator);

    void showState(const PublishedState& state) override;

private:
    void addLibrary();
    void openFolder();

    MemesFeature& m_memes;
    WrappedLabel* m_library;
    WrappedLabel* m_outcome;
};

} // namespace pobblewig
