#pragma once

#include <QTextLayout>

namespace pobblewig::EmojiFont {

/// Formats that show the emoji of a text in colour. None where no font has them.
QList<QTextLayout::FormatRange> formats(QStringView text);

} // namespace pobblewig::EmojiFont
