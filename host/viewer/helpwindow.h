#pragma once

#include "host/viewer/vieweractions.h"

#include <QDialog>

namespace host {

/// A list of what keys and mouse do, which can stay open beside the report.
class HelpWindow : public QDialog {
    Q_OBJECT

public:
    HelpWindow(QWidget* parent, const std::vector<KeyText>& keys);
};

} // namespace host
