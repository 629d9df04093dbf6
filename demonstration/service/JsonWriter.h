#pragma once

#include <QByteArray>
#include <QStringView>

namespace orvane::demo {

/// Writes JSON text from front to back, for answers that are too many to be built as trees first. The caller opens and
/// closes; commas come by themselves.
class JsonWriter
{
public:
    void beginObject() { open('{'); }

    void endObject() { close('}'); }

    void beginArray() { open('['); }

    void endArray() { close(']'); }

    /// The next value's key, of plain letters.
    JsonWriter& key(const char* name);

    void text(QStringView value);
    void number(double value);
    void number(int value);
    void boolean(bool value);
    void null();

    const QByteArray& bytes() const { return bytes_; }

    void reserve(qsizetype size) { bytes_.reserve(size); }

private:
    void open(char bracket);
    void close(char bracket);
    void separate();

    QByteArray bytes_;
    bool needsComma_ = false;
};

} // namespace orvane::demo
