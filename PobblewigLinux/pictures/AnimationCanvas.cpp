#include "PobblewigLinux/pictures/AnimationCanvas.h"

#include "PobblewigLinux/pictures/PictureReel.h"

#include <QPainter>

namespace pobblewig {

AnimationCanvas::AnimationCanvas(QSize size)
    : m_picture(size, PictureReel::format)
{
    m_picture.fill(Qt::transparent);
}

QImage& AnimationCanvas::next(const QRect& area, Disposal disposal)
{
    if (m_disposal == Disposal::restore)
        m_picture = std::exchange(m_before, QImage());
    if (m_disposal == Disposal::clear) {
        QPainter painter(&m_picture);
        painter.setCompositionMode(QPainter::CompositionMode_Source);
        painter.fillRect(m_area, Qt::transparent);
    }
    m_area = area;
    m_disposal = disposal;
    if (disposal == Disposal::restore)
        m_before = m_picture;
    m_picture.detach();
    return m_picture;
}

} // namespace pobblewig
