#include "PobblewigDesktop/controls/EmojiFont.h"

#include "markdown/EmojiRuns.h"

#include <QFontDatabase>

namespace pobblewig {

namespace {

/// Other fonts have some emoji too, in black, and would be asked first.
QTextCharFormat findFormat()
{
    QTextCharFormat format;
    const auto families = QFontDatabase::families();
    for (const auto* const family :
        { u"Noto Color Emoji", u"Twemoji", u"Twitter Color Emoji", u"JoyPixels", u"OpenMoji" }) {
        if (families.contains(QStringView(family))) {
            format.setFontFamilies(QStringList { QStringView(family).toString() });
            break;
        }
    }
    return format;
}

} // namespace

QList<QTextLayout::FormatRange> EmojiFont::formats(QStringView text)
{
    QList<QTextLayout::FormatRange> formats;
    const auto runs = emojiRuns(text);
    if (runs.empty())
        return formats;
    static const auto format = findFormat();
    for (const auto& run : runs)
        formats.append({ static_cast<int>(run.start), static_cast<int>(run.length), format });
    return formats;
}

} // namespace pobblewig
