#include <printman/printer/papersize.h>
#include <printman/printer/printerlookup.h>
#include <printman/printer/textfield.h>

#include <array>

namespace printman {

namespace {

bool is_named(const char* id) {
    return id && *id;
}

std::string paper_name(int paper_size) {
    std::array<char, 80> text{};
    get_paper_size(static_cast<short>(paper_size), text.data(), static_cast<int>(text.size()));
    return text.data();
}

std::optional<std::string> orientation_name(int orientation) {
    if (orientation == 0)
        return "Portrait";
    if (orientation == 1)
        return "Landscape";
    return {};
}

/// None when there is no such printer or all of its numbers are 0.
template <typename Record>
std::optional<PageLength> page_length_in(PrinterList<Record>& printers, const char* id) {
    Record record;
    if (!is_named(id) || !printers.find(id, record))
        return {};
    const PageLength length{record.page_length, record.first_line, record.last_line};
    return length == PageLength() ? std::nullopt : std::optional(length);
}

} // namespace

std::optional<PrinterData> find_printer_data(const QString& file, const char* id) {
    std::array<char, 128> printer_name{};
    std::array<char, 128> font_name{};
    DLWDEVMODE devmode;
    FontInfo font;
    PageInfo page;
    MarginInfo margins;
    if (get_prt_data(file, id, printer_name.data(), font_name.data(), nullptr, &devmode, &font,
                     &page, &margins) != 0)
        return {};
    return PrinterData{
        .printer_name = printer_name.data(),
        .paper_name = paper_name(devmode.paper_size),
        .orientation_name = orientation_name(devmode.orientation),
        .font_name = font_name.data(),
        .style_name = std::string(field_text(font.style_name)),
        .use_default_page_length = page.use_default_page_length,
        .page = {page.page_length, page.first_line, page.last_line},
        .margins = margins,
        .point_size = font.point_size,
    };
}

bool has_local_page_length(const QString& file, const char* id) {
    const auto data = is_named(id) ? find_printer_data(file, id) : std::nullopt;
    return data && data->use_default_page_length != 0;
}

std::optional<PageLength> local_page_length(const QString& file, const char* id) {
    const auto data = is_named(id) ? find_printer_data(file, id) : std::nullopt;
    return data ? std::optional(data->page) : std::nullopt;
}

bool has_remote_page_length(HostPrinters& host_printers, const char* id) {
    return page_length_in(host_printers, id).has_value();
}

std::optional<PageLength> remote_page_length(HostPrinters& host_printers,
                                             UnixPrinters& unix_printers, const char* id) {
    return unix_printers.capacity() != 0 ? page_length_in(unix_printers, id)
                                         : page_length_in(host_printers, id);
}

} // namespace printman
