#include <printman/output/pdfcommands.h>
#include <printman/output/pdfsteps.h>

#include <ostream>

namespace printman {

namespace {

using Kind = PdfStep::Kind;
using Steps = std::vector<PdfStep>;

PdfStep run(const QByteArray& command, const QString& makes = {}) {
    return {.kind = Kind::run, .command = command, .from = {}, .to = makes};
}

PdfStep relocate(Kind kind, const QString& from, const QString& to) {
    return {.kind = kind, .command = {}, .from = from, .to = to};
}

PdfStep remove(const QString& name) {
    return {.kind = Kind::remove, .command = {}, .from = name, .to = {}};
}

PdfStep lay_behind(const QString& front, const QString& back, const QString& result) {
    return run(background_command(front, back, result), result);
}

/// Makes the result of the report alone: with the form and the watermark, as far as there are any.
void combine(Steps& steps, PdfPurpose purpose, WatermarkPlace watermark, const QString& form,
             const PdfNames& names) {
    if (watermark == WatermarkPlace::none) {
        // Only the result of create is a name that a user sees.
        const Kind kind = purpose == PdfPurpose::create ? Kind::move : Kind::rename;
        steps.push_back(form.isEmpty() ? relocate(kind, names.pdf, names.result)
                                       : lay_behind(names.pdf, form, names.result));
        return;
    }
    steps.push_back(
        {.kind = Kind::make_watermark, .command = {}, .from = {}, .to = names.watermark});
    if (watermark == WatermarkPlace::behind) {
        if (!form.isEmpty())
            steps.push_back(lay_behind(names.watermark, form, names.over));
        steps.push_back(
            lay_behind(names.pdf, form.isEmpty() ? names.watermark : names.over, names.result));
    } else if (form.isEmpty()) {
        steps.push_back(run(stamp_command(names.pdf, names.watermark, names.result), names.result));
    } else {
        // The file between is whatever is there: nothing lays the form behind the report.
        steps.push_back(lay_behind(names.watermark, names.over, names.result));
    }
}

} // namespace

Steps pdf_steps(PdfPurpose purpose, WatermarkPlace watermark, const QString& form,
                const PdfNames& names, const QString& printer) {
    Steps steps{run(ps2pdf_command(names.ps, names.pdf), names.pdf)};
    combine(steps, purpose, watermark, form, names);
    if (purpose == PdfPurpose::print) {
        steps.push_back(relocate(Kind::rename, names.result, names.ps));
        steps.push_back(run(lpr_command(printer, names.ps)));
    } else if (purpose == PdfPurpose::serve) {
        steps.push_back(relocate(Kind::move, names.result, names.ps));
    }
    if (purpose != PdfPurpose::serve)
        steps.push_back(remove(names.ps));
    steps.push_back(remove(names.pdf));
    steps.push_back(remove(names.over));
    // A server job without a watermark shares no name with others, whose watermark this may be.
    if (purpose != PdfPurpose::serve || watermark != WatermarkPlace::none)
        steps.push_back(remove(names.watermark));
    return steps;
}

Steps watermark_steps(const QString& ps, const QString& pdf) {
    return {run(ps2pdf_command(ps, pdf), pdf), remove(ps)};
}

std::ostream& operator<<(std::ostream& out, const PdfStep& step) {
    switch (step.kind) {
    case Kind::run:
        return out << step.command.toStdString();
    case Kind::make_watermark:
        return out << "make the watermark " << step.to.toStdString();
    case Kind::rename:
        return out << "rename " << step.from.toStdString() << " to " << step.to.toStdString();
    case Kind::move:
        return out << "move " << step.from.toStdString() << " to " << step.to.toStdString();
    case Kind::remove:
        return out << "remove " << step.from.toStdString();
    }
    return out;
}

} // namespace printman
