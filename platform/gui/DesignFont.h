// Every caption of the forms is set in Verdana (a sans face stands in where it
// is not installed).
#pragma once

#include <QFont>

namespace vantorin {

inline QFont DesignFont(double points = 8.25, bool bold = false) {
    QFont font(QStringLiteral("Verdana"));
    font.setPointSizeF(points);
    font.setBold(bold);
    return font;
}

}  // namespace vantorin
