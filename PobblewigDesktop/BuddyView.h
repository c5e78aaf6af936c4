#pragma once

#include "buddy/BuddyFramePacing.h"
#include "buddy/BuddyLayout.h"

#include <QAbstractButton>
#include <QElapsedTimer>
#include <QRegion>
#include <QTimer>

namespace pobblewig {

/// Draws the buddy and keeps it breathing. It is as large as its scale asks for.
///
/// Every pixel of a sprite is a whole number of device pixels, at any scale of the screen. A frame
/// that would look like the one before is not painted.
///
/// To assistive technology it is a button; the mouse is left to the window around it.
class BuddyView : public QAbstractButton {
    Q_OBJECT

public:
    static constexpr double smallestScale = 0.5;
    static constexpr double largestScale = 3;

    explicit BuddyView(QWidget* parent = nullptr);

    /// The parts that the buddy covers at present, in device pixels.
    const QRegion& shape() const { return m_shape; }

    void setSprite(const MascotSprite& sprite);
    void setSizeScale(double sizeScale);

    /// Follows the scale of the screen that the view is on.
    void fitToScreen();

    /// While nobody can see the buddy it hardly moves and is not painted.
    void setOccluded(bool isOccluded);

Q_SIGNALS:
    /// Comes right before the frame of that shape is painted.
    void shapeChanged();

    /// Once, after the first frame.
    void appeared();

protected:
    void paintEvent(QPaintEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;

private:
    void tick();
    void updatePacing();
    void drawAnew();
    QRegion shapeOf(const BuddyLayout& layout) const;

    BuddyBitmap m_bitmap;
    double m_sizeScale = 1;
    bool m_isOccluded = false;
    bool m_hasAppeared = false;
    BuddyCanvas m_canvas;
    BuddyLayout m_layout;
    QRegion m_shape;
    QElapsedTimer m_sinceStart;
    QTimer m_frameTimer;
};

} // namespace pobblewig
