#pragma once

#include "forms/Control.h"

#include <array>
#include <string>
#include <string_view>

/// A part of an address box's text, from the character `from` up to the one before `to`; where both
/// are the same, the cursor.
struct AddressPlace {
    int box = 0; ///< 0 to 3
    int from = 0;
    int to = 0;
};

/// Four boxes for the numbers of an IP address.
struct AddressView {
    std::array<Control, 4> boxes;
    AddressPlace cursor; ///< where the program put it last, which moves the focus there too
    int cursorMoved = 0; ///< counts how often it did
};

/// Joins the numbers 0 to 3 of an address with dots.
std::string joinAddress(const std::array<std::string, 5> &quads);

/// What typing and pasting do to the boxes of an address. A box takes up to three digits; a number
/// above 255 empties it. What is entered goes into the address at once. A full box, or a dot, leads
/// on to the next one, whose number the next digit replaces.
class AddressEntry {
public:
    static constexpr int BoxCount = 4;
    static constexpr int BoxDigits = 3;

    /// @param addressQuads 0 to 3 take the numbers entered
    AddressEntry(AddressView &addressView, std::array<std::string, 5> &addressQuads);

    /// Puts numbers into the boxes without storing them. Blanks that pad a number are not shown.
    void fill(const std::array<std::string, 5> &numbers);

    /// What a box shows.
    [[nodiscard]] const std::string &text(int box) const;

    /// What the boxes stand for, 0 to 3: a number that still is what it was filled with has the
    /// blanks that padded it.
    [[nodiscard]] std::array<std::string, 5> numbers() const;

    /// The user made the text of the box of `before` into `now`, in whatever way; `before` is what
    /// was selected until then, within the text as it was. What was put in counts as one piece:
    /// an address fills all four boxes, a dot leads on, digits are taken as far as there is room,
    /// anything else is not taken.
    void change(AddressPlace before, std::string_view now);

    /// Backspace in an empty box leads back to the one before.
    void backspace(int box);

    /// Empties a box; what it stored stays.
    void empty(int box);

    /// Moves the cursor and the focus to a box, whose text is selected.
    void goTo(int box);

private:
    [[nodiscard]] AddressPlace whole(int box) const;
    [[nodiscard]] AddressPlace endOf(int box) const;
    void moveTo(const AddressPlace &place);
    AddressPlace put(AddressPlace where, std::string_view piece);
    [[nodiscard]] AddressPlace putDot(AddressPlace where) const;
    AddressPlace putDigits(AddressPlace where, std::string_view digits);
    void store(int box, std::string text);
    [[nodiscard]] std::string &shownText(int box);

    AddressView &view;
    std::array<std::string, 5> &quads;
    std::array<std::string, 5> filled;
};
