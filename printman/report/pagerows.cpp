#include <printman/report/pagerows.h>
#include <printman/text.h>

#include <algorithm>
#include <cstring>

namespace printman {

class PageRows::Loader {
public:
    Loader(PageRows& rows, std::span<const char> cells, int columns, const EscapeTable& fields)
        : rows_(rows), cells_(cells.data()), total_(static_cast<long>(cells.size())),
          columns_(columns), fields_(fields), scratch_(static_cast<size_t>(columns) + 1) {}

    void load();

private:
    void load_line();
    void collect_starts();
    bool at_text() const { return pos_ < std::min(line_end_, total_) && cells_[pos_] != 0; }
    long next_marker() const;
    const EscapeField* usable_field() const;
    void take_text();
    void take_tab(const EscapeField& field);
    void take_field(const EscapeField& field);
    void flush();
    void append(int x, int width, const char* text, int length, int align);

    PageRows& rows_;
    const char* cells_;
    long total_;
    long columns_;
    const EscapeTable& fields_;
    std::vector<char> scratch_;
    std::vector<long> starts_; ///< 0-based columns at which the line's markers are found, ascending

    int line_ = 0;
    long line_end_ = 0; ///< the cell after the line
    long pos_ = 0;
    long run_start_ = 0;  ///< column that the pending run is placed at
    long run_length_ = 0; ///< bytes in the pending run; they end at pos_
    bool second_ = false; ///< a tab was refused on this cell
};

void PageRows::Loader::load() {
    // A field that is wider than its line leaves the position ahead of the line counter, which
    // catches up by one per step; a zero cell then leads back to the line that it has reached.
    long line_number = 1;
    while (pos_ < total_) {
        if (line_number * columns_ <= pos_)
            ++line_number;
        line_ = static_cast<int>(line_number - 1);
        line_end_ = line_number * columns_;
        if (cells_[pos_] == 0)
            pos_ = line_end_;
        else
            load_line();
    }
}

void PageRows::Loader::load_line() {
    run_start_ = 0;
    run_length_ = 0;
    second_ = false;
    collect_starts();
    while (at_text()) {
        if (const EscapeField* field = usable_field()) {
            flush();
            if (field->type == EscapeField::tab)
                take_tab(*field);
            else
                take_field(*field);
        } else {
            take_text();
        }
    }
    if (run_length_ > 0)
        append(static_cast<int>(run_start_), static_cast<int>(run_length_),
               cells_ + pos_ - run_length_, static_cast<int>(run_length_), EscapeField::left);
}

void PageRows::Loader::collect_starts() {
    starts_.clear();
    for (const EscapeField& field : fields_.row(line_))
        if (field.start >= 1 && field.start < columns_)
            starts_.push_back(field.start - 1);
    if (!std::ranges::is_sorted(starts_))
        std::ranges::sort(starts_);
}

/// The next cell after the position at which there is a marker, or the end of the line.
long PageRows::Loader::next_marker() const {
    const long column = pos_ % columns_;
    const auto next = std::ranges::upper_bound(starts_, column);
    return next == starts_.end() ? line_end_ : pos_ - column + *next;
}

/// The field at the position if it can be placed; otherwise the cell is text.
const EscapeField* PageRows::Loader::usable_field() const {
    const long column = pos_ % columns_;
    if (!std::ranges::binary_search(starts_, column))
        return nullptr;
    const EscapeField* field =
        fields_.find(line_, static_cast<int>(column) + 1, static_cast<int>(columns_), second_);
    if (!field)
        return nullptr;
    if (field->type == EscapeField::tab) {
        const bool refused = field->size - 1 - run_start_ < 1;
        return refused && second_ ? nullptr : field;
    }
    const bool known = field->type >= EscapeField::left && field->type <= EscapeField::centre;
    return known && field->size > 0 ? field : nullptr;
}

/// Takes the cell at the position, whatever it is, and the text up to the next marker.
void PageRows::Loader::take_text() {
    const long limit = std::min({next_marker(), line_end_, total_});
    const char* text = cells_ + pos_;
    const void* zero = std::memchr(text, 0, limit - pos_);
    const long length = zero ? static_cast<const char*>(zero) - text : limit - pos_;
    pos_ += length;
    run_length_ += length;
    second_ = false;
}

void PageRows::Loader::take_tab(const EscapeField& field) {
    const long target = field.size - 1;
    run_length_ = 0;
    second_ = target - run_start_ < 1;
    if (second_)
        return;
    pos_ = line_ * columns_ + target;
    run_start_ = target;
}

void PageRows::Loader::take_field(const EscapeField& field) {
    const int size = field.size;
    const int available = static_cast<int>(std::min<long>(size, total_ - pos_));
    const int scratch_size = std::min(static_cast<int>(scratch_.size()), available + 1);
    const int length = get_print_string(scratch_.data(), scratch_size, cells_ + pos_, available);
    const int column = field.start - 1;
    if (length > 0)
        append(column, field.type == EscapeField::left ? length : size, scratch_.data(), length,
               field.type);
    pos_ += size;
    run_start_ = column + size;
    run_length_ = 0;
    second_ = false;
}

void PageRows::Loader::flush() {
    const char* run = cells_ + pos_ - run_length_;
    const int length = static_cast<int>(run_length_);
    if (!is_whitespace(run, length))
        append(static_cast<int>(run_start_), length, run, length, EscapeField::left);
}

void PageRows::Loader::append(int x, int width, const char* text, int length, int align) {
    QValueList<StringItem>& items = rows_.rows_[line_];
    StringItem& item = items.emplaceBack();
    item.cell = QRect(x, line_, width, 1);
    item.align = static_cast<int16_t>(align);
    item.text = QString::fromLatin1(text, length);
}

void PageRows::load(std::span<const char> cells, int columns, int lines,
                    const EscapeTable& fields) {
    lines = columns > 0 ? std::max(lines, 0) : 0;
    ++loads_;
    rows_.resize(lines);
    for (QValueList<StringItem>& row : rows_)
        row.clear();
    if (lines == 0)
        return;
    const size_t grid = static_cast<size_t>(columns) * static_cast<size_t>(lines);
    Loader(*this, cells.first(std::min(cells.size(), grid)), columns, fields).load();
}

void PageRows::add(int row, const StringItem& item) {
    if (row >= 0 && row < size())
        rows_[row].append(item);
}

void PageRows::release() {
    ++loads_;
    rows_.clear();
    rows_.shrink_to_fit();
}

const QValueList<StringItem>& PageRows::row(int row) const {
    static const QValueList<StringItem> none;
    return row >= 0 && row < size() ? rows_[row] : none;
}

} // namespace printman
