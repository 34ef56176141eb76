#include "host/printers/sectionreader.h"

#include "host/printers/sectionline.h"

#include <QList>

#include <algorithm>

namespace host {

namespace {

/// Hands the lines of a list to a handler; each step returns an error, or an empty text.
class Reader {
public:
    explicit Reader(SectionHandler& handler) : handler_(handler) {}

    QByteArray read(const QByteArray& raw);
    QByteArray end_section();

    /// The number of the line that was read last, from 1; after an error, of the line it is about.
    qlonglong line() const { return line_; }

private:
    QByteArray start_section(const QByteArray& name);
    QByteArray read_entry(const QByteArray& key, const QByteArray& value);

    SectionHandler& handler_;
    bool is_in_section_ = false;
    QList<QByteArray> seen_; ///< keys of the section
    qlonglong line_ = 0;
    qlonglong section_line_ = 0; ///< where the section begins
};

QByteArray Reader::read(const QByteArray& raw) {
    ++line_;
    const SectionLine line = SectionLine::read(raw);
    if (!line.error.isEmpty() || line.kind == SectionLine::nothing)
        return line.error;
    if (line.kind == SectionLine::entry)
        return read_entry(line.name, line.value);
    const QByteArray error = end_section();
    return error.isEmpty() ? start_section(line.name) : error;
}

QByteArray Reader::start_section(const QByteArray& name) {
    is_in_section_ = true;
    section_line_ = line_;
    seen_.clear();
    return handler_.start_section(name);
}

QByteArray Reader::end_section() {
    QByteArray error = is_in_section_ ? handler_.end_section() : QByteArray();
    if (!error.isEmpty())
        line_ = section_line_;
    return error;
}

QByteArray Reader::read_entry(const QByteArray& key, const QByteArray& value) {
    if (!is_in_section_)
        return "a key comes before the first section";
    const QByteArray common = handler_.common_key(key);
    if (seen_.contains(common))
        return key + " is given twice";
    seen_ << common;
    return handler_.read_entry(key, value);
}

} // namespace

Outcome read_sections(const QByteArray& text, const QByteArray& file, SectionHandler& handler) {
    Reader reader(handler);
    QByteArray error;
    for (const QByteArray& line : without_byte_order_mark(text).split('\n')) {
        error = reader.read(line);
        if (!error.isEmpty())
            break;
    }
    if (error.isEmpty())
        error = reader.end_section();
    return error.isEmpty()
               ? Outcome::success()
               : Outcome::failure(file + ':' + QByteArray::number(reader.line()) + ": " + error);
}

QByteArray without_byte_order_mark(const QByteArray& text) {
    const QByteArray mark("\xef\xbb\xbf");
    return text.startsWith(mark) ? text.mid(mark.size()) : text;
}

bool is_without_content(const QByteArray& text) {
    const QList<QByteArray> lines = text.split('\n');
    return std::ranges::all_of(lines, [](const QByteArray& raw) {
        const SectionLine line = SectionLine::read(raw);
        return line.kind == SectionLine::nothing && line.error.isEmpty();
    });
}

} // namespace host
