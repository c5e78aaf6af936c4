#pragma once

#include "PobblewigDesktop/controls/Theme.h"
#include "conversation/proposals/ProposalAnswer.h"
#include "conversation/proposals/ProposalTexts.h"

#include <QGroupBox>

#include <vector>

class QBoxLayout;
class QLabel;
class QPushButton;
class QToolButton;
class QVBoxLayout;

namespace pobblewig {

class WrappedLabel;

/// A change that waits for the user's answer: its description, and the answers to choose from. A
/// group for assistive technology. Only the pointer, Tab and Space reach the answers; Enter does
/// not.
class ProposalBanner : public QGroupBox {
    Q_OBJECT

public:
    explicit ProposalBanner(const RuleProposal& proposal, QWidget* parent = nullptr);

    const QString& proposalId() const { return m_proposalId; }
    const ProposalWords& words() const { return m_words; }

    /// In the order in which Tab reaches them.
    std::vector<QWidget*> controls() const;

    void setTheme(const Palette& palette);
    void setWords(const ProposalWords& words);

    /// Sets whether the user can answer. The first answer makes it false.
    void setAnswerable(bool isAnswerable);

    /// Called before the banner goes.
    void giveUpFocus();

Q_SIGNALS:
    void answered(const QString& proposalId, ProposalAnswer answer);

    /// Nothing has the focus now.
    void focusGivenUp();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void showEvent(QShowEvent* event) override;

private:
    void addAnswers(bool canAllowAlways);
    QPushButton* answer(const QString& name, const QString& role, ProposalAnswer answer);
    void arrange();
    void toggle();
    void showLines();
    void showExpander();

    QString m_proposalId;
    ProposalWords m_words;
    QLabel* m_title;
    QToolButton* m_expander;
    QVBoxLayout* m_column;
    QBoxLayout* m_answerRow;
    std::vector<WrappedLabel*> m_lines;
    std::vector<QPushButton*> m_answers;
    bool m_isExpanded = false;
    bool m_isAnnounced = false;
    QIcon m_more;
    QIcon m_less;
};

} // namespace pobblewig
