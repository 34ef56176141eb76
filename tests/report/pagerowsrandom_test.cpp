#include "tests/report/pagecells.h"
#include "tests/support/scratch.h"

#include <printman/text.h>

#include <gtest/gtest.h>

#include <algorithm>

using printman::EscapeField;
using printman::PageRows;

namespace {

/// The items of a page cut cell by cell, with a look-up for each.
class PlainLoader {
public:
    explicit PlainLoader(const Page& page) : page_(page), rows_(page.lines) {
        const int total = page.columns * page.lines;
        int k = 1;
        while (p_ < total) {
            if (k * page.columns <= p_)
                ++k;
            if (page.cells[p_] == 0)
                p_ = k * page.columns;
            else
                pass(k);
        }
    }

    const std::vector<std::vector<std::string>>& rows() const { return rows_; }

private:
    void add(int line, int x, int width, const std::string& text, int align) {
        StringItem item;
        item.cell = QRect(x, line, width, 1);
        item.align = static_cast<int16_t>(align);
        item.text = QString::fromLatin1(text.data(), static_cast<qsizetype>(text.size()));
        rows_[line].push_back(shown(item));
    }

    void pass(int k) {
        const int line = k - 1;
        const int total = page_.columns * page_.lines;
        std::string run;
        int run_start = 0;
        bool second = false;
        while (p_ < k * page_.columns && p_ < total && page_.cells[p_] != 0) {
            const EscapeField* field =
                page_.fields.find(line, p_ % page_.columns + 1, page_.columns, second);
            const bool tab = field && field->type == 1;
            const bool refused = tab && field->size - 1 - run_start < 1;
            const bool unusable =
                field &&
                (tab ? refused && second : field->type < 1 || field->type > 4 || field->size <= 0);
            if (!field || unusable) {
                run += page_.cells[p_++];
                second = false;
                continue;
            }
            second = false;
            if (!run.empty() && run.find_first_not_of(' ') != run.npos)
                add(line, run_start, static_cast<int>(run.size()), run, 2);
            run.clear();
            if (refused) {
                second = true;
            } else if (tab) {
                run_start = field->size - 1;
                p_ = line * page_.columns + run_start;
            } else {
                take(line, *field);
                run_start = field->start - 1 + field->size;
            }
        }
        if (!run.empty())
            add(line, run_start, static_cast<int>(run.size()), run, 2);
    }

    void take(int line, const EscapeField& field) {
        const int total = page_.columns * page_.lines;
        std::string text(static_cast<size_t>(page_.columns) + 1, 'x');
        const int length =
            get_print_string(text.data(), static_cast<int>(text.size()), page_.cells.data() + p_,
                             std::min<int>(field.size, total - p_));
        text.resize(static_cast<size_t>(length));
        if (length > 0)
            add(line, field.start - 1, field.type == 2 ? length : field.size, text, field.type);
        p_ += field.size;
    }

    const Page& page_;
    int p_ = 0;
    std::vector<std::vector<std::string>> rows_;
};

/// A random page; @p wild markers hold any number, others stay near the page.
Page random_page(TextMaker& maker, bool wild) {
    Page page(maker.number(1, 12), maker.number(1, 5));
    for (char& cell : page.cells)
        cell = "ab  \0"[maker.number(0, maker.number(0, 3) == 0 ? 4 : 3)];
    for (int i = maker.number(0, 8); i > 0; --i) {
        const int reach = wild ? 40 : page.columns;
        EscapeField field;
        field.type = static_cast<int16_t>(maker.number(wild ? 0 : 1, wild ? 5 : 4));
        field.start = static_cast<int16_t>(maker.number(wild ? -2 : 1, page.columns + 1));
        field.size = static_cast<int16_t>(maker.number(wild ? -3 : 1, reach));
        if (wild && maker.number(0, 20) == 0)
            field.size = static_cast<int16_t>(maker.number(-32768, 32767));
        page.mark(maker.number(0, page.lines - 1), field);
    }
    return page;
}

} // namespace

TEST(PageRows, cutsRandomPagesLikeAPlainLoader) {
    for (bool wild : {false, true}) {
        TextMaker maker(wild ? 11 : 12, {});
        for (int i = 0; i < 20000; ++i) {
            const Page page = random_page(maker, wild);
            const PlainLoader plain(page);
            const PageRows rows = page.load();
            ASSERT_EQ(rows.size(), page.lines);
            for (int line = 0; line < page.lines; ++line)
                ASSERT_EQ(shown(rows.row(line)), plain.rows()[line]) << "page " << i;
        }
    }
}
