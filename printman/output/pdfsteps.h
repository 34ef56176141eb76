#pragma once

#include <QByteArray>
#include <QString>

#include <iosfwd>
#include <vector>

namespace printman {

/// What becomes of the PDF: a file for the host, a printed job, or the file of a server job.
enum class PdfPurpose { create, print, serve };

enum class WatermarkPlace { none, behind, in_front };

/// The files of a PDF job.
struct PdfNames {
    QString ps;        ///< the painted report; of a server job it becomes the PDF
    QString pdf;       ///< the report alone as PDF
    QString over;      ///< between two steps
    QString result;    ///< the whole
    QString watermark; ///< the watermark's page as PDF
};

/// One step of a PDF job.
struct PdfStep {
    enum class Kind {
        run,            ///< a shell command
        make_watermark, ///< paint the watermark's page and turn it into a PDF
        rename,         ///< give a scratch file another scratch file's name
        move,           ///< put a file under a name that is not scratch
        remove
    };
    Kind kind = Kind::run;
    QByteArray command;
    QString from; ///< what is renamed, moved or removed
    QString to;   ///< what the step makes; empty for none

    bool operator==(const PdfStep&) const = default;
};

/// The steps of a PDF job, in order. Nothing is looked at or run.
///
/// @param form    a PDF that is laid behind the report; empty for none
/// @param printer the queue to print to
std::vector<PdfStep> pdf_steps(PdfPurpose purpose, WatermarkPlace watermark, const QString& form,
                               const PdfNames& names, const QString& printer);

/// The steps that turn a painted watermark into its PDF.
std::vector<PdfStep> watermark_steps(const QString& ps, const QString& pdf);

/// A step as a line of text, for messages.
std::ostream& operator<<(std::ostream& out, const PdfStep& step);

} // namespace printman
