#include <printman/render/zoom.h>

#include <cstring>

namespace printman {

const ZoomRatio zoom_ratios[] = {{50, "50%"},   {100, "100%"}, {150, "150%"}, {200, "200%"},
                                 {250, "250%"}, {300, "300%"}, {0, ""}};

QStringList zoom_names() {
    QStringList names;
    for (const ZoomRatio* row = zoom_ratios; row->ratio != 0; ++row)
        names << QString::fromLatin1(row->name);
    return names;
}

int zoom_ratio(const char* name) {
    if (!name)
        return 0;
    for (const ZoomRatio* row = zoom_ratios; row->ratio != 0; ++row) {
        if (std::strcmp(row->name, name) == 0)
            return row->ratio;
    }
    return 0;
}

} // namespace printman

QSize get_preview_size(QSize view) {
    return {view.width() - 30, view.height() - 30};
}

QPoint get_preview_loc(QSize page, QSize view) {
    return {(view.width() - page.width()) / 2, (view.height() - page.height()) / 2};
}
