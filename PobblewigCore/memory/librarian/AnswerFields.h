#pragma once

#include "foundation/EnumNames.h"
#include "memory/MemoryStore.h"
#include "tools/ToolArguments.h"

namespace pobblewig {

/// One JSON object in a model's answer. Models make mistakes: a value of the wrong type counts as
/// absent, and a long list is only read up to a limit.
class AnswerFields {
public:
    static constexpr size_t mostEntries = 100;
    static constexpr qsizetype longestLine = 1000;
    static constexpr qsizetype longestProse = 4000;

    explicit AnswerFields(JSONValue::Object values);

    /// Returns nothing if there is no list.
    std::optional<size_t> elementCount(const QString& name) const;

    /// A trimmed text without line breaks; empty if there is none.
    QString line(const QString& name) const;

    /// The same, cut to the maximum length.
    QString shortLine(const QString& name) const;

    /// A trimmed text with its paragraphs, cut to the maximum length.
    QString prose(const QString& name) const;

    /// The entries that contain text, each cut to the maximum length.
    std::vector<QString> shortLines(const QString& name) const;

    std::optional<bool> boolean(const QString& name) const;
    std::optional<double> number(const QString& name) const;
    std::vector<AnswerFields> objects(const QString& name, size_t most = mostEntries) const;

    /// The members of an object that are small and not deeply nested.
    JSONValue::Object smallMembers(const QString& name) const;

    /// Between 0 and 1.
    std::optional<double> confidence() const;

    /// The text is not cut. `source` applies if the model names no source.
    NewNote note(MemorySource source, TimePoint now) const;

    /// The enum case with that name.
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
