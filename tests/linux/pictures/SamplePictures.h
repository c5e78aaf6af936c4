#pragma once

#include <QImage>

#include <map>
#include <vector>

/// Small pictures in files of each format, as other programs write them.
namespace pobblewig::SamplePictures {

struct Frame {
    QImage picture;
    /// In hundredths of a second.
    int delay = 10;
    QPoint at = {};
    /// What becomes of the frame, by the number that the format has for it.
    int disposal = 0;
    bool blends = true;
};

/// Rows of pixels: "rg/.b" is red and green above nothing and blue. "h" is half of white.
QImage picture(const QString& rows);

/// The same in return, by the nearest color.
QString rows(const QImage& picture);

enum class Lines { inOrder, interlaced };

QByteArray gif(QSize canvas, const std::vector<Frame>& frames, Lines lines = Lines::inOrder);

/// With a picture in front that is no part of the animation, if there is one.
QByteArray apng(QSize canvas, const std::vector<Frame>& frames, const QImage& still = {});

/// The frames are as large as the canvas.
QByteArray webp(QSize canvas, const std::vector<Frame>& frames);

/// "PNG", "JPG" or "WEBP".
QByteArray still(const QImage& picture, const char* format);

/// With the camera's note on how it was held.
QByteArray heldJPEG(const QImage& picture, char orientation);

/// In the four inks of a printer.
QByteArray inkJPEG(const QImage& picture);

/// One of each kind, by name.
std::map<QString, QByteArray> all();

} // namespace pobblewig::SamplePictures
