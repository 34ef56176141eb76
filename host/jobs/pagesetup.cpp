#include "host/jobs/pagesetup.h"

#include "host/printers/setupfile.h"
#include "host/settings/settings.h"

#include <printman/printer/prtsetup.h>
#include <printman/printman.h>
#include <printman/toolkit/pagesizes.h>

#include <algorithm>
#include <cmath>
#include <memory>

namespace host {

namespace {

double usable_margin(double inches) {
    return std::isfinite(inches) ? std::clamp(inches, 0.0, max_margin) : 0.0;
}

} // namespace

Outcome read_printer_setup(const QByteArray& id, PageSetup& setup) {
    Outcome readable = check_setup_file_for(id);
    if (!readable.ok())
        return readable;
    DLWDEVMODE devmode{};
    FontInfo font{};
    MarginInfo margins{};
    if (get_prt_data(id.constData(), nullptr, nullptr, nullptr, &devmode, &font, nullptr,
                     &margins) != 0)
        return Outcome::failure(printer_not_found(id));
    const std::unique_ptr<QFont> record_font(CPrintMan().create_font(font));
    setup.font = *record_font;
    setup.font.setStyleHint(QFont::TypeWriter);
    setup.exact_size = host_settings().no_page_map();
    setup.paper = printman::page_size_name(devmode.paper_size) ? devmode.paper_size : usual_paper();
    setup.orientation = devmode.orientation == 1 ? QPageLayout::Landscape : QPageLayout::Portrait;
    setup.margins = PageMargins{.top = usable_margin(margins.top),
                                .left = usable_margin(margins.left),
                                .bottom = usable_margin(margins.bottom),
                                .right = usable_margin(margins.right)};
    return Outcome::success();
}

QPageLayout::Orientation orientation_of(QSize grid) {
    return grid.width() > grid.height() ? QPageLayout::Landscape : QPageLayout::Portrait;
}

} // namespace host
