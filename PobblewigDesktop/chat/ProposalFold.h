#pragma once

#include <QGroupBox>

class QLabel;
class QPushButton;

namespace pobblewig {

/// The line that stands for several proposals: how many there are, and what can be done with all of
/// them. A group for assistive technology; Enter dismisses nothing.
class ProposalFold : public QGroupBox {
    Q_OBJECT

public:
    explicit ProposalFold(QWidget* parent = nullptr);

    /// Hidden for fewer than two.
    void setCount(int count);
    void setFolded(bool isFolded);

    /// The last control that Tab reaches.
    QWidget* lastControl() const;

Q_SIGNALS:
    void toggled();
    void dismissAllRequested();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    QPushButton* add(const QString& role);
    void announce();
    void fitLabel();

    int m_count = 0;
    QLabel* m_label;
    QPushButton* m_toggle;
    QPushButton* m_dismissAll;
};

} // namespace pobblewig
