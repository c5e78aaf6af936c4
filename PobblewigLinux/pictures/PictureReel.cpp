#include "PobblewigLinux/pictures/PictureReel.h"

namespace pobblewig {

namespace {

using Decoding = MemePictureDecoding;

qint64 area(QSize size)
{
    return qint64(size.width()) * size.height();
}

} // namespace

PictureReel::PictureReel(const PictureLimits& limits)
    : m_limits(limits)
{
}

PictureStep PictureReel::admit(QSize size) const
{
    if (size.isEmpty())
        return tl::unexpected(MemePictureProblem::broken);
    if (area(size) > m_limits.canvas)
        return tl::unexpected(MemePictureProblem::tooLarge);
    return {};
}

PictureStep PictureReel::spend(QSize size)
{
    m_limits.work -= area(size);
    if (m_limits.work < 0)
        return tl::unexpected(MemePictureProblem::tooLarge);
    return {};
}

void PictureReel::add(QImage frame, double seconds)
{
    const auto size = fitted(frame.size());
    auto standard = std::move(frame).convertToFormat(format);
    if (size != standard.size())
        standard = standard.scaled(size, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    m_frames.push_back(std::move(standard));
    m_durations.push_back(
        seconds > 0 ? std::max(seconds, Decoding::shortestDelay) : Decoding::standardDelay);
}

PictureResult PictureReel::finish()
{
    if (m_frames.empty())
        return tl::unexpected(MemePictureProblem::broken);
    return MemeAnimation(std::move(m_frames), std::move(m_durations));
}

QSize PictureReel::fitted(QSize size)
{
    const auto longest = std::max(size.width(), size.height());
    if (longest <= Decoding::longestSide)
        return size;
    return (QSizeF(size) * Decoding::longestSide / longest).toSize().expandedTo(QSize(1, 1));
}

} // namespace pobblewig
