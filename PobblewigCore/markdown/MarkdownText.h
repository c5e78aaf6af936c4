#pragma once

#include "markdown/StyledText.h"

namespace pobblewig {

/// A Markdown text and what it shows. While the text grows, only its last part is read again.
class MarkdownText {
public:
    enum class Growth {
        /// The text is whole.
        whole,
        /// More may follow, so what the last signs mean is not known.
        growing,
    };

    /// Returns how many characters at the beginning show as before.
    qsizetype setSource(const QString& source, Growth growth);

    const QString& source() const { return m_source; }
    const StyledText& shown() const { return m_shown; }

private:
    /// The sizes of what is read for good.
    struct Mark {
        qsizetype source = 0;
        qsizetype text = 0;
        std::size_t blocks = 0;
        std::size_t spans = 0;
        QString opening = {};
        /// The text was cut there, amid a line or after one.
        bool isCut = false;
    };

    void readChunks();
    void append(const QString& markdown);
    void join(StyledText piece);
    /// Takes what is not read for good out of what is shown.
    StyledText takeTail();

    QString m_source;
    StyledText m_shown;
    Mark m_settled;
};

} // namespace pobblewig
