#include <printman/postscript/psfonts.h>
#include <printman/postscript/psjob.h>

#include <QFile>
#include <QFileInfo>

#include <vector>

namespace printman {

namespace {

constexpr std::string_view first_line = "%!PS-Adobe-3.0\n";
constexpr size_t spool_block = 256 * 1024;
constexpr int points_per_inch = 72;

QSize paper_points(const QPageLayout& layout) {
    return layout.fullRect(QPageLayout::Point).size().toSize();
}

/// A text for the document's information: UTF-16 with a byte order mark, as in PDF.
void write_info_text(PsStream& out, const QString& text) {
    QByteArray utf16("\xfe\xff", 2);
    for (const QChar c : text) {
        utf16 += static_cast<char>(c.unicode() >> 8);
        utf16 += static_cast<char>(c.unicode() & 0xff);
    }
    out << '<';
    out.hex({utf16.constData(), static_cast<size_t>(utf16.size())}) << '>';
}

} // namespace

QRect ps_paint_area(const QPageLayout& layout, int resolution) {
    const QRect sheet = layout.fullRectPixels(resolution);
    if (layout.mode() == QPageLayout::FullPageMode)
        return sheet;
    const QMarginsF margins = layout.margins(QPageLayout::Point) * resolution / points_per_inch;
    return sheet.marginsRemoved(QMargins(qRound(margins.left()), qRound(margins.top()),
                                         qRound(margins.right()), qRound(margins.bottom())));
}

bool PsJob::begin(const PsJobSetup& setup, const QPageLayout& layout) {
    setup_ = setup;
    std::string directory;
    if (setup.output_file.isEmpty()) {
        sink_ = make_spooler_sink(setup.printer_name, setup.copies, setup.collate, setup.control);
    } else {
        sink_ = setup.is_scratch ? make_scratch_sink(setup.output_file)
                                 : make_file_sink(setup.output_file);
        const QFileInfo target(setup.output_file);
        if (!target.exists() || target.isFile())
            directory = QFile::encodeName(target.absolutePath()).toStdString();
    }
    if (!succeeds(sink_->open()) || !succeeds(spool_.open(directory, setup.output_file)))
        return false;
    // Written first, so that an output that accepts nothing fails the job before it is painted. Not
    // to a spooler: it forgets a dropped job only if it has received nothing.
    if (!setup.output_file.isEmpty() && !succeeds(sink_->write(first_line)))
        return false;
    first_size_ = paper_points(layout);
    start_page(layout);
    return true;
}

/// Whether a step of the job succeeds; the first that does not ends the job.
bool PsJob::succeeds(const Result& step) {
    if (result_.ok() && !step.ok()) {
        result_ = step;
        if (sink_)
            sink_->discard();
        spool_.close();
        stream_.clear();
    }
    return step.ok();
}

void PsJob::start_page(const QPageLayout& layout) {
    ++pages_;
    const QSize paper = paper_points(layout);
    box_ = box_.expandedTo(paper);
    const QRect full = layout.fullRectPixels(setup_.resolution);
    const QRect area = ps_paint_area(layout, setup_.resolution);
    const double scale = static_cast<double>(points_per_inch) / setup_.resolution;

    stream_ << "%%Page: ";
    stream_.integer(pages_) << ' ';
    stream_.integer(pages_) << "\n%%PageBoundingBox: 0 0 ";
    stream_.integer(paper.width()) << ' ';
    stream_.integer(paper.height()) << "\n%%BeginPageSetup\n";
    stream_.integer(paper.width()) << ' ';
    stream_.integer(paper.height()) << " paper/page save def[";
    stream_.number(scale, 4) << " 0 0 ";
    stream_.number(-scale, 4) << ' ';
    stream_.number(area.x() * scale, 4) << ' ';
    stream_.number((full.height() - area.y()) * scale, 4) << "]concat\n%%EndPageSetup\n";
    page_.reset();
}

void PsJob::end_page() {
    page_.clear_clip();
    stream_ << "page restore showpage\n";
    spool();
}

bool PsJob::new_page(const QPageLayout& layout) {
    end_page();
    if (!result_.ok() || !succeeds(sink_->check()))
        return false;
    start_page(layout);
    return true;
}

void PsJob::settle() {
    if (stream_.size() >= spool_block)
        spool();
}

void PsJob::spool() {
    if (result_.ok())
        succeeds(spool_.write(stream_.text()));
    stream_.clear();
}

void PsJob::write_head(PsStream& out) const {
    out << "%%Creator: ";
    out.string(ps_comment_text(setup_.creator).toStdString()) << "\n%%Title: ";
    out.string(ps_comment_text(setup_.title).toStdString()) << "\n%%LanguageLevel: 3\n%%Pages: ";
    out.integer(pages_) << "\n%%PageOrder: Ascend\n%%BoundingBox: 0 0 ";
    out.integer(box_.width()) << ' ';
    out.integer(box_.height()) << "\n%%Orientation: "
                               << (box_.width() > box_.height() ? "Landscape" : "Portrait")
                               << "\n%%DocumentData: Clean7Bit\n"
                                  "%%DocumentSuppliedResources: procset printman 1.0 0\n";
    for (const QByteArray& name : fonts_.names())
        out << "%%+ font " << name.toStdString() << '\n';
    out << "%%EndComments\n%%BeginProlog\n%%BeginResource: procset printman 1.0 0\n"
           "/printman 40 dict def printman begin\n"
        << PsPage::procedures()
        << "/paper{/ph exch def/pw exch def currentpagedevice/PageSize get aload pop\n"
           "ph sub abs 1 gt exch pw sub abs 1 gt or{<</PageSize[pw ph]>>setpagedevice}if}bind def\n"
           "end\n%%EndResource\n%%EndProlog\n";
}

void PsJob::write_setup(PsStream& out) const {
    out << "%%BeginSetup\nprintman begin\n";
    write_fonts(out, fonts_);
    // A distiller would rotate a page by the direction of most of its text.
    out << "/setdistillerparams where{pop 1 dict dup/AutoRotatePages/None put "
           "setdistillerparams}if\n"
           "/pdfmark where{pop}{userdict/pdfmark/cleartomark load put}ifelse\n[/Title";
    write_info_text(out, setup_.title);
    out << "/Creator";
    write_info_text(out, setup_.creator);
    out << "/DOCINFO pdfmark\n<</PageSize[";
    out.integer(first_size_.width()) << ' ';
    out.integer(first_size_.height()) << ']';
    if (!setup_.output_file.isEmpty() && setup_.copies > 1) {
        out << "/NumCopies ";
        out.integer(setup_.copies) << "/Collate " << (setup_.collate ? "true" : "false");
    }
    out << ">>setpagedevice\n%%EndSetup\n";
}

bool PsJob::copy_pages() {
    if (!succeeds(spool_.rewind()))
        return false;
    std::vector<char> block(spool_block);
    for (;;) {
        size_t size = block.size();
        if (!succeeds(spool_.read(block.data(), size)))
            return false;
        if (size == 0)
            return true;
        if (!succeeds(sink_->write({block.data(), size})))
            return false;
    }
}

bool PsJob::end() {
    if (!result_.ok())
        return false;
    end_page();
    if (!result_.ok())
        return false;
    PsStream head;
    if (setup_.output_file.isEmpty())
        head << first_line;
    write_head(head);
    write_setup(head);
    return succeeds(sink_->write(head.text())) && copy_pages() &&
           succeeds(sink_->write("%%Trailer\nend\n%%EOF\n")) && succeeds(sink_->close());
}

void PsJob::discard() {
    if (sink_ && result_.ok())
        sink_->discard();
    spool_.close();
    stream_.clear();
}

} // namespace printman
