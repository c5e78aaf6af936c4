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

/// What a banner asks.
struct BannerQuestion {
    QString id;
    /// For assistive technology.
    QString name;
    QString confirm;
    QString dismiss;
    /// Empty if this is no answer.
    QString allowAlways;
};

/// A question that waits for the user: what it is about, and the answers to choose from. A
/// group for assistive technology. Only the pointer, Tab and Space reach the answers; Enter does
/// not.
class ProposalBanner : public QGroupBox {
    Q_OBJECT

public:
    explicit ProposalBanner(const BannerQuestion& question, QWidget* parent = nullptr);

    const QString& id() const { return m_id; }
    const ProposalWords& words() const { return m_words; }

    /// In the order in which Tab reaches them.
    std::vector<QWidget*> controls() const;

    void setTheme(const Palette& palette);
    void setWords(const ProposalWords& words);

    /// A text that is not shown in full leaves the usual answers in sight at this height.
    void setRoom(int height);

    /// Sets whether the user can answer. The first answer makes it false.
    void setAnswerable(bool isAnswerable);

    /// Called before the banner goes.
    void giveUpFocus();

Q_SIGNALS:
    void answered(const QString& id, ProposalAnswer answer);

    /// Nothing has the focus now.
    void focusGivenUp();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void showEvent(QShowEvent* event) override;

private:
    void addAnswers(const BannerQuestion& question);
    QPushButton* answer(const QString& name, const QString& role, ProposalAnswer answer);
    void arrange();
    void toggle();
    void showLines();
    int linesInRoom() const;
    void limitLines();

    QString m_id;
    ProposalWords m_words;
    QLabel* m_title;
    QToolButton* m_expander;
    QVBoxLayout* m_column;
    QBoxLayout* m_answerRow;
    std::vector<WrappedLabel*> m_lines;
    std::vector<QPushButton*> m_answers;
    int m_room = 0;
    bool m_isExpanded = false;
    bool m_isAnnounced = false;
    QIcon m_more;
    QIcon m_less;
};

} // namespace pobblewig
