#pragma once

#include <QWidget>

class QLabel;

namespace pobblewig {

/// A line of text in which numbers count without anything around it moving. A text that is too wide
/// lacks its middle.
class SteadyLabel : public QWidget {
    Q_OBJECT

public:
    explicit SteadyLabel(QWidget* parent = nullptr);

    /// What assistive technology sees.
    QLabel& label() const { return *m_label; }

    void setText(const QString& text);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    void resizeEvent(QResizeEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    /// The text with the widest digit in place of each.
    QString m_widest;
    /// Without a layout, so that a new text is nobody else's business.
    QLabel* m_label;
};

} // namespace pobblewig
