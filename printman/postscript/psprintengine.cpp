#include <printman/postscript/psprintengine.h>

#include <QHash>
#include <QVariant>

#include <climits>

namespace printman {

namespace {

// Of the portrait sheet, in points: half an inch at the sides, a third at top and bottom.
constexpr double side_margin = 36.0;
constexpr double end_margin = 24.0;

constexpr int true_color_depth = 24;

} // namespace

PsPrintEngine::PsPrintEngine()
    : layout_(QPageSize(QPageSize::A4), QPageLayout::Portrait, QMarginsF(), QPageLayout::Point) {
    apply_default_margins();
}

void PsPrintEngine::apply_default_margins() {
    const bool turned = layout_.orientation() == QPageLayout::Landscape;
    layout_.setUnits(QPageLayout::Point);
    layout_.setMargins(turned ? QMarginsF(end_margin, side_margin, end_margin, side_margin)
                              : QMarginsF(side_margin, end_margin, side_margin, end_margin));
}

void PsPrintEngine::set_orientation(QPageLayout::Orientation orientation) {
    layout_.setOrientation(orientation);
    if (!margins_set_)
        apply_default_margins();
}

bool PsPrintEngine::set_margins(const QMarginsF& pixels) {
    const double points = 72.0 / setup_.resolution;
    QPageLayout changed = layout_;
    changed.setUnits(QPageLayout::Point);
    if (!changed.setMargins(pixels * points) || changed.paintRect().isEmpty())
        return false;
    layout_ = changed;
    margins_set_ = true;
    return true;
}

void PsPrintEngine::setProperty(PrintEnginePropertyKey key, const QVariant& value) {
    switch (key) {
    case PPK_Creator:
        setup_.creator = value.toString();
        break;
    case PPK_DocumentName:
        setup_.title = value.toString();
        break;
    case PPK_OutputFileName:
        setup_.output_file = value.toString();
        setup_.is_scratch = false;
        break;
    case PPK_PrinterName:
        setup_.printer_name = value.toString();
        break;
    case PPK_CopyCount:
    case PPK_NumberOfCopies:
        setup_.copies = std::max(1, value.toInt());
        break;
    case PPK_CollateCopies:
        setup_.collate = value.toBool();
        break;
    case PPK_Resolution:
        if (value.toInt() > 0)
            setup_.resolution = value.toInt();
        break;
    case PPK_Orientation:
        set_orientation(static_cast<QPageLayout::Orientation>(value.toInt()));
        break;
    case PPK_FullPage:
        layout_.setMode(value.toBool() ? QPageLayout::FullPageMode : QPageLayout::StandardMode);
        break;
    case PPK_QPageSize:
        if (const auto size = qvariant_cast<QPageSize>(value); size.isValid()) {
            layout_.setPageSize(size);
            if (!margins_set_)
                apply_default_margins();
        }
        break;
    case PPK_QPageMargins: {
        const auto margins = qvariant_cast<std::pair<QMarginsF, QPageLayout::Unit>>(value);
        QPageLayout changed = layout_;
        changed.setUnits(margins.second);
        if (changed.setMargins(margins.first)) {
            layout_ = changed;
            margins_set_ = true;
        }
        break;
    }
    case PPK_QPageLayout:
        if (const auto layout = qvariant_cast<QPageLayout>(value); layout.isValid()) {
            layout_ = layout;
            margins_set_ = true;
        }
        break;
    default:
        carried_.insert(key, value);
        break;
    }
}

QVariant PsPrintEngine::property(PrintEnginePropertyKey key) const {
    switch (key) {
    case PPK_Creator:
        return setup_.creator;
    case PPK_DocumentName:
        return setup_.title;
    case PPK_OutputFileName:
        return setup_.output_file;
    case PPK_PrinterName:
        return setup_.printer_name;
    case PPK_CopyCount:
    case PPK_NumberOfCopies:
        return setup_.copies;
    case PPK_SupportsMultipleCopies:
        return true;
    case PPK_CollateCopies:
        return setup_.collate;
    case PPK_Resolution:
        return setup_.resolution;
    case PPK_SupportedResolutions:
        return QList<QVariant>{setup_.resolution};
    case PPK_Orientation:
        return layout_.orientation();
    case PPK_FullPage:
        return layout_.mode() == QPageLayout::FullPageMode;
    case PPK_PaperRect:
        return layout_.fullRectPixels(setup_.resolution);
    case PPK_PageRect:
        return area();
    case PPK_PaperName:
        return layout_.pageSize().name();
    case PPK_QPageSize:
        return QVariant::fromValue(layout_.pageSize());
    case PPK_QPageMargins:
        return QVariant::fromValue(
            std::pair<QMarginsF, QPageLayout::Unit>(layout_.margins(), layout_.units()));
    case PPK_QPageLayout:
        return QVariant::fromValue(layout_);
    case PPK_ColorMode:
        return carried_.value(key, QPrinter::Color);
    case PPK_FontEmbedding:
        return true;
    default:
        return carried_.value(key);
    }
}

int PsPrintEngine::metric(QPaintDevice::PaintDeviceMetric id) const {
    constexpr double millimetres_per_inch = 25.4;
    const auto millimetres = [this](int pixels) {
        return qRound(pixels * millimetres_per_inch / setup_.resolution);
    };
    switch (id) {
    case QPaintDevice::PdmWidth:
        return std::max(1, area().width());
    case QPaintDevice::PdmHeight:
        return std::max(1, area().height());
    case QPaintDevice::PdmWidthMM:
        return millimetres(area().width());
    case QPaintDevice::PdmHeightMM:
        return millimetres(area().height());
    case QPaintDevice::PdmDpiX:
    case QPaintDevice::PdmDpiY:
    case QPaintDevice::PdmPhysicalDpiX:
    case QPaintDevice::PdmPhysicalDpiY:
        return setup_.resolution;
    case QPaintDevice::PdmNumColors:
        return INT_MAX;
    case QPaintDevice::PdmDepth:
        return true_color_depth;
    case QPaintDevice::PdmDevicePixelRatio:
        return 1;
    case QPaintDevice::PdmDevicePixelRatioScaled:
        return static_cast<int>(QPaintDevice::devicePixelRatioFScale());
    }
    return 0;
}

QPrinter::PrinterState PsPrintEngine::printerState() const {
    return state_ == QPrinter::Active && !job_->result().ok() ? QPrinter::Error : state_;
}

const Result& PsPrintEngine::result() const {
    return job_ && !job_->result().ok() ? job_->result() : result_;
}

PsJob* PsPrintEngine::document() {
    return printerState() == QPrinter::Active ? job_.get() : nullptr;
}

bool PsPrintEngine::begin() {
    if (state_ == QPrinter::Active || state_ == QPrinter::Aborted)
        return false;
    job_ = std::make_unique<PsJob>();
    const bool ok = job_->begin(setup_, layout_);
    state_ = ok ? QPrinter::Active : QPrinter::Error;
    result_ = job_->result();
    if (!ok)
        job_.reset();
    return ok;
}

bool PsPrintEngine::newPage() {
    if (state_ != QPrinter::Active)
        return false;
    if (job_->new_page(layout_))
        return true;
    result_ = job_->result();
    state_ = QPrinter::Error;
    return false;
}

bool PsPrintEngine::abort() {
    if (state_ != QPrinter::Active)
        return false;
    job_->discard();
    state_ = QPrinter::Aborted;
    return true;
}

bool PsPrintEngine::end() {
    bool ok = false;
    if (state_ == QPrinter::Active) {
        ok = job_->end();
        result_ = job_->result();
        state_ = ok ? QPrinter::Idle : QPrinter::Error;
    } else if (state_ == QPrinter::Aborted) {
        state_ = QPrinter::Idle;
    }
    job_.reset();
    return ok;
}

} // namespace printman
