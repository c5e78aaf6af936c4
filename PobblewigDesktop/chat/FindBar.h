#pragma once

#include "PobblewigDesktop/controls/Theme.h"

#include <QFrame>

class QAction;
class QLabel;
class QLineEdit;
class QToolButton;

namespace pobblewig {

/// Where the user writes what to find, sees how often it is there and steps through it.
class FindBar : public QFrame {
    Q_OBJECT

public:
    explicit FindBar(QWidget* parent = nullptr);

    QString wanted() const;

    void setTheme(const Palette& palette);

    /// Shows the bar, ready for other words.
    void open();
    void showCount(std::optional<std::size_t> current, std::size_t count);

Q_SIGNALS:
    void wantedChanged();

    /// To the next (1) or the previous (-1) match.
    void stepRequested(int step);
    void closeRequested();

protected:
    void keyPressEvent(QKeyEvent* event) override;

private:
    QLineEdit* m_field;
    QAction* m_symbol;
    QLabel* m_count;
    QToolButton* m_previous;
    QToolButton* m_next;
    QToolButton* m_close;
};

} // namespace pobblewig
