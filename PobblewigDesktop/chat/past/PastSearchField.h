#pragma once

#include <QTimer>
#include <QWidget>

class QLabel;
class QLineEdit;

namespace pobblewig {

/// The field for the words that all conversations are searched for. Enter and F3 go on to the next
/// match, and back with Shift; F3 does so anywhere in the window.
class PastSearchField : public QWidget {
    Q_OBJECT

public:
    explicit PastSearchField(QWidget* parent = nullptr);

    QString wanted() const;

    /// Asks for nothing.
    void clear();

    /// Says "2 of 5", or nothing.
    void setCount(const QString& words);

Q_SIGNALS:
    /// Once the user pauses.
    void wantedChanged();
    void stepRequested(int step);

private:
    void arrange();
    void addKeys();
    void step(int step);

    QLineEdit* m_field;
    QLabel* m_count;
    QTimer m_typing;
};

} // namespace pobblewig
