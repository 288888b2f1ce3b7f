#pragma once

#include <array>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

/// The four boxes in which an IP address is entered, and what typing and pasting do to them. A box
/// takes up to three digits; a number above 255 empties it. What is entered goes into the address
/// at once. A full box, or a dot, leads on to the next one, whose number the next digit replaces.
class AddressEntry {
public:
    static constexpr int BoxCount = 4;
    static constexpr int BoxDigits = 3;

    /// A part of a box's text, from the character `from` up to the one before `to`; where both are
    /// the same, the cursor.
    struct Place {
        int box = 0; ///< 0 to 3
        int from = 0;
        int to = 0;
    };

    /// @param addressQuads 0 to 3 take the numbers entered
    explicit AddressEntry(std::array<std::string, 5> &addressQuads);

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
    /// @return where the cursor belongs; nothing if it stays where it is
    std::optional<Place> change(Place before, std::string_view now);

    /// Where Backspace leads in a box; nothing if it deletes as usual.
    [[nodiscard]] std::optional<Place> back(int box) const;

    /// The whole text of a box.
    [[nodiscard]] Place whole(int box) const;

    /// A number is stored, and checked, only while this holds.
    std::function<bool()> accepts = [] { return true; };

private:
    [[nodiscard]] Place endOf(int box) const;
    Place put(Place where, std::string_view piece);
    Place putDot(Place where) const;
    Place putDigits(Place where, std::string_view digits);
    void store(int box, std::string text);

    std::array<std::string, 5> &quads;
    std::array<std::string, 5> filled;
    std::array<std::string, 4> texts;
};
