#include <printman/postscript/pspage.h>

#include <QImage>

#include <cmath>

namespace printman {

namespace {

constexpr int path_decimals = 2; // of a device pixel
// Fine enough that equal distances stay equal in a PDF, which is smaller for it.
constexpr int position_decimals = 3;
constexpr int matrix_decimals = 6;
constexpr int color_decimals = 3;

/// The color that a translucent one has on white paper: PostScript has no translucency.
QRgb on_paper(const QColor& color) {
    const QRgb c = color.rgba();
    const int alpha = qAlpha(c);
    const auto blend = [alpha](int value) { return (value * alpha + 255 * (255 - alpha)) / 255; };
    return qRgb(blend(qRed(c)), blend(qGreen(c)), blend(qBlue(c)));
}

} // namespace

std::string_view PsPage::procedures() {
    return "/s{moveto show}bind def\n"
           "/f/selectfont load def/c/setrgbcolor load def/g/setgray load def\n"
           "/m/moveto load def/l/lineto load def/v/curveto load def/h/closepath load def\n"
           "/F/fill load def/E/eofill load def/S/stroke load def/q/gsave load def/Q/grestore load "
           "def\n"
           "/n/newpath load def/W{clip newpath}bind def/w/setlinewidth load def/d/setdash load "
           "def\n"
           "/J/setlinecap load def/j/setlinejoin load def/M/setmiterlimit load def\n"
           // The deflated data may end before the enclosing filter has reached its end.
           "/i{image Y flushfile}bind def\n";
}

void PsPage::reset() {
    color_known_ = false;
    clipped_ = false;
    font_ = nullptr;
}

void PsPage::set_color(const QColor& color) {
    const QRgb wanted = on_paper(color);
    if (color_known_ && wanted == color_)
        return;
    color_ = wanted;
    color_known_ = true;
    const auto component = [this](int value) -> PsStream& {
        return out_.number(value / 255.0, color_decimals);
    };
    if (qRed(wanted) == qGreen(wanted) && qGreen(wanted) == qBlue(wanted)) {
        component(qRed(wanted)) << " g\n";
        return;
    }
    component(qRed(wanted)) << ' ';
    component(qGreen(wanted)) << ' ';
    component(qBlue(wanted)) << " c\n";
}

void PsPage::matrix(const QTransform& m) {
    out_ << '[';
    out_.number(m.m11(), matrix_decimals) << ' ';
    out_.number(m.m12(), matrix_decimals) << ' ';
    out_.number(m.m21(), matrix_decimals) << ' ';
    out_.number(m.m22(), matrix_decimals) << ' ';
    out_.number(m.dx(), path_decimals) << ' ';
    out_.number(m.dy(), path_decimals) << ']';
}

void PsPage::show(const EmbeddedFont& font, int encoding, const QTransform& font_matrix,
                  QPointF baseline, std::string_view codes, const QColor& color) {
    set_color(color);
    if (&font != font_ || encoding != encoding_ || font_matrix != font_matrix_) {
        font_ = &font;
        encoding_ = encoding;
        font_matrix_ = font_matrix;
        const QByteArray name = font.name(encoding);
        out_ << '/' << std::string_view(name.constData(), static_cast<size_t>(name.size()));
        matrix(font_matrix);
        out_ << "f\n";
    }
    out_.string(codes);
    out_.number(baseline.x(), position_decimals) << ' ';
    out_.number(baseline.y(), position_decimals) << " s\n";
}

void PsPage::show_thick(const EmbeddedFont& font, int encoding, const QTransform& font_matrix,
                        QPointF baseline, std::string_view codes, const QColor& color,
                        double stroke) {
    show(font, encoding, font_matrix, baseline, codes, color);
    out_ << "q n ";
    out_.number(baseline.x(), position_decimals) << ' ';
    out_.number(baseline.y(), position_decimals) << " moveto ";
    out_.string(codes) << " true charpath ";
    out_.number(stroke * std::sqrt(std::abs(font_matrix.determinant())), path_decimals)
        << " w S Q\n";
}

void PsPage::point(QPointF p) {
    out_.number(p.x(), path_decimals) << ' ';
    out_.number(p.y(), path_decimals) << ' ';
}

void PsPage::path(const QPainterPath& path) {
    QPointF start;
    QPointF last;
    bool open = false;
    const auto close = [&] {
        if (open && last == start)
            out_ << "h\n";
        open = false;
    };
    for (int i = 0; i < path.elementCount(); ++i) {
        const QPainterPath::Element element = path.elementAt(i);
        if (element.isMoveTo()) {
            close();
            start = element;
            point(element);
            out_ << "m\n";
        } else if (element.isLineTo()) {
            open = true;
            point(element);
            out_ << "l\n";
        } else {
            open = true;
            point(element);
            point(path.elementAt(++i));
            point(path.elementAt(++i));
            out_ << "v\n";
        }
        last = path.elementAt(i);
    }
    close();
}

void PsPage::fill(const QPainterPath& device_path, const QColor& color) {
    if (device_path.isEmpty() || color.alpha() == 0)
        return;
    set_color(color);
    path(device_path);
    out_ << (device_path.fillRule() == Qt::OddEvenFill ? "E\n" : "F\n");
}

void PsPage::stroke(const QPainterPath& device_path, const QPen& pen, const QTransform& transform) {
    if (device_path.isEmpty() || pen.style() == Qt::NoPen || pen.color().alpha() == 0)
        return;
    set_color(pen.color());
    const bool cosmetic = pen.isCosmetic();
    const double width = pen.widthF() > 0 ? pen.widthF() : 1.0;
    path(device_path);
    out_ << "q ";
    if (!cosmetic && transform.type() > QTransform::TxTranslate) {
        matrix(
            QTransform(transform.m11(), transform.m12(), transform.m21(), transform.m22(), 0, 0));
        out_ << "concat ";
    }
    out_.number(width, path_decimals) << " w ";
    out_.integer(pen.capStyle() == Qt::RoundCap    ? 1
                 : pen.capStyle() == Qt::SquareCap ? 2
                                                   : 0)
        << " J ";
    out_.integer(pen.joinStyle() == Qt::RoundJoin   ? 1
                 : pen.joinStyle() == Qt::BevelJoin ? 2
                                                    : 0)
        << " j ";
    // Qt measures the limit from the middle of the line, PostScript from edge to edge.
    out_.number(std::max(1.0, 2 * pen.miterLimit()), path_decimals) << " M ";
    if (pen.style() != Qt::SolidLine) {
        out_ << '[';
        for (const double dash : pen.dashPattern())
            out_.number(dash * width, path_decimals) << ' ';
        out_ << ']';
        out_.number(pen.dashOffset() * width, path_decimals) << " d ";
    }
    // Q has restored the path.
    out_ << "S Q n\n";
}

void PsPage::set_clip(const QPainterPath& device_path) {
    clear_clip();
    out_ << "q\n";
    clipped_ = true;
    if (device_path.isEmpty()) {
        out_ << "0 0 m h W\n";
        return;
    }
    path(device_path);
    out_ << (device_path.fillRule() == Qt::OddEvenFill ? "eoclip n\n" : "W\n");
}

void PsPage::clear_clip() {
    if (!clipped_)
        return;
    out_ << "Q\n";
    reset();
}

void PsPage::image(const QImage& image, const QTransform& transform) {
    if (image.isNull())
        return;
    const bool masked = image.hasAlphaChannel();
    const bool gray = !masked && image.allGray();
    const QImage pixels = image.convertToFormat(masked ? QImage::Format_ARGB32
                                                : gray ? QImage::Format_Grayscale8
                                                       : QImage::Format_RGB32);
    QByteArray samples;
    for (int y = 0; y < pixels.height(); ++y) {
        const uchar* row = pixels.constScanLine(y);
        if (gray) {
            samples.append(reinterpret_cast<const char*>(row), pixels.width());
            continue;
        }
        const QRgb* rgb = reinterpret_cast<const QRgb*>(row);
        for (int x = 0; x < pixels.width(); ++x) {
            const QRgb color = masked ? on_paper(QColor::fromRgba(rgb[x])) : rgb[x];
            // A mask sample of 1 is not painted.
            if (masked)
                samples.append(qAlpha(rgb[x]) == 0 ? '\xff' : '\0');
            samples.append(static_cast<char>(qRed(color)));
            samples.append(static_cast<char>(qGreen(color)));
            samples.append(static_cast<char>(qBlue(color)));
        }
    }
    out_ << "q ";
    matrix(transform);
    out_ << (gray ? "concat/DeviceGray setcolorspace\n" : "concat/DeviceRGB setcolorspace\n");
    out_ << "/Y currentfile/ASCIIHexDecode filter def\n";
    const auto size = [&]() -> PsStream& {
        out_ << "/ImageType 1/Width ";
        out_.integer(pixels.width()) << "/Height ";
        return out_.integer(pixels.height()) << "/BitsPerComponent 8/ImageMatrix[1 0 0 1 0 0]";
    };
    if (masked) {
        out_ << "<</ImageType 3/InterleaveType 1/DataDict<<";
        size();
    } else {
        out_ << "<<";
        size();
    }
    out_ << (gray ? "/Decode[0 1]" : "/Decode[0 1 0 1 0 1]")
         << "\n/DataSource Y/FlateDecode filter>>";
    if (masked) {
        out_ << "\n/MaskDict<<";
        size() << "/Decode[0 1]>>>>";
    }
    out_ << "\ni\n";
    // qCompress puts the length before the deflated stream.
    const QByteArray deflated = qCompress(samples).mid(4);
    out_.hex({deflated.constData(), static_cast<size_t>(deflated.size())}) << ">\nQ\n";
}

} // namespace printman
