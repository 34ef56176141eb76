#include <printman/export/pagetext.h>
#include <printman/export/reporttext.h>
#include <printman/manager/printmanprivate.h>
#include <printman/printer/hostservices.h>
#include <printman/render/itempainter.h>
#include <printman/toolkit/pagesizes.h>

#include <QApplication>
#include <QFile>
#include <QMessageBox>
#include <QPointer>
#include <QRandomGenerator>
#include <QWidget>

#include <algorithm>
#include <array>
#include <unistd.h>

using namespace printman;

namespace {

constexpr int letter_page_size = 2;

// Beyond any page; the corners of a rectangle of such numbers still fit.
constexpr int max_cell = 1 << 28;

std::string fresh_report_directory() {
    const char* setting = GetEnv("TMPDIR", "dlwmenu.ini", "env");
    if (setting && *setting)
        return setting;
    std::array<char, 256> directory{};
    return getcwd(directory.data(), directory.size()) ? directory.data() : "/tmp";
}

/// While the box is open, everything may be closed, the manager too: it comes last.
void show_open_error(QWidget* parent, const char* path) {
    // It goes with its parent.
    const QPointer<QMessageBox> box =
        new QMessageBox(QMessageBox::Warning, CPrintMan::tr("File Open Error"),
                        CPrintMan::tr("Can not open file: %1").arg(QFile::decodeName(path)),
                        QMessageBox::NoButton, parent);
    box->setTextFormat(Qt::PlainText);
    box->addButton(CPrintMan::tr("Ok"), QMessageBox::AcceptRole);
    box->exec();
    delete box;
}

bool can_show_boxes() {
    return qobject_cast<QApplication*>(QCoreApplication::instance());
}

} // namespace

void CPrintMan::Private::make_printer() {
    // Qt refuses to make a printer without an application object.
    if (!QCoreApplication::instance())
        return;
    printer = std::make_shared<PsPrinter>();
    printer->setPageSize(page_size_of(letter_page_size));
}

/// @return false when the name is too long, or a job works with another report
bool CPrintMan::Private::start_report(const std::string& name) {
    if (jobs > 0 || !report.set_file_name(name))
        return false;
    make_printer();
    report.clear_index();
    // Nothing of an earlier report is selected or painted as a page of this one.
    rows.release();
    highlights.forget();
    return true;
}

bool CPrintMan::Private::printing_aborted() const {
    return printer && printer->printerState() == QPrinter::Aborted;
}

void CPrintMan::Private::write_text(OutputFile& out) {
    PrintmanProgress asked;
    if (progress)
        asked = [this](int done, int total) { return !(canceled = !progress(done, total)); };
    job_error = write_report_text(report, fields, out, asked);
}

void CPrintMan::Private::add_marker(int row, const MarkerParse& parse) {
    if (parse.field)
        fields.add(row, *parse.field);
}

CPrintMan::CPrintMan() : d(std::make_shared<Private>()) {}

CPrintMan::~CPrintMan() {
    // A job that has let this happen ends, and then lets go of the rest.
    d->canceled = d->canceled || d->jobs > 0;
    d.reset();
    if (remove_on_destroy && !remove_file.isEmpty())
        QFile::remove(remove_file);
}

int CPrintMan::init_printman() {
    const std::string directory = fresh_report_directory();
    std::string name;
    do {
        name = directory + "/rpt" + std::to_string(QRandomGenerator::global()->bounded(RAND_MAX));
    } while (QFile::exists(QFile::decodeName(name.c_str())));
    if (!d->start_report(name))
        return -1;
    return static_cast<int>(name.size());
}

int CPrintMan::init_printman(const char* path) {
    if (!path || !d->start_report(path))
        return -1;
    return init_scr_buffer(0, 0);
}

int CPrintMan::open_rpt_buffer(const char* mode) {
    return d->report.open(mode);
}

int CPrintMan::close_rpt_buffer() {
    return d->report.close();
}

void CPrintMan::add_rpt_page(const char* data, int size) {
    const bool added = d->report.add_page(data, size);
    d->job_error = added ? QString() : tr("the page cannot be added to the report file");
}

int CPrintMan::get_scr_size() {
    return d->report.read_geometry();
}

void CPrintMan::get_scr_size(int* width, int* height) {
    if (width)
        *width = d->cell_width * d->report.geometry().columns;
    if (height)
        *height = d->cell_height * d->report.geometry().lines;
}

int CPrintMan::init_scr_buffer(int cell_width, int cell_height) {
    const int result = d->report.init(d->fields);
    d->cell_width = cell_width;
    d->cell_height = cell_height;
    return result;
}

int CPrintMan::set_page_loc() {
    return d->report.index_pages();
}

int CPrintMan::get_page_count() {
    return d->report.page_count();
}

int CPrintMan::check_rpt_page(int request) {
    return d->report.allows(request);
}

int CPrintMan::get_rpt_page(char* buffer, int size, int request) {
    if (!buffer || size < 0)
        return 0;
    return d->report.read_page(request, {buffer, static_cast<size_t>(size)}, d->fields);
}

int CPrintMan::save_rpt_file(QWidget* parent, const char* path) {
    if (!path || !*path)
        return 0;
    d->canceled = false;
    OutputFile out;
    if (!out.open(path)) {
        d->job_error = out.error();
    } else {
        if (parent)
            parent->setCursor(Qt::WaitCursor);
        init_scr_buffer(0, 0);
        d->write_text(out);
        if (parent)
            parent->setCursor(Qt::ArrowCursor);
    }
    const bool done = last_job_ok();
    if (!done && !d->canceled && parent)
        show_open_error(parent, path);
    return done;
}

int CPrintMan::write_rpt_text(const char* path) {
    OutputFile out;
    if (!path || !*path)
        d->job_error = tr("no file name");
    else if (d->report.page_count() == 0)
        d->job_error = tr("the report has no pages");
    else if (!out.open(path))
        d->job_error = out.error();
    else
        d->write_text(out);
    return last_job_ok();
}

void CPrintMan::save_cur_page(QWidget* parent, const char* file_name) {
    if (!file_name || !*file_name)
        return;
    OutputFile out;
    d->job_error = out.open(file_name) ? write_page_text(d->rows.rows(), out) : out.error();
    if (!last_job_ok() && can_show_boxes())
        show_open_error(parent, file_name);
}

bool CPrintMan::last_job_ok() const {
    return d->job_error.isEmpty();
}

QString CPrintMan::last_job_error() const {
    return d->job_error;
}

void CPrintMan::set_progress(PrintmanProgress progress) {
    d->progress = std::move(progress);
}

void CPrintMan::clear_escape_buffer() {
    d->fields.clear();
}

void CPrintMan::free_escape_buffer() {
    d->fields.release();
}

void CPrintMan::add_escape_field(int row, int type, int start, int size, int datasize) {
    d->fields.add(row, {static_cast<int16_t>(type), static_cast<int16_t>(start),
                        static_cast<int16_t>(size), static_cast<int16_t>(datasize)});
}

int CPrintMan::parse_escape_field(int row, int pos, int end) {
    const MarkerParse parse = parse_marker(d->report.line(), pos, end);
    d->add_marker(row, parse);
    return parse.consumed;
}

int CPrintMan::parse_escape_field2(int row, int pos, int end, int type) {
    const MarkerParse parse = parse_field_marker(d->report.line(), pos, end, type);
    d->add_marker(row, parse);
    return parse.consumed;
}

bool CPrintMan::find_escape_field(int row, int column, int second, int* type, int* start, int* size,
                                  int* datasize) {
    const EscapeField* field =
        d->fields.find(row, column, d->report.geometry().columns, second != 0);
    if (!field)
        return false;
    const auto store = [](int* out, int value) {
        if (out)
            *out = value;
    };
    store(type, field->type);
    store(start, field->start);
    store(size, field->size);
    store(datasize, field->data_size);
    return true;
}

void CPrintMan::print_escape_field(int row) {
    for (const EscapeField& field : d->fields.row(row)) {
        const QString text =
            QString::asprintf("type=%d startcol=%d fldsize=%d datasize=%d", field.type, field.start,
                              field.size, field.data_size);
        DLWErrorWin(text.toLatin1().constData());
    }
}

void CPrintMan::load_current_page() {
    const PageGeometry& page = d->report.geometry();
    if (page.known())
        d->rows.load(d->report.cells(), page.columns, page.lines, d->fields);
}

void CPrintMan::free_page_rows() {
    d->rows.release();
}

void CPrintMan::add_stringitem(int row, int x, int y, int width, int height, const char* text,
                               int align) {
    StringItem item;
    const auto cut = [](int value) { return std::clamp(value, -max_cell, max_cell); };
    item.cell = QRect(cut(x), cut(y), cut(width), cut(height));
    item.text = QString::fromLatin1(text);
    item.align = static_cast<int16_t>(align);
    d->rows.add(row, item);
}

int CPrintMan::get_rpt_page(int request) {
    if (!d->report.geometry().known())
        return 0;
    if (request == page_current)
        return 1;
    if (!d->report.read_page(request, d->fields))
        return 0;
    load_current_page();
    return 1;
}

int CPrintMan::set_logical_unit(QPainter* p, int keep, int margin_x, int margin_y) {
    const PageGeometry& page = d->report.geometry();
    if (p && page.known())
        d->units.set(*p, page.columns, page.lines, keep != 0, margin_x, margin_y);
    return 0;
}

int CPrintMan::print_stringitem(QPainter* p, const StringItem& item) {
    if (!p)
        return 0;
    ItemPainter(*p, d->units).draw(item);
    return 1;
}

int CPrintMan::print_histringitem(QPainter* p, const StringItem& item) {
    if (!p)
        return 0;
    ItemPainter(*p, d->units).draw_highlight(item);
    return 1;
}

int CPrintMan::print_page(QPainter* p) {
    if (!p || !d->report.geometry().known() || d->printing_aborted())
        return 0;
    ItemPainter(*p, d->units).draw_page(d->rows.rows());
    return 1;
}

void CPrintMan::set_paper_size(int width, int height) {
    d->units.paper_width = width;
    d->units.paper_height = height;
}

void CPrintMan::printman_error(const char*) {}

int CPrintMan::get_cur_page() const {
    return d->report.current_page();
}

int CPrintMan::get_columns() const {
    return d->report.geometry().columns;
}

int CPrintMan::get_lines() const {
    return d->report.geometry().lines;
}

const QValueList<StringItem>& CPrintMan::page_row(int line) const {
    return d->rows.row(line);
}

void CPrintMan::printing_canceled() {
    d->canceled = true;
    if (d->printer)
        d->printer->abort();
}
