#pragma once

#include <QFont>

namespace printman {

/// Sets the weight of a font on the scale of settings files and records, 0 to 99 with 25 light, 50
/// normal and 75 bold. The font gets the nearest weight that Qt knows.
inline void set_legacy_weight(QFont& font, int weight) {
    QT_WARNING_PUSH
    QT_WARNING_DISABLE_DEPRECATED
    font.setLegacyWeight(weight);
    QT_WARNING_POP
}

/// The weight of a font on the same scale.
inline int legacy_weight(const QFont& font) {
    QT_WARNING_PUSH
    QT_WARNING_DISABLE_DEPRECATED
    return font.legacyWeight();
    QT_WARNING_POP
}

} // namespace printman
