#include "ProgramLook.h"

#include "Colours.h"
#include "LateIcon.h"
#include "start/ProgramTitle.h"

#include <QApplication>
#include <QCommonStyle>
#include <QFontInfo>
#include <QFontMetrics>
#include <QProxyStyle>
#include <QScreen>
#include <QStyleFactory>
#include <QToolTip>

#include <algorithm>
#include <cmath>

namespace {
constexpr int SmallestWindowFontPixels = 13;
constexpr int LineForFontPixels = 13;

/// Without loading the font, which may not be the one that the program uses.
double pixelSize(const QFont &font) {
    if (font.pixelSize() > 0)
        return font.pixelSize();
    return font.pointSizeF() * QGuiApplication::primaryScreen()->logicalDotsPerInchY() / 72.0;
}

class ProgramStyle : public QProxyStyle {
public:
    ProgramStyle() : QProxyStyle(QStringLiteral("Fusion")) {}

    // Every menu bar has a button for what does not fit, which nothing shows as long as all fits.
    // Its picture comes from a file, and reading one loads the readers of all kinds of files.
    [[nodiscard]] QIcon standardIcon(StandardPixmap kind, const QStyleOption *option,
                                     const QWidget *widget) const override {
        if (kind != SP_ToolBarHorizontalExtensionButton)
            return QProxyStyle::standardIcon(kind, option, widget);
        return QIcon(new LateIcon([kind] { return QCommonStyle().standardIcon(kind); }));
    }
};

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
    QApplication::setStyle(new ProgramStyle);
    applyPalette(look);
    QFont font = QApplication::font();
    if (pixelSize(font) < SmallestWindowFontPixels)
        font.setPixelSize(SmallestWindowFontPixels);
    QApplication::setFont(font);
    QApplication::setWindowIcon(QIcon(new LateIcon(programIcon)));
}

void followDesktop() {
    const QPalette look = colour::windowPalette(QApplication::palette());
    if (look != QApplication::palette())
        applyPalette(look);
}

bool canDrawText() { return QFontMetrics(QApplication::font()).inFont(QLatin1Char('A')); }

int grown(int pixels) {
    const int font = QFontInfo(QApplication::font()).pixelSize();
    return pixels * std::max(font, SmallestWindowFontPixels) / SmallestWindowFontPixels;
}

QSize grown(const QSize &size) { return {grown(size.width()), grown(size.height())}; }

QMargins grown(const QMargins &margins) {
    return {grown(margins.left()), grown(margins.top()), grown(margins.right()),
            grown(margins.bottom())};
}

double screenLine(const QWidget &widget, double width) {
    const double screenPixels = widget.devicePixelRatio();
    return std::max(1.0, std::round(width * screenPixels)) / screenPixels;
}

double lineWidth(const QWidget &widget, double lines) {
    return screenLine(widget, lines * widget.fontInfo().pixelSize() / LineForFontPixels);
}

QIcon programIcon() {
    QIcon icon;
    for (const int side : {16, 22, 24, 32, 48, 64, 128, 256})
        icon.addFile(QStringLiteral(":/%1x%1/apps/%2.png").arg(side).arg(QLatin1String(ProgramId)));
    return icon;
}
