#include <printman/dialogs/openerror.h>
#include <printman/export/pagetext.h>
#include <printman/manager/runningjob.h>
#include <printman/printer/paths.h>
#include <printman/render/itempainter.h>

#include <QFile>
#include <QPointer>

#include <algorithm>

using namespace printman;

namespace {

// Beyond any page; the corners of a rectangle of such numbers still fit.
constexpr int max_cell = 1 << 28;

} // namespace

CPrintMan::CPrintMan() : d(std::make_shared<Private>()) {}

CPrintMan::~CPrintMan() {
    // A job that has let this happen ends, and then lets go of the rest.
    d->control->cancel();
    d.reset();
    if (remove_on_destroy && !remove_file.isEmpty())
        QFile::remove(remove_file);
}

int CPrintMan::init_printman() {
    const std::string name = new_report_name();
    return d->start_report(name) ? static_cast<int>(name.size()) : -1;
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
    d->last_job =
        added ? Result() : Result::failure(tr("the page cannot be added to the report file"));
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
    return d->init_buffer(cell_width, cell_height);
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
    const QPointer<QWidget> window = parent;
    Private::RunningJob job(*this);
    job.start_control();
    const Result saved = job->save_report(parent, path);
    const int done = job->note(saved);
    if (window && !done && !saved.is_canceled())
        show_open_error(window, path);
    return done;
}

int CPrintMan::write_rpt_text(const char* path) {
    Private::RunningJob job(*this);
    job.start_control();
    return job->note(job->write_report(path));
}

bool CPrintMan::last_job_ok() const {
    return d->last_job.error().isEmpty();
}

QString CPrintMan::last_job_error() const {
    return d->last_job.error();
}

const Result& CPrintMan::last_job() const {
    return d->last_job;
}

JobStage CPrintMan::job_stage() const {
    return d->control->stage();
}

void CPrintMan::set_progress(Progress progress) {
    d->control->set_progress(std::move(progress));
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
    d->load_rows();
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
    return d->load_page(request);
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
    d->control->cancel();
    if (d->printer)
        d->printer->abort();
}
