#include "ui/qt/OutputFont.h"

#include "base/Error.h"
#include "base/Numbers.h"
#include "ui/qt/Text.h"

namespace mw {
namespace {

constexpr int kDefaultFontSize = 10;
constexpr int kLargestFontSize = 200;

int PointSize(const std::string& text) {
    if (!IsNumeric(text))
        return kDefaultFontSize;
    try {
        const int size = ToInt16(text);
        return size >= 1 && size <= kLargestFontSize ? size : kDefaultFontSize;
    } catch (const Error&) {
        return kDefaultFontSize;
    }
}

} // namespace

QFont OutputFont(const std::string& family, const std::string& size) {
    QFont font(ToQString(family), PointSize(size));
    font.setStyleHint(QFont::Monospace);
    font.setFixedPitch(true);
    return font;
}

} // namespace mw
