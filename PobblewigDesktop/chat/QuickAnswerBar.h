#pragma once

#include "presence/QuickAnswerLogic.h"

#include <QWidget>

class QGridLayout;
class QPushButton;

namespace pobblewig {

/// The answers to a message that the companion began, each on a button of its own. Invisible while
/// there is nothing to answer.
class QuickAnswerBar : public QWidget {
    Q_OBJECT

public:
    explicit QuickAnswerBar(QWidget* parent = nullptr);

    void setQuestion(const std::optional<QuickQuestion>& question);

Q_SIGNALS:
    void answered(const QUuid& record, pobblewig::ProactiveLogic::QuickAnswer answer);

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    void addButtons(const QuickQuestion& question);
    void arrange();
    int columns() const;

    std::optional<QuickQuestion> m_question;
    QGridLayout* m_grid;
    std::vector<QPushButton*> m_buttons;
};

} // namespace pobblewig
