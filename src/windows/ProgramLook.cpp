#include "ProgramLook.h"

#include "Colours.h"
#include "start/ProgramTitle.h"

#include <QApplication>
#include <QFontInfo>
#include <QFontMetrics>
#include <QStyleFactory>
#include <QToolTip>

#include <algorithm>
#include <cmath>

namespace {
constexpr int SmallestFontPixels = 13;
constexpr int LineForFontPixels = 13;

void applyPalette(const QPalette &look) {
    QApplication::setPalette(look);
    QToolTip::setPalette(look);
    for (const char *const kind : {"QLineEdit", "QAbstractItemView", "QRadioButton", "QComboBox"})
        QApplication::setPalette(colour::fieldPalette(look), kind);
}

} // namespace

void applyProgramLook() {
    // Before the style is set, which brings a palette of its own.
    const QPalette look = colour::windowPalette(QApplication::palette());
    QApplication::setStyle(QStyleFactory::create(QStringLiteral("Fusion")));
    applyPalette(look);
    QFont font = QApplication::font();
    if (QFontInfo(font).pixelSize() < SmallestFontPixels)
        font.setPixelSize(SmallestFontPixels);
    QApplication::setFont(font);
    QApplication::setWindowIcon(programIcon());
}

void followDesktop() {
    const QPalette look = colour::windowPalette(QApplication::palette());
    if (look != QApplication::palette())
        applyPalette(look);
}

bool canDrawText() { return QFontMetrics(QApplication::font()).inFont(QLatin1Char('A')); }

int grown(int pixels) {
    const int font = QFontInfo(QApplication::font()).pixelSize();
    return pixels * std::max(font, SmallestFontPixels) / SmallestFontPixels;
}

QSize grown(const QSize &size) { return {grown(size.width()), grown(size.height())}; }

QMargins grown(const QMargins &margins) {
    return {grown(margins.left()), grown(margins.top()), grown(margins.right()),
            grown(margins.bottom())};
}

double lineWidth(const QWidget &widget, double lines) {
    const double screenPixels = widget.devicePixelRatio();
    const double width = lines * widget.fontInfo().pixelSize() / LineForFontPixels;
    return std::max(1.0, std::round(width * screenPixels)) / screenPixels;
}

QIcon programIcon() {
    QIcon icon;
    for (const int side : {16, 22, 24, 32, 48, 64, 128, 256})
        icon.addFile(QStringLiteral(":/%1x%1/apps/%2.png").arg(side).arg(QLatin1String(ProgramId)));
    return icon;
}
