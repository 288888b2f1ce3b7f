#include "Colours.h"

namespace colour {

namespace {

const QColor DarkText(28, 33, 40);

const Ground Light{
    .window{238, 240, 243},
    .card{250, 251, 252},
    .edge{206, 211, 217},
    .field{255, 255, 255},
    .button = Neutral,
    .text = DarkText,
    .disabledText{140, 146, 153},
    .focus{0, 95, 184},
    .pointed{96, 104, 114},
    .selection{0, 95, 184},
    .lampEdge{92, 99, 107},
    .linkUp{20, 140, 60},
    .linkDown{176, 40, 40},
};

// The focus has to be seen on faces, which stay light, and beside them.
const Ground Dark{
    .window{38, 41, 47},
    .card{49, 53, 60},
    .edge{78, 85, 94},
    .field{24, 26, 30},
    .button{72, 78, 87},
    .text{232, 235, 239},
    .disabledText{136, 143, 152},
    .focus{38, 132, 240},
    .pointed{166, 173, 182},
    .selection{30, 98, 186},
    .lampEdge{150, 157, 166},
    .linkUp{60, 190, 100},
    .linkDown{235, 96, 96},
};

} // namespace

bool isDark(const QPalette &palette) {
    return palette.color(QPalette::Window).lightness() <
           palette.color(QPalette::WindowText).lightness();
}

const Ground &ground(const QPalette &palette) { return isDark(palette) ? Dark : Light; }

QPalette windowPalette(const QPalette &desktop) {
    const Ground &look = ground(desktop);
    QPalette made(look.button, look.window);
    const auto set = [&made](std::initializer_list<QPalette::ColorRole> roles, const QColor &colour,
                             QPalette::ColorGroup group = QPalette::All) {
        for (const QPalette::ColorRole role : roles)
            made.setColor(group, role, colour);
    };
    set({QPalette::Window}, look.window);
    set({QPalette::Button}, look.button);
    set({QPalette::WindowText, QPalette::Text, QPalette::ButtonText, QPalette::ToolTipText,
         QPalette::PlaceholderText},
        look.text);
    set({QPalette::Base}, look.field);
    set({QPalette::AlternateBase, QPalette::ToolTipBase}, look.card);
    set({QPalette::Highlight}, look.selection);
    set({QPalette::Link}, look.focus);
    set({QPalette::HighlightedText}, Qt::white);
    set({QPalette::WindowText, QPalette::Text, QPalette::ButtonText, QPalette::PlaceholderText,
         QPalette::HighlightedText},
        look.disabledText, QPalette::Disabled);
    set({QPalette::Base, QPalette::AlternateBase}, look.window, QPalette::Disabled);
    set({QPalette::Highlight}, look.edge, QPalette::Disabled);
    return made;
}

QPalette fieldPalette(const QPalette &windows) {
    QPalette made = windows;
    // The style draws edges in a darker window colour, which a dark ground would swallow.
    if (isDark(windows))
        made.setColor(QPalette::Window, QColor(150, 158, 168));
    return made;
}

QColor mixed(const QColor &over, const QColor &under, double opacity) {
    const auto channel = [opacity](int one, int other) {
        return qRound(one * opacity + other * (1.0 - opacity));
    };
    return {channel(over.red(), under.red()), channel(over.green(), under.green()),
            channel(over.blue(), under.blue())};
}

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
    return light >= 125000 ? DarkText : QColor(Qt::white);
}

} // namespace colour
