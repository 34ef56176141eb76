#include <printman/printer/paths.h>
#include <printman/printer/prtsetup.h>
#include <printman/printer/setupfile.h>
#include <printman/printer/textfield.h>

#include <QFile>

using namespace printman;

namespace {

constexpr size_t text_size = 128;

template <typename Value>
void store(Value* output, const Value& value) {
    if (output)
        *output = value;
}

} // namespace

int get_prt_data(const QString& file, const char* printer_id, char* printer_name, char* font_name,
                 int* setup_value, DLWDEVMODE* devmode, FontInfo* font, PageInfo* page,
                 MarginInfo* margins) {
    const QByteArray path = QFile::encodeName(file);
    // A zero byte would end the name early, and another file would be read.
    if (path.isEmpty() || path.contains('\0'))
        return -1;
    const auto record = find_setup_record(path.constData(), printer_id);
    if (!record)
        return -1;
    put_text(printer_name, text_size, field_text(record->printer_name));
    put_text(font_name, text_size, field_text(record->font_name));
    store(setup_value, record->setup_value);
    store(devmode, record->devmode);
    store(font, record->font);
    store(page, record->page);
    store(margins, record->margins);
    return 0;
}

int get_prt_data(const char* printer_id, char* printer_name, char* font_name, int* setup_value,
                 DLWDEVMODE* devmode, FontInfo* font, PageInfo* page, MarginInfo* margins) {
    return get_prt_data(get_prtbin_path(), printer_id, printer_name, font_name, setup_value,
                        devmode, font, page, margins);
}
