#pragma once

#include <string>
#include <vector>

/// What the face of a button says. The colours are the windows' business.
enum class Face { Neutral, Busy, Chosen, Muted, Unmuted };

/// One control as its window is to show it.
struct Control {
    std::string text{}; ///< caption or content; Latin-1 unless the form says otherwise
    bool visible = true;
    bool enabled = true;
    bool lit = false; ///< a lamp that is lit, an option that is chosen
    Face face = Face::Neutral;
    bool picked = false;       ///< a button that is part of what is about to be sent
    std::string toolTip{};     ///< what the pointer shows, UTF-8; empty: none
    std::string description{}; ///< what is spoken after the name, UTF-8; empty: none
    bool operator==(const Control &) const = default;
};

/// A list of texts of which at most one is chosen.
struct ListControl {
    Control control{};
    std::vector<std::string> entries{};
    int chosen = -1; ///< 0 upward; -1: none
    bool operator==(const ListControl &) const = default;
};
