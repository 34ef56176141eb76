#pragma once

#include <printman/postscript/psjob.h>

#include <QPageLayout>
#include <QPrintEngine>

#include <memory>

namespace printman {

/// The settings of a PsPrinter, and the job that is painted on it.
class PsPrintEngine : public QPrintEngine, public PageTarget {
public:
    PsPrintEngine();

    void setProperty(PrintEnginePropertyKey key, const QVariant& value) override;
    QVariant property(PrintEnginePropertyKey key) const override;
    bool newPage() override;
    bool abort() override;
    int metric(QPaintDevice::PaintDeviceMetric id) const override;
    QPrinter::PrinterState printerState() const override;

    bool begin() override;
    bool end() override;
    PsJob* document() override;
    int resolution() const override { return setup_.resolution; }

    /// Sets the margins in the page's current orientation, in device pixels.
    ///
    /// @return false if they leave no room; the old ones then stay
    bool set_margins(const QMarginsF& pixels);

    /// Marks the output file's name as a fixed scratch name, until another name is set.
    void set_scratch_output() { setup_.is_scratch = true; }
    void set_control(std::shared_ptr<JobControl> control) { setup_.control = std::move(control); }

    const QPageLayout& layout() const { return layout_; }
    /// A failure when the last job failed.
    const Result& result() const;

private:
    void set_orientation(QPageLayout::Orientation orientation);
    void apply_default_margins();
    QRect area() const { return ps_paint_area(layout_, setup_.resolution); }

    PsJobSetup setup_;
    QPageLayout layout_;
    bool margins_set_ = false;
    QHash<int, QVariant> carried_; ///< settings that the document does not depend on
    std::unique_ptr<PsJob> job_;
    QPrinter::PrinterState state_ = QPrinter::Idle;
    Result result_;
};

} // namespace printman
