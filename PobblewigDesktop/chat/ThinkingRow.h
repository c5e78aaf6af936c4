#pragma once

#include "PobblewigDesktop/controls/Theme.h"
#include "conversation/TurnWatch.h"
#include "foundation/Moment.h"

#include <QFrame>
#include <QTimer>

class QPlainTextEdit;
class QPushButton;

namespace pobblewig {

/// What the model thinks, folded into one line with the time until the user opens it. Hidden while
/// there is nothing.
class ThinkingRow : public QFrame {
    Q_OBJECT

public:
    /// The watch must outlive the row.
    ThinkingRow(const TurnWatch& watch, Clock clock, QWidget* parent = nullptr);

    void setTheme(const Palette& palette);

    QSize sizeHint() const override;

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    void follow();
    void showWords();
    void showText();
    void toggle();
    void showChevron();
    void place();

    const TurnWatch& m_watch;
    Clock m_clock;
    Palette m_palette;
    QPushButton* m_toggle;
    QPlainTextEdit* m_text;
    /// The end of the thoughts that is on the screen.
    QString m_shown;
    bool m_followsEnd = true;
    QTimer m_eachSecond;
    QTimer m_nextText;
};

} // namespace pobblewig
