#pragma once

#include "markdown/StyledText.h"

#include <md4c.h>

namespace pobblewig {

/// Writes down what the parser of Markdown meets.
class StyledTextWriter {
public:
    /// Stands for an asterisk that the parser is not to see.
    static constexpr QChar plainAsterisk { 0xFDD0 };

    StyledText take();

    void enter(MD_BLOCKTYPE type, const void* detail);
    void leave(MD_BLOCKTYPE type);
    void enter(MD_SPANTYPE type, const void* detail);
    void leave(MD_SPANTYPE type);
    void write(MD_TEXTTYPE type, const QString& text);

private:
    struct List {
        bool isOrdered = false;
        bool isTight = true;
        unsigned next = 1;
    };

    struct Link {
        QString address;
        qsizetype begin = 0;
    };

    void beginItem(const MD_BLOCK_LI_DETAIL& item);
    void beginCell(const MD_BLOCK_TD_DETAIL& cell, bool isHead);
    void beginBlock(StyledText::Block block);
    void endBlock();
    void writeMarkerAlone();
    void forgetSpans();
    void append(const QString& text, unsigned looks);
    void endLink();
    unsigned looks() const;

    StyledText m_text;
    bool m_isInBlock = false;
    std::vector<List> m_lists;
    int m_quotes = 0;
    QString m_marker;
    StyledText::Gap m_gap = StyledText::Gap::none;
    int m_row = -1;
    int m_column = 0;
    std::vector<unsigned> m_looks;
    std::vector<Link> m_links;
};

} // namespace pobblewig
