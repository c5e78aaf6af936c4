#pragma once

#include "PobblewigDesktop/controls/Icons.h"
#include "PobblewigDesktop/controls/Theme.h"

#include <QFrame>
#include <QPropertyAnimation>

class QPushButton;
class QToolButton;

namespace pobblewig {

class WrappedLabel;

/// A message about the conversation. It slides in and stays until it is taken back or closed. Of a
/// long text it shows the first lines; its menu copies the whole text.
class Banner : public QFrame {
    Q_OBJECT

public:
    enum class Kind { notice, error };

    /// `name` is the label's name for assistive technology. Without an action there is no button.
    Banner(Kind kind, const QString& name, const QString& action = {}, QWidget* parent = nullptr);

    void setTheme(const Palette& palette);

    /// An empty text hides the banner.
    void setText(const QString& text);

    /// Without a text there is no button.
    void setAction(const QString& text, Icons::Name icon);
    void setActionEnabled(bool isEnabled);

Q_SIGNALS:
    void actionTriggered();

private:
    void offerCopy();
    void slideIn();

    WrappedLabel* m_label;
    QPushButton* m_action;
    Icons::Name m_actionIcon = Icons::Name::retry;
    Palette m_palette;
    QToolButton* m_close;
    QPropertyAnimation m_slide;
};

} // namespace pobblewig
