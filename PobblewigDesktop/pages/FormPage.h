#pragma once

#include "PobblewigDesktop/pages/Page.h"

class QVBoxLayout;

namespace pobblewig {

class FieldRow;

/// A page of one column: a title, and below it lines, headings and explanations.
class FormPage : public Page {
    Q_OBJECT

public:
    explicit FormPage(const QString& title);

protected:
    /// The page takes the widget.
    void add(QWidget& widget);
    void addGap();
    void addHeading(const QString& text);
    void addExplanation(const QString& text);
    /// A paragraph to be read.
    void addText(const QString& text);

    /// Brings a part of the page into sight.
    void scrollTo(QWidget& part);

private:
    QVBoxLayout* m_column;
};

} // namespace pobblewig
