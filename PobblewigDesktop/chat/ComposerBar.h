#pragma once

#include "PobblewigDesktop/controls/Theme.h"

#include <QFrame>

class QPushButton;

namespace pobblewig {

class SteadyLabel;

/// A line above the input about a text of the user, with one button that ends it.
class ComposerBar : public QFrame {
    Q_OBJECT

public:
    /// `name` says what the line is about. Without the text `action`, the button shows a cross.
    struct Words {
        QString name;
        QString action;
        QString actionName;
    };

    explicit ComposerBar(const Words& words, QWidget* parent = nullptr);

    void setTheme(const Palette& palette);

    /// Of several lines, the bar shows as much as fits into one. An empty text hides it.
    void setText(const QString& text);

Q_SIGNALS:
    void ended();

private:
    SteadyLabel* m_label;
    QPushButton* m_end;
};

} // namespace pobblewig
