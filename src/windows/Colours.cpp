#include "Colours.h"

namespace colour {

QColor of(Face face) {
    switch (face) {
    case Face::Busy:
        return {255, 128, 128};
    case Face::Chosen:
    case Face::Unmuted:
        return {214, 241, 194};
    case Face::Muted:
        return {247, 166, 157};
    case Face::Neutral:
        break;
    }
    return Neutral;
}

QColor of(LinkColour link, const QPalette &platform) {
    switch (link) {
    case LinkColour::ButtonFace:
        return platform.color(QPalette::Button);
    case LinkColour::NetworkUp:
        return {255, 128, 0};
    case LinkColour::SerialUp:
        return {0, 192, 0};
    case LinkColour::SerialDown:
        return {192, 0, 0};
    case LinkColour::NotConnected:
        break;
    }
    return {255, 0, 0};
}

QColor textOn(const QColor &background) {
    const int light = background.red() * 299 + background.green() * 587 + background.blue() * 114;
    return light >= 125000 ? Text : QColor(Qt::white);
}

} // namespace colour
