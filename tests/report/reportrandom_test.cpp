#include "tests/support/bytepipe.h"
#include "tests/support/scratch.h"

#include <printman/report/marker.h>
#include <printman/report/pagefinder.h>
#include <printman/report/pagerows.h>
#include <printman/report/reportbuffer.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <fcntl.h>

using printman::EscapeField;
using printman::EscapeTable;
using printman::PageRows;
using printman::ReportBuffer;

namespace {

/// The page places that reading pieces of 49 bytes finds.
std::vector<long> plain_index(const std::string& path) {
    std::vector<long> offsets;
    std::FILE* file = std::fopen(path.c_str(), "r");
    char piece[50];
    while (std::fgets(piece, sizeof piece, file))
        if (std::strncmp(piece, "#!?PAGETOP", 10) == 0)
            offsets.push_back(std::ftell(file));
    std::fclose(file);
    return offsets;
}

std::vector<long> index_of(const std::string& path, size_t block_size) {
    std::vector<long> offsets;
    const int fd = open(path.c_str(), O_RDONLY);
    EXPECT_EQ(printman::find_pages(fd, block_size, offsets), 0);
    close(fd);
    return offsets;
}

/// One page read byte by byte into cells that never end.
struct PlainPage {
    std::vector<char> cells;
    std::vector<std::vector<EscapeField>> fields;

    PlainPage(const std::string& path, long offset, int columns, int lines, size_t size,
              bool ends_lines)
        : cells(size), fields(static_cast<size_t>(lines)) {
        std::FILE* file = std::fopen(path.c_str(), "r");
        std::fseek(file, offset, SEEK_SET);
        char line[512];
        int row = 0;
        while (std::fgets(line, sizeof line, file)) {
            if (std::strncmp(line, "#!?PAGETOP", 10) == 0)
                continue;
            if (std::strncmp(line, "#!?PAGEEND", 10) == 0 || row >= lines)
                break;
            const int length = static_cast<int>(std::strlen(line));
            if (length > 0)
                line[length - 1] = 0;
            place(line, length, row, static_cast<size_t>(columns) * row, ends_lines);
            ++row;
        }
        std::fclose(file);
    }

    void place(const char* line, int length, int row, size_t position, bool ends_lines) {
        for (int i = 0; i < length;) {
            if (i < length - 3 && std::strncmp(line + i, "#!?", 3) == 0) {
                const printman::MarkerParse parsed =
                    printman::parse_marker({line, 512}, i + 3, length - 1);
                if (parsed.field)
                    fields[row].push_back(*parsed.field);
                if (parsed.consumed > 0) {
                    i += 3 + parsed.consumed;
                    continue;
                }
            }
            if (position < cells.size())
                cells[position] = line[i];
            ++i;
            if (++position >= cells.size() && ends_lines)
                return;
        }
    }
};

void expect_same_page(const PlainPage& plain, std::span<const char> cells,
                      const EscapeTable& fields) {
    EXPECT_TRUE(std::ranges::equal(plain.cells, cells));
    for (size_t row = 0; row < plain.fields.size(); ++row)
        EXPECT_TRUE(std::ranges::equal(plain.fields[row], fields.row(static_cast<int>(row))));
}

const std::vector<std::string> index_parts{"#!?PAGETOP",
                                           "#!?PAGETOP",
                                           "#!?PAGETOP 5,3\n",
                                           "\n",
                                           "\n",
                                           "#",
                                           "#!?PAGE",
                                           "G",
                                           std::string(1, '\0'),
                                           std::string(39, 'x'),
                                           std::string(49, 'x'),
                                           std::string(49, 'G'),
                                           std::string(48, 'x'),
                                           std::string(200, '#')};

const std::vector<std::string> page_parts{"#!?PAGETOP 7,4\n",
                                          "#!?PAGEEND\n",
                                          "\n",
                                          "\n",
                                          "#",
                                          "!",
                                          "?",
                                          "#!?T5,6;",
                                          "#!?T2,",
                                          "#!?L2,3,4;",
                                          "#!?R1,2,2;",
                                          "#!?C",
                                          ",",
                                          ";",
                                          "1",
                                          " ",
                                          "ab",
                                          std::string(1, '\0'),
                                          std::string(505, 'y')};

} // namespace

TEST(PageIndex, equalsThatOfReadingPieces) {
    const MemoryFile file;
    TextMaker maker(3, index_parts);
    for (int i = 0; i < 2000; ++i) {
        const std::string path = file.write(maker.text(30));
        const std::vector<long> expected = plain_index(path);
        for (size_t block : {1, 2, 7, 48, 49, 50, 97, 1000, 1 << 20})
            ASSERT_EQ(index_of(path, block), expected) << "file " << i << " block " << block;
    }
}

TEST(PageIndex, aPageStartsBehindItsTopLine) {
    const MemoryFile file;
    EXPECT_EQ(index_of(file.write("#!?PAGETOP 5,3\nabc\n#!?PAGETOP\n#!?PAGETOP"), 4096),
              (std::vector<long>{15, 30, 40}));
}

TEST(PageIndex, aTopLineOfMoreThan49BytesIsCutThere) {
    const MemoryFile file;
    const std::string top = "#!?PAGETOP 5,3" + std::string(34, ' ');
    EXPECT_EQ(index_of(file.write(top + "\nx\n"), 4096), (std::vector<long>{49}));
    EXPECT_EQ(index_of(file.write(top + " \nx\n"), 4096), (std::vector<long>{49}));
    EXPECT_EQ(index_of(file.write(top + "longer\nx\n"), 4096), (std::vector<long>{49}));
}

TEST(PageIndex, aTopMarkInsideALineCountsAtEvery49thByteOnly) {
    const MemoryFile file;
    for (int at = 1; at < 200; ++at) {
        const std::string text =
            "\n" + std::string(static_cast<size_t>(at), 'x') + "#!?PAGETOP 5,3\n";
        const std::vector<long> found = index_of(file.write(text), 4096);
        std::vector<long> expected;
        if (at % 49 == 0)
            expected.push_back(static_cast<long>(text.size()));
        EXPECT_EQ(found, expected) << at;
    }
}

TEST(PageIndex, aHostileFileWithoutNewlinesTakesOnePass) {
    const MemoryFile file;
    std::string text;
    for (int i = 0; i < 500000; ++i)
        text += "#!?PAGETOP";
    const BytePipe once(text);
    std::vector<long> offsets;
    EXPECT_EQ(printman::find_pages(once.fd(), 1 << 18, offsets), 0);
    EXPECT_EQ(offsets, plain_index(file.write(text)));
}

TEST(PageIndex, aFailedReadIsToldByItsErrno) {
    std::vector<long> offsets;
    const int fd = open("/", O_RDONLY);
    EXPECT_EQ(printman::find_pages(fd, 4096, offsets), EISDIR);
    close(fd);
}

TEST(ReportPages, readRandomFilesLikeAPlainReader) {
    const MemoryFile file;
    TextMaker maker(4, page_parts);
    for (int i = 0; i < 3000; ++i) {
        const std::string path = file.write("#!?PAGETOP 7,4\n" + maker.text(40));
        ReportBuffer buffer;
        EscapeTable fields;
        buffer.set_file_name(path);
        ASSERT_EQ(buffer.init(fields), 0);
        const std::vector<long> offsets = plain_index(path);
        ASSERT_EQ(static_cast<size_t>(buffer.page_count()), offsets.size());
        int request = printman::page_first;
        for (const long offset : offsets) {
            ASSERT_TRUE(buffer.read_page(request, fields));
            expect_same_page({path, offset, 7, 4, 28, false}, buffer.cells(), fields);
            const size_t size = static_cast<size_t>(maker.number(0, 40));
            std::string cells(size, 'x');
            if (request == printman::page_next) {
                ASSERT_TRUE(buffer.read_page(printman::page_previous, fields));
            }
            ASSERT_TRUE(buffer.read_page(request, cells, fields));
            expect_same_page({path, offset, 7, 4, size, true}, cells, fields);
            ASSERT_FALSE(HasFailure()) << "file " << i << " page at " << offset;
            request = printman::page_next;
        }
        EXPECT_FALSE(buffer.read_page(request, fields));
    }
}

TEST(EscapeReportLine, theCellsHoldTheTextAgain) {
    const MemoryFile file;
    TextMaker maker(6, {"#!?", "#!?", "#!?T", "#!?L", "#!?PAGETOP", "#!?PAGEEND", "#!?T0,0;", "#",
                        "!", "?", ",", ";", "1", "20", "PAGETOP", " ", "\xe4", "\r", "ab"});
    for (int i = 0; i < 3000; ++i) {
        std::vector<std::string> lines;
        std::string bytes = "#!?PAGETOP 500,5\n";
        for (int row = 0; row < 5; ++row) {
            lines.push_back(maker.text(20));
            const std::string escaped = printman::escape_report_line(lines.back());
            ASSERT_LE(escaped.size(), 510u);
            bytes += escaped + '\n';
        }
        ReportBuffer buffer;
        EscapeTable fields;
        buffer.set_file_name(file.write(bytes + "#!?PAGEEND\n"));
        ASSERT_EQ(buffer.init(fields), 0);
        ASSERT_EQ(buffer.page_count(), 1);
        ASSERT_TRUE(buffer.read_page(printman::page_first, fields));
        PageRows rows;
        rows.load(buffer.cells(), 500, 5, fields);
        for (int row = 0; row < 5; ++row) {
            ASSERT_STREQ(buffer.cells().data() + 500 * row, lines[row].c_str()) << bytes;
            ASSERT_EQ(rows.row(row).size(), lines[row].empty() ? 0 : 1);
            if (!lines[row].empty()) {
                ASSERT_EQ(rows.row(row)[0].text.toLatin1().toStdString(), lines[row]);
            }
        }
    }
}
