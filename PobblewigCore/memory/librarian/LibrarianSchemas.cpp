#include "memory/librarian/LibrarianSchemas.h"

#include <QJsonDocument>

namespace pobblewig {

namespace {

/// Replaces NOTES in the other schemas.
constexpr auto notesForm = R"({
    "type": "array",
    "items": {
        "type": "object",
        "additionalProperties": false,
        "properties": {
            "text": { "type": "string" },
            "category": { "type": "string" },
            "kind": { "type": "string" },
            "source": { "type": "string" },
            "confidence": { "type": "number" },
            "isTemporary": { "type": "boolean" },
            "expiresInHours": { "type": "number" }
        })";

constexpr auto extractionForm = R"({
    "type": "object",
    "additionalProperties": false,
    "properties": {
        "notes": NOTES,
                "required": ["text"]
            }
        },
        "observations": {
            "type": "array",
            "items": {
                "type": "object",
                "additionalProperties": false,
                "properties": {
                    "summary": { "type": "string" },
                    "observedFacts": { "type": "array", "items": { "type": "string" } },
                    "inference": { "type": "string" },
                    "uncertainty": { "type": "string" },
                    "source": { "type": "string" },
                    "tags": { "type": "array", "items": { "type": "string" } }
                },
                "required": ["summary"]
            }
        },
        "referenceItems": {
            "type": "array",
            "items": {
                "type": "object",
                "additionalProperties": false,
                "properties": {
                    "path": { "type": "string" },
                    "title": { "type": "string" },
                    "summary": { "type": "string" },
                    "details": { "type": "object" }
                },
                "required": ["path", "title", "summary"]
            }
        },
        "proposedSections": {
            "type": "array",
            "items": {
                "type": "object",
                "additionalProperties": false,
                "properties": {
                    "path": { "type": "string" },
                    "title": { "type": "string" },
                    "summary": { "type": "string" }
                },
                "required": ["path", "title"]
            }
        }
    }
})";

constexpr auto closeoutForm = R"({
    "type": "object",
    "additionalProperties": false,
    "properties": {
        "dailySummary": { "type": "string" },
        "chronologicalHighlights": { "type": "array", "items": { "type": "string" } },
        "unfinishedIntent": {
            "type": "array",
            "items": {
                "type": "object",
                "additionalProperties": false,
                "properties": {
                    "text": { "type": "string" },
                    "kind": { "type": "string" }
                },
                "required": ["text"]
            }
        }
    },
    "required": ["dailySummary"]
})";

constexpr auto weeklyForm = R"({
    "type": "object",
    "additionalProperties": false,
    "properties": {
        "summary": { "type": "string" },
        "chronologicalHighlights": { "type": "array", "items": { "type": "string" } },
        "unresolvedIntent": { "type": "array", "items": { "type": "string" } }
    },
    "required": ["summary"]
})";

constexpr auto cleanupForm = R"({
    "type": "object",
    "additionalProperties": false,
    "properties": {
        "notes": NOTES,
                "required": ["text"]
            }
        },
        "patterns": {
            "type": "array",
            "items": {
                "type": "object",
                "additionalProperties": false,
                "properties": {
                    "text": { "type": "string" },
                    "confidence": { "type": "number" },
                    "evidenceNoteTexts": { "type": "array", "items": { "type": "string" } }
                },
                "required": ["text"]
            }
        }
    },
    "required": ["notes"]
})";

JSONValue::Object parsed(QByteArray form)
{
    form.replace("NOTES", notesForm);
    return *JSONValue::fromJson(QJsonDocument::fromJson(form).object()).object();
}

LLMResponseFormat format(const QString& name, const JSONValue::Object& schema)
{
    return { LLMResponseFormat::Kind::jsonSchema, name, schema };
}

const JSONValue::Object& extractionSchema()
{
    static const auto schema = parsed(extractionForm);
    return schema;
}

} // namespace

LLMResponseFormat LibrarianSchemas::extraction()
{
    return format(QStringLiteral("librarian_extraction"), extractionSchema());
}

LLMResponseFormat LibrarianSchemas::meetingNotesExtraction()
{
    return format(QStringLiteral("meeting_notes_extraction"), extractionSchema());
}

LLMResponseFormat LibrarianSchemas::dailyCloseout()
{
    static const auto schema = parsed(closeoutForm);
    return format(QStringLiteral("daily_closeout"), schema);
}

LLMResponseFormat LibrarianSchemas::weeklyRollup()
{
    static const auto schema = parsed(weeklyForm);
    return format(QStringLiteral("weekly_rollup"), schema);
}

LLMResponseFormat LibrarianSchemas::cleanup()
{
    static const auto schema = parsed(cleanupForm);
    return format(QStringLiteral("memory_cleanup"), schema);
}

} // namespace pobblewig
