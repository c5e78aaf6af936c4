#pragma once

#include "PobblewigDesktop/controls/Theme.h"
#include "conversation/proposals/ProposalAnswer.h"
#include "conversation/proposals/ProposalTexts.h"

#include <QPropertyAnimation>
#include <QScrollArea>
#include <QTimer>

#include <functional>
#include <vector>

class QVBoxLayout;

namespace pobblewig {

class ProposalBanner;
class ProposalFold;
struct BannerQuestion;

/// The changes that wait for the user's answer, and the question whether the model may look at the
/// screen, one banner each, in at most two fifths of the window. Several proposals are folded into
/// one line until the user wants to see them.
///
/// New banners slide in. While anything moves, and for a moment afterwards, a press of the pointer
/// does not reach an answer, because it was meant for whatever had been there before. A press on a
/// banner that is partly hidden only reveals it.
class ProposalBanners : public QScrollArea {
    Q_OBJECT

public:
    /// The id of the question for a picture. No proposal has it.
    static constexpr QStringView captureId = u"";

    explicit ProposalBanners(QWidget& panel);

    /// Adds the line and the banners below it.
    void addTo(QVBoxLayout& column);
    int heightForWidth(int width) const override;

    void setTheme(const Palette& palette);

    /// A proposal that stays keeps its banner, its focus and a press that has begun. Banners never
    /// take the focus by themselves.
    void setProposals(const std::vector<RuleProposal>& proposals, const AppSettings& settings,
        const Calendar& calendar);

    /// Asks whether the model may look at the screen, or no longer.
    void setCaptureQuestion(bool isAsked);

    /// Lets the user answer this proposal again if it is still here.
    void allowAnswer(const QString& proposalId);

Q_SIGNALS:
    void answered(const QString& id, ProposalAnswer answer);

    /// The user answered by keyboard, and nothing has the focus now.
    void focusGivenUp();

protected:
    bool event(QEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;
    void moveEvent(QMoveEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void scrollContentsBy(int dx, int dy) override;

private:
    using Unwanted = std::function<bool(const ProposalBanner& banner)>;

    ProposalBanner* banner(QStringView id) const;
    void remove(const Unwanted& isUnwanted);
    /// Returns whether the question is new.
    bool show(const BannerQuestion& question, const ProposalWords& words);
    ProposalBanner* add(const BannerQuestion& question);
    void showAll(int heightBefore, bool hasNew);
    bool isBusy() const;
    void fold();
    void toggleFold();
    void dismissAll();
    std::vector<ProposalBanner*> proposalBanners() const;
    int room() const;
    int shownHeight() const { return isHidden() ? 0 : height(); }
    void orderControls(const ProposalBanner& newest);
    void slideFrom(int height);
    void arrive();
    void showNewest();

    /// Reveals the control with its whole banner, if that fits. Returns whether anything had to
    /// move.
    bool reveal(QWidget& control);
    void hold();
    void settle();

    Palette m_palette;
    ProposalFold* m_fold;
    QWidget* m_column;
    QVBoxLayout* m_layout;
    std::vector<ProposalBanner*> m_banners;
    QPropertyAnimation m_slide;
    QTimer m_settling;
    /// Whether the newest banner is to be shown, as the user is not busy with another.
    bool m_isArriving = false;
    /// The user wants to see each of several proposals.
    bool m_isUnfolded = false;
};

} // namespace pobblewig
