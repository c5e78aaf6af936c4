#pragma once

#include "foundation/EnumNames.h"
#include "memory/MemoryStore.h"
#include "tools/ToolArguments.h"

namespace pobblewig {

/// An object of what a model answered. Models err: a value of the wrong type counts as absent, and
/// of a list no more is read than anybody would want.
class AnswerFields {
public:
    static constexpr size_t mostEntries = 100;
    static constexpr qsizetype longestLine = 1000;
    static constexpr qsizetype longestProse = 4000;

    explicit AnswerFields(JSONValue::Object values);

    /// Nothing if there is no list.
    std::optional<size_t> elementCount(const QString& name) const;

    /// Trimmed and without line breaks; empty if there is none.
    QString line(const QString& name) const;

    /// The same, cut to the longest that is kept.
    QString shortLine(const QString& name) const;

    /// Trimmed, with its paragraphs, and cut to the longest that is kept.
    QString prose(const QString& name) const;

    /// Those with a text in them, each cut.
    std::vector<QString> shortLines(const QString& name) const;

    std::optional<bool> boolean(const QString& name) const;
    std::optional<double> number(const QString& name) const;
    std::vector<AnswerFields> objects(const QString& name, size_t most = mostEntries) const;

    /// The members of an object that are small and not deeply nested.
    JSONValue::Object smallMembers(const QString& name) const;

    /// 0 to 1.
    std::optional<double> confidence() const;

    /// Its text is not cut. `source` vouches for it if the model names nobody.
    NewNote note(MemorySource source, TimePoint now) const;

    /// The case of that name.
    template <typename Enum>
    Enum named(const QString& name, Enum otherwise) const
    {
        const auto text = m_values.string(name).value_or(QString());
        return EnumNames::fromName<Enum>(text.toStdString()).value_or(otherwise);
    }

private:
    ToolArguments m_values;
};

} // namespace pobblewig
