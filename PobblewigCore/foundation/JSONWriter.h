#pragma once

#include <QByteArray>
#include <QStringView>

#include <memory>
#include <string_view>

namespace pobblewig {

/// Writes JSON as the files have it, indented by four blanks. Values have to come in the order in
/// which they stand; whole numbers print without a fraction, a number that is none prints as null.
class JSONWriter {
public:
    JSONWriter();
    ~JSONWriter();
    Q_DISABLE_COPY_MOVE(JSONWriter)

    void beginObject();
    /// Names the value that comes next.
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
    /// Of ASCII only, such as an identifier or the name of a case.
    void value(std::string_view value);

    /// All that was written, with a line end. To be called once, at the end.
    QByteArray text();

private:
    struct Output;
    std::unique_ptr<Output> m_output;
};

} // namespace pobblewig
