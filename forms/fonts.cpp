#include "forms/fonts.h"

#include <QFontInfo>
#include <QGuiApplication>
#include <algorithm>

namespace tessaly {

QFont PlainFont(double points) {
    // Systems come with fonts of 9 to 11 points; what is above is an operator's wish.
    constexpr double kUsual = 11;
    QFont font = QGuiApplication::font();
    font.setPointSizeF(points * std::max(1.0, QFontInfo(font).pointSizeF() / kUsual));
    return font;
}

QFont HeavyFont(double points) {
    QFont font = PlainFont(points);
    font.setBold(true);
    return font;
}

}  // namespace tessaly
