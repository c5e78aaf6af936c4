#pragma once

#include "PobblewigDesktop/controls/Theme.h"
#include "conversation/proposals/ProposalAnswer.h"
#include "conversation/proposals/ProposalTexts.h"

#include <QPropertyAnimation>
#include <QScrollArea>
#include <QTimer>

#include <vector>

class QVBoxLayout;

namespace pobblewig {

class ProposalBanner;

/// The changes that wait for the user's word, one banner each, in two fifths of the window at most.
///
/// New ones slide in. While anything here moves, and for a moment after, no press of the pointer
/// reaches an answer: one that was meant for what had stood there must not give it. Nor does one on
/// a banner that is not wholly in sight.
class ProposalBanners : public QScrollArea {
    Q_OBJECT

public:
    explicit ProposalBanners(QWidget& panel);

    int heightForWidth(int width) const override;

    void setTheme(const Palette& palette);

    /// What stays keeps its banner, and so the focus and a press that has begun. The focus never
    /// comes here by itself.
    void setProposals(const std::vector<RuleProposal>& proposals, const AppSettings& settings,
        const Calendar& calendar);

    /// Lets the user answer again what is still here.
    void allowAnswer(const QString& proposalId);

Q_SIGNALS:
    void answered(const QString& proposalId, ProposalAnswer answer);

    /// An answer was given by the keyboard, and the focus is nowhere now.
    void focusGivenUp();

protected:
    bool event(QEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;
    void moveEvent(QMoveEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void scrollContentsBy(int dx, int dy) override;

private:
    ProposalBanner* banner(const QString& proposalId) const;
    void keepOnly(const std::vector<RuleProposal>& proposals);
    ProposalBanner* add(const RuleProposal& proposal);
    void orderControls(const ProposalBanner& newest);
    void slideFrom(int height);
    void arrive();
    void showNewest();

    /// The whole banner, if it fits. Yields whether anything had to move.
    bool reveal(QWidget& control);
    void hold();
    void settle();

    Palette m_palette;
    QWidget* m_column;
    QVBoxLayout* m_layout;
    std::vector<ProposalBanner*> m_banners;
    QPropertyAnimation m_slide;
    QTimer m_settling;
    /// The newest is shown unless the user is busy with another.
    bool m_isArriving = false;
};

} // namespace pobblewig
