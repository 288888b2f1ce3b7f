#pragma once

#include "Lamp.h"
#include "forms/Control.h"

#include <QString>
#include <QWidget>

#include <map>
#include <string>

/// The colour of one pixel of a widget, as "#rrggbb".
inline std::string pixel(QWidget *widget, int x, int y) {
    return widget->grab().toImage().pixelColor(x, y).name().toStdString();
}

/// What a control looks like on screen: hidden, greyed, the text, and of buttons and lamps the
/// colour.
inline std::string look(QWidget *widget) {
    const bool frame = widget->inherits("QGroupBox");
    std::string all = widget->property(frame ? "title" : "text").toString().toStdString();
    all += widget->isHidden() ? " hidden" : "";
    all += widget->isEnabledTo(widget->parentWidget()) ? "" : " greyed";
    if (widget->inherits("QRadioButton"))
        all += widget->property("checked").toBool() ? " lit" : "";
    else if (widget->inherits("QPushButton") && widget->isEnabled() && widget->isVisible())
        all += " " + pixel(widget, widget->width() / 2, 3);
    else if (dynamic_cast<Lamp *>(widget))
        all += pixel(widget, widget->width() / 2, widget->height() / 2) == "#14963c" ? " lit" : "";
    return all;
}

/// What it should look like.
inline std::string wanted(QWidget *widget, const Control &control) {
    static const std::map<Face, std::string> faces{{Face::Neutral, " #e0e0e0"},
                                                   {Face::Busy, " #ff8080"},
                                                   {Face::Chosen, " #d6f1c2"},
                                                   {Face::Muted, " #f7a69d"},
                                                   {Face::Unmuted, " #d6f1c2"}};
    const bool hasText = widget->property("text").isValid() || widget->property("title").isValid();
    std::string all = hasText ? QString::fromLatin1(control.text).toStdString() : "";
    all += control.visible ? "" : " hidden";
    all += control.enabled ? "" : " greyed";
    if (widget->inherits("QPushButton"))
        return all + (widget->isEnabled() && widget->isVisible() ? faces.at(control.face) : "");
    const bool lights = widget->inherits("QRadioButton") || dynamic_cast<Lamp *>(widget);
    return all + (lights && control.lit ? " lit" : "");
}

/// Gives a control a look that differs from one `number` and from one `round` to the next.
inline void change(Control &control, int number, int round) {
    control = {.text = "<b>" + std::to_string(number + round) + "\xE4",
               .visible = (number + round) % 3 != 0,
               .enabled = (number + round) % 4 != 0,
               .lit = (number + round) % 2 != 0,
               .face = static_cast<Face>((number + round) % 5)};
}
