#pragma once

#include "PobblewigDesktop/controls/Theme.h"

#include <QImage>
#include <QWidget>

namespace pobblewig {

/// A picture on which the user draws a rectangle. Arrows move it, Shift+arrows change its size.
class RegionView : public QWidget {
    Q_OBJECT

public:
    explicit RegionView(const QImage& picture, QWidget* parent = nullptr);

    void setTheme(const Palette& palette);

    /// What lies in the rectangle.
    QImage part() const { return m_picture.copy(m_region); }

    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    /// Where the picture is shown.
    QRectF place() const;
    double scale() const { return place().width() / m_picture.width(); }
    QPoint inPicture(QPointF point) const;
    void setRegion(const QRect& region);

    QImage m_picture;
    QRect m_region;
    QPoint m_pressedAt;
    QColor m_accent;
};

} // namespace pobblewig
