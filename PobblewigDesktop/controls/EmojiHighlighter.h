#pragma once

#include <QSyntaxHighlighter>

namespace pobblewig {

/// Shows the emoji of a text field in colour.
class EmojiHighlighter : public QSyntaxHighlighter {
    Q_OBJECT

public:
    using QSyntaxHighlighter::QSyntaxHighlighter;

protected:
    void highlightBlock(const QString& text) override;
};

} // namespace pobblewig
