#pragma once

#include <QWidget>

class QLabel;

namespace pobblewig {

class WrappedLabel;

/// A line of a form: a name, what to change it with, what it does, and why a change came to
/// nothing.
class FieldRow : public QWidget {
public:
    struct Words {
        QString name;
        /// One muted line, or nothing.
        QString explanation = {};
    };
    enum class Place { beside, below };

    /// Takes the control. `field` is what has the focus in it; it gets the name.
    FieldRow(const Words& words, QWidget& control, QWidget& field, Place place = Place::beside);

    /// For a control of one field.
    FieldRow(const Words& words, QWidget& control, Place place = Place::beside)
        : FieldRow(words, control, control, place)
    {
    }

    void focusField();

    void setExplanation(const QString& text);

    /// A sentence below the field; an empty one takes it back.
    void setProblem(const QString& problem);

private:
    QWidget& m_field;
    WrappedLabel* m_explanation;
    WrappedLabel* m_problem;
};

} // namespace pobblewig
