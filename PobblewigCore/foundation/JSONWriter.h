#pragma once

#include <QByteArray>
#include <QStringView>

#include <memory>
#include <string_view>

namespace pobblewig {

/// Writes JSON as the files contain it, indented by four blanks. Values must be added in the order
/// in which they appear. Whole numbers have no fraction; NaN and infinities are written as null.
class JSONWriter {
public:
    JSONWriter();
    ~JSONWriter();
    Q_DISABLE_COPY_MOVE(JSONWriter)

    void beginObject();
    /// Sets the name of the next value.
    void key(QStringView name);
    void key(const char* name);
    void endObject();

    void beginArray();
    void endArray();

    void null();
    void value(bool value);
    void value(qint64 value);
    void value(double value);
    void value(QStringView value);
    /// For ASCII only, such as an identifier or the name of a case.
    void value(std::string_view value);

    /// Returns everything written, with a final line end. Call this once, at the end.
    QByteArray text();

private:
    struct Output;
    std::unique_ptr<Output> m_output;
};

} // namespace pobblewig
