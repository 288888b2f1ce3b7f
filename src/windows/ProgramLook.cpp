#include "ProgramLook.h"

#include "Colours.h"

#include <QApplication>
#include <QFontInfo>
#include <QFontMetrics>
#include <QPainter>
#include <QStyleFactory>
#include <QToolTip>

#include <algorithm>
#include <cmath>

namespace {
constexpr int SmallestFontPixels = 13;
constexpr int LineForFontPixels = 13;
} // namespace

void applyProgramLook() {
    // Before the style is set, which brings a palette of its own.
    const QPalette look = colour::windowPalette(QApplication::palette());
    QApplication::setStyle(QStyleFactory::create(QStringLiteral("Fusion")));
    QApplication::setPalette(look);
    QToolTip::setPalette(look);
    for (const char *const kind : {"QLineEdit", "QAbstractItemView", "QRadioButton", "QComboBox"})
        QApplication::setPalette(colour::fieldPalette(look), kind);
    QFont font = QApplication::font();
    if (QFontInfo(font).pixelSize() < SmallestFontPixels)
        font.setPixelSize(SmallestFontPixels);
    QApplication::setFont(font);
    QApplication::setWindowIcon(programIcon());
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
    // Drawn on a sheet of 16 x 16: four inputs from the left, four outputs down, four points.
    constexpr double Lines[] = {3.5, 6.5, 9.5, 12.5};
    constexpr int Connected[] = {1, 3, 0, 2};
    QIcon icon;
    for (const int side : {16, 24, 32, 48, 64, 128, 256}) {
        QPixmap picture(side, side);
        picture.fill(Qt::transparent);
        QPainter painter(&picture);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.scale(side / 16.0, side / 16.0);
        painter.setPen(Qt::NoPen);
        painter.setBrush(QColor(38, 50, 66));
        painter.drawRoundedRect(QRectF(0, 0, 16, 16), 3, 3);
        painter.setPen(QPen(QColor(150, 168, 190), 0.8));
        for (const double line : Lines) {
            painter.drawLine(QPointF(1.5, line), QPointF(14.5, line));
            painter.drawLine(QPointF(line, 1.5), QPointF(line, 14.5));
        }
        painter.setPen(Qt::NoPen);
        painter.setBrush(QColor(255, 176, 32));
        for (std::size_t row = 0; row < std::size(Lines); ++row)
            painter.drawEllipse(QPointF(Lines[Connected[row]], Lines[row]), 1.3, 1.3);
        icon.addPixmap(picture);
    }
    return icon;
}
