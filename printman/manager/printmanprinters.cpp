#include <printman/manager/printmanprivate.h>
#include <printman/printer/hostservices.h>
#include <printman/printer/paths.h>
#include <printman/printer/textfield.h>

#include <QFile>

#include <string>

// The facade's functions for printers: the host's lists, ids, and what the setup file says.

using namespace printman;

namespace {

constexpr size_t text_size = 128;
constexpr size_t paper_text_size = 80;
constexpr qsizetype max_path = 255;

template <typename Value>
void store(Value* output, const Value& value) {
    if (output)
        *output = value;
}

int store(const std::optional<PageLength>& page, int* page_length, int* first_line,
          int* last_line) {
    if (!page)
        return 0;
    store(page_length, page->page_length);
    store(first_line, page->first_line);
    store(last_line, page->last_line);
    return 1;
}

} // namespace

void CPrintMan::set_numwin_printer(int n) {
    d->host_printers.set_capacity(n);
}

void CPrintMan::add_win_printer(const WinPrtSetup* printer) {
    d->host_printers.add(printer);
}

int CPrintMan::first_win_printer(WinPrtSetup* printer) {
    return d->host_printers.first(printer);
}

int CPrintMan::next_win_printer(WinPrtSetup* printer) {
    return d->host_printers.next(printer);
}

bool CPrintMan::is_unix_print() {
    return d->unix_printers.capacity() != 0;
}

void CPrintMan::set_numunix_printer(int n) {
    d->unix_printers.set_capacity(n);
}

void CPrintMan::add_unix_printer(const UnixPrtSetup* printer) {
    d->unix_printers.add(printer);
}

int CPrintMan::first_unix_printer(UnixPrtSetup* printer) {
    return d->unix_printers.first(printer);
}

int CPrintMan::next_unix_printer(UnixPrtSetup* printer) {
    return d->unix_printers.next(printer);
}

int CPrintMan::find_prt_data(const char* id, char* printer_name, char* paper_name,
                             char* orientation_name, char* font_name, char* style_name,
                             int* use_default_page_length, int* page_length, int* first_line,
                             int* last_line, double* top, double* bottom, double* left,
                             double* right, int* point_size) {
    const auto data = find_printer_data(get_prtbin_path(), id);
    if (!data)
        return 0;
    put_text(printer_name, text_size, data->printer_name);
    put_text(paper_name, paper_text_size, data->paper_name);
    if (data->orientation_name)
        put_text(orientation_name, text_size, *data->orientation_name);
    put_text(font_name, text_size, data->font_name);
    put_text(style_name, text_size, data->style_name);
    store(use_default_page_length, data->use_default_page_length);
    store(top, data->margins.top);
    store(bottom, data->margins.bottom);
    store(left, data->margins.left);
    store(right, data->margins.right);
    store(point_size, data->point_size);
    return store(data->page, page_length, first_line, last_line);
}

int CPrintMan::has_local_defpagelen(const char* id) {
    return has_local_page_length(get_prtbin_path(), id);
}

int CPrintMan::get_local_defpagelen(const char* id, int* page_length, int* first_line,
                                    int* last_line) {
    return store(local_page_length(get_prtbin_path(), id), page_length, first_line, last_line);
}

int CPrintMan::has_remote_defpagelen(const char* id) {
    return has_remote_page_length(d->host_printers, id);
}

int CPrintMan::get_remote_defpagelen(const char* id, int* page_length, int* first_line,
                                     int* last_line) {
    return store(remote_page_length(d->host_printers, d->unix_printers, id), page_length,
                 first_line, last_line);
}

void CPrintMan::get_prt_id() {
    d->listed_file.reset();
    const QByteArray path = QFile::encodeName(get_prtbin_path());
    if (path.isEmpty())
        return;
    auto file = std::make_unique<SetupFile>(path.constData());
    SetupRecord record;
    while (file->next(record)) {
        if (record.in_use != 0)
            d->printer_ids << QString::fromLatin1(field_text(record.printer_id));
    }
    if (file->is_open())
        d->listed_file = std::move(file);
}

int CPrintMan::get_prt_id(char* buffer, int size) {
    const std::string key(field_text(prt_key));
    return key.empty() ? 0 : get_prt_id(key.c_str(), buffer, size);
}

int CPrintMan::get_prt_id(const char* key, char* buffer, int size) {
    if (!key || !buffer || size <= 0)
        return 0;
    std::memset(buffer, 0, static_cast<size_t>(size));
    const QByteArray path = QFile::encodeName(get_prtini_path());
    if (path.isEmpty() || path.size() > max_path)
        return 0;
    return GetPrivateProfileString("printer", key, "", buffer, size, path.constData());
}

const QStringList& CPrintMan::printer_ids() const {
    return d->printer_ids;
}
