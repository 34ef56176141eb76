#pragma once

#include <QFont>

namespace printman {

/// The weight of a font on the scale of 0 to 99 on which 50 is normal, 25 light and 75 bold: what
/// settings files and records hold. It is mapped to the nearest weight that the toolkit knows.
inline void set_legacy_weight(QFont& font, int weight) {
    QT_WARNING_PUSH
    QT_WARNING_DISABLE_DEPRECATED
    font.setLegacyWeight(weight);
    QT_WARNING_POP
}

inline int legacy_weight(const QFont& font) {
    QT_WARNING_PUSH
    QT_WARNING_DISABLE_DEPRECATED
    return font.legacyWeight();
    QT_WARNING_POP
}

} // namespace printman
