#pragma once

#include "tests/support/tools.h"

#include <printman/toolkit/psprinter.h>

#include <QPageLayout>
#include <QPainter>
#include <QTemporaryDir>
#include <gtest/gtest.h>

#include <functional>

/// Paints on a PsPrinter and looks at the PDF that Ghostscript makes of it.
class PsPrinterPdf : public testing::Test {
protected:
    /// Paints a job of one page, unless @p paint turns pages itself.
    void print(const std::function<void(QPainter&)>& paint) {
        ps_ = scratch_.filePath(QStringLiteral("job.ps"));
        printer_.setOutputFileName(ps_);
        QPainter p;
        ASSERT_TRUE(p.begin(&printer_));
        paint(p);
        ASSERT_TRUE(p.end()) << printer_.errorString().toStdString();
        pdf_ = testsupport::make_pdf(ps_);
        ASSERT_FALSE(pdf_.isEmpty());
    }

    /// Paints one text with a font.
    void print_text(const char* family, const QString& text) {
        print([&](QPainter& p) {
            p.setFont(QFont(QString::fromLatin1(family), 12));
            p.drawText(100, 300, text);
        });
    }

    /// The pixel of the first page at a place in device pixels from the painted area's corner.
    QColor pixel(int x, int y, int page = 1) {
        constexpr int dpi = 75;
        if (picture_page_ != page) {
            picture_ = testsupport::pdf_picture(pdf_, page, dpi);
            picture_page_ = page;
        }
        const QRect area = printer_.pageLayout().paintRectPixels(600);
        return picture_.pixelColor((x + area.x()) / 8, (y + area.y()) / 8);
    }

    QString words() const { return testsupport::pdf_words(pdf_).join(u' '); }

    QTemporaryDir scratch_;
    PsPrinter printer_;
    QString ps_;
    QString pdf_;
    QImage picture_;
    int picture_page_ = 0;
};
