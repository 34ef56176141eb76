#pragma once

#include "tests/support/testhost.h"
#include "tests/support/tools.h"

#include <printman/printman.h>
#include <printman/render/screen.h>
#include <printman/toolkit/qscrollview.h>

#include <QApplication>
#include <QFont>
#include <QImage>
#include <QPixmap>
#include <QTemporaryDir>
#include <QWidget>
#include <gtest/gtest.h>

/// A report on a screen of its own: red text on a yellow page, so that every part of the picture
/// can be told by its color.
class ReportOnScreen : public testing::Test {
protected:
    ReportOnScreen() {
        testhost::reset();
        testhost::set("TMPDIR", scratch_.path().toLocal8Bit());
        testhost::set("KRV_COLOR_SBG", "255,255,0");
        testhost::set("KRV_COLOR_DBG", "255,0,0");
        window_.resize(900, 700);
        window_.show();
    }
    ~ReportOnScreen() override { testhost::reset(); }

    QString file() const { return scratch_.filePath(QStringLiteral("r.rpt")); }

    /// Shows the first page of @p report.
    void show(const QByteArray& report) {
        testsupport::write_file(file(), report);
        ASSERT_EQ(manager_.init_printman(file().toLocal8Bit().constData()), 0);
        const QSize size(800, 600);
        ASSERT_EQ(manager_.init_rpt_view(&window_, &size, &font_), 1);
        ASSERT_EQ(manager_.show_rpt_page(1), 1);
    }

    CScreen* screen() const { return window_.findChild<CScreen*>(); }
    QScrollView* view() const { return window_.findChild<QScrollView*>(); }
    QImage image() const {
        return manager_.page_image() ? manager_.page_image()->toImage() : QImage();
    }

    QTemporaryDir scratch_;
    QFont font_{QStringLiteral("Liberation Mono"), 10};
    QWidget window_;
    CPrintMan manager_;
};
