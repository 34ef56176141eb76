#pragma once

#include <printman/printman_export.h>
#include <printman/toolkit/formdialog.h>

#include <QColor>

#include <memory>

class QFrame;
class QLabel;
class QPushButton;
namespace Ui {
class kscolorDlgBase;
}

/// The widgets of the screen color dialog, without behaviour.
class PRINTMAN_EXPORT kscolorDlgBase : public printman::FormDialog {
    Q_OBJECT

public:
    /// @param name the object's name; null or empty for "kscolorDlgBase"
    explicit kscolorDlgBase(QWidget* parent = nullptr, const char* name = nullptr,
                            bool modal = false, Qt::WindowFlags flags = {});
    ~kscolorDlgBase() override;

    QLabel* lbTextColor;
    QFrame* Frame7;
    QLabel* imgTextColor; ///< shows the text color
    QPushButton* btnTextColorBrw;
    QLabel* lbBGColor;
    QFrame* Frame8;
    QLabel* imgBGColor; ///< shows the background color
    QPushButton* btnBGColorBrw;
    QPushButton* btnOK;
    QPushButton* btnCancel;

public slots:
    void languageChange() override;

private:
    std::unique_ptr<Ui::kscolorDlgBase> ui_;
};

/// The dialog in which the user picks the two colors of the report screen. It is as small as its
/// layout allows and cannot be enlarged.
class PRINTMAN_EXPORT KSColorDlg : public kscolorDlgBase {
    Q_OBJECT

public:
    /// Loads both colors and shows them.
    explicit KSColorDlg(QWidget* parent = nullptr, const char* name = nullptr, bool modal = false,
                        Qt::WindowFlags flags = {});

    QColor text_color;       ///< the setting KRV_COLOR_DBG
    QColor background_color; ///< the setting KRV_COLOR_SBG

    /// Reads both colors from the host; components are clamped to 0..255.
    void load_screencolor();

    /// Has the host store both colors, the background first.
    void save_screencolor();

public slots:
    /// Saves both colors and accepts.
    void btnOK_clicked();

    /// Rejects; nothing is saved.
    void btnCancel_clicked();

    /// Lets the user pick the color; when that is canceled, the color stays.
    void btnTextColorBrw_clicked();
    void btnBGColorBrw_clicked();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void paint_swatches();
};
