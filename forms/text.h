#pragma once

#include <QString>
#include <string>
#include <string_view>

namespace tessaly {

inline QString ToQt(std::u16string_view text) {
    return QStringView(text).toString();
}

inline std::u16string FromQt(const QString& text) {
    return text.toStdU16String();
}

}  // namespace tessaly
