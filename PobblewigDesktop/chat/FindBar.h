#pragma once

#include "PobblewigDesktop/controls/Theme.h"

#include <QFrame>
#include <QPointer>

class QAction;
class QLabel;
class QLineEdit;
class QToolButton;

namespace pobblewig {

/// A field for the text to find. The bar shows the number of matches and steps through them.
class FindBar : public QFrame {
    Q_OBJECT

public:
    explicit FindBar(QWidget* parent = nullptr);

    QString wanted() const;

    void setTheme(const Palette& palette);

    /// Shows the bar, ready for a new text.
    void open();

    /// Gives the focus back to the control that had it before.
    void returnFocus();
    void showCount(std::optional<std::size_t> current, std::size_t count);

Q_SIGNALS:
    void wantedChanged();

    /// `step` is 1 for the next match and -1 for the previous one.
    void stepRequested(int step);
    void closeRequested();

protected:
    void keyPressEvent(QKeyEvent* event) override;

private:
    QPointer<QWidget> m_before;
    QLineEdit* m_field;
    QAction* m_symbol;
    QLabel* m_count;
    QToolButton* m_previous;
    QToolButton* m_next;
    QToolButton* m_close;
};

} // namespace pobblewig
