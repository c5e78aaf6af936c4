#pragma once

#include "PobblewigDesktop/bubble/BubblePlacement.h"
#include "PobblewigDesktop/controls/Theme.h"
#include "buddy/BuddyWindowSystem.h"

#include <QPainterPath>
#include <QWidget>

#include <optional>

class QToolButton;

namespace pobblewig {

class WrappedLabel;

/// A bubble with a few words and a tail towards the buddy: above all windows, without the keyboard.
/// A click opens what it is about; its button, or a pull to either side, dismisses it.
class BubbleWindow : public QWidget {
    Q_OBJECT

public:
    /// How far it has to be pulled to be dismissed, in pixels.
    static constexpr int dismissalDistance = 40;

    explicit BubbleWindow(BuddyWindowSystem& system);

    void setTheme(const Palette& palette);

    /// Sets the text, whose lines may be divided by line feeds. A longer one ends in "…".
    void setText(const QString& text);

    /// Both rectangles are in the desktop's coordinates.
    void standBeside(const QRect& buddy, const QRect& screen);

Q_SIGNALS:
    void clicked();
    void dismissed();

    /// Whether the pointer is on it: what is read does not go away.
    void heldChanged(bool isHeld);

protected:
    bool event(QEvent* event) override;
    void enterEvent(QEnterEvent* event) override;
    void leaveEvent(QEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    QSize bodySize() const;
    QPainterPath outline(const BubblePlacement::Place& place) const;
    void cutOut();

    BuddyWindowSystem& m_system;
    Palette m_palette;
    WrappedLabel* m_label;
    QToolButton* m_close;
    /// In the window's own coordinates.
    QPainterPath m_outline;
    /// Where the window stands unless it is pulled.
    QPoint m_corner;
    std::optional<QPoint> m_pressedAt;
};

} // namespace pobblewig
