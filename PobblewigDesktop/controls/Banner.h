#pragma once

#include "PobblewigDesktop/controls/Icons.h"
#include "PobblewigDesktop/controls/Theme.h"

#include <QFrame>
#include <QPropertyAnimation>

class QBoxLayout;
class QPlainTextEdit;
class QPushButton;
class QToolButton;

namespace pobblewig {

class WrappedLabel;

/// A message about the conversation: what there is to say, what to do, one action, and particulars
/// for those who want them. It slides in and stays until it is taken back or closed. Of a long text
/// it shows the first lines; its menu copies the whole text.
class Banner : public QFrame {
    Q_OBJECT

public:
    enum class Kind { notice, error };

    /// `name` is the label's name for assistive technology. Without an action there is no button.
    Banner(Kind kind, const QString& name, const QString& action = {}, QWidget* parent = nullptr);

    void setTheme(const Palette& palette);

    /// An empty text hides the banner.
    void setText(const QString& text);

    /// A second, quieter paragraph.
    void setAdvice(const QString& text);

    /// Without a text there is no button.
    void setAction(const QString& text, Icons::Name icon);
    void setActionEnabled(bool isEnabled);

    /// With choices, the action opens a menu of them.
    void setChoices(const std::vector<QString>& choices);

    /// A text that "Details" shows, hidden at first. Without a text there is no such button.
    void setDetails(const QString& text);
    void showDetails(bool areShown);

Q_SIGNALS:
    void actionTriggered();
    void chosen(const QString& choice);

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    void arrange(Kind kind);
    void arrangeDetails();
    void connectControls();
    void showAdvice();
    void fitButtons();
    void offerCopy();
    void slideIn();

    WrappedLabel* m_label;
    WrappedLabel* m_advice;
    QPushButton* m_action;
    QPushButton* m_more;
    QPlainTextEdit* m_details;
    QPushButton* m_copy;
    QBoxLayout* m_buttons;
    Icons::Name m_actionIcon = Icons::Name::retry;
    Palette m_palette;
    QToolButton* m_close;
    QPropertyAnimation m_slide;
};

} // namespace pobblewig
