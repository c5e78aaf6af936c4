#pragma once

#include <QString>

namespace pobblewig {

/// Why Google Classroom could not be read.
struct ClassroomError {
    enum class Kind { notConfigured, unreachable, missingScope, http, decoding, invalidToken };

    static ClassroomError notConfigured(const QString& reason);
    static ClassroomError unreachable(const QString& reason);
    static ClassroomError missingScope(const QString& body);
    static ClassroomError http(int status, const QString& body);
    static ClassroomError decoding(const QString& reason);
    static ClassroomError invalidToken();

    /// For the user.
    QString description() const;

    Kind kind = Kind::http;
    QString detail = {};
    int status = 0;
};

} // namespace pobblewig
