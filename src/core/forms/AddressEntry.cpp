#include "forms/AddressEntry.h"

#include "protocol/Text.h"

#include <algorithm>
#include <optional>
#include <utility>

namespace {

constexpr std::string_view Blanks = " \t\r\n";
constexpr double HighestNumber = 255.0;

std::size_t at(int index) { return static_cast<std::size_t>(index); }

std::string_view trimmed(std::string_view text) {
    const std::size_t first = text.find_first_not_of(Blanks);
    if (first == std::string_view::npos)
        return {};
    return text.substr(first, text.find_last_not_of(Blanks) - first + 1);
}

bool isNumber(std::string_view text) {
    return std::all_of(text.begin(), text.end(), [](char c) { return c >= '0' && c <= '9'; });
}

/// The four numbers of a dotted address; nothing if the text is anything else.
std::optional<std::array<std::string, 4>> addressIn(std::string_view text) {
    std::array<std::string, 4> numbers;
    for (std::size_t number = 0; number < numbers.size(); ++number) {
        const bool last = number + 1 == numbers.size();
        const std::size_t end = last ? text.size() : text.find('.');
        if (end == 0 || end > at(AddressEntry::BoxDigits) || !isNumber(text.substr(0, end)))
            return std::nullopt;
        numbers.at(number) = text.substr(0, end);
        text.remove_prefix(last ? end : end + 1);
    }
    return numbers;
}

} // namespace

std::string joinAddress(const std::array<std::string, 5> &quads) {
    return quads[0] + "." + quads[1] + "." + quads[2] + "." + quads[3];
}

AddressEntry::AddressEntry(AddressView &addressView, std::array<std::string, 5> &addressQuads)
    : view(addressView), quads(addressQuads) {}

void AddressEntry::fill(const std::array<std::string, 5> &numbers) {
    filled = numbers;
    for (int box = 0; box < BoxCount; ++box)
        shownText(box) = trimmed(numbers.at(at(box)));
}

std::string &AddressEntry::shownText(int box) { return view.boxes.at(at(box)).text; }

const std::string &AddressEntry::text(int box) const { return view.boxes.at(at(box)).text; }

std::array<std::string, 5> AddressEntry::numbers() const {
    std::array<std::string, 5> all;
    for (int box = 0; box < BoxCount; ++box) {
        const std::string &before = filled.at(at(box));
        all.at(at(box)) = text(box) == trimmed(before) ? before : text(box);
    }
    return all;
}

void AddressEntry::change(AddressPlace before, std::string_view now) {
    const std::string_view old = text(before.box);
    before.to = std::clamp(before.to, 0, static_cast<int>(old.size()));
    before.from = std::clamp(before.from, 0, before.to);
    const std::string_view head = old.substr(0, at(before.from));
    const std::string_view tail = old.substr(at(before.to));
    const bool putIn =
        now.size() > head.size() + tail.size() && now.starts_with(head) && now.ends_with(tail);
    if (putIn) {
        now.remove_prefix(head.size());
        now.remove_suffix(tail.size());
        moveTo(put(before, now));
    } else if (now.size() < old.size() && (isNumber(now) || !isNumber(old))) {
        // A file can hold what is no number; it must be possible to delete it.
        store(before.box, std::string(now));
    } else {
        moveTo(put(whole(before.box), now));
    }
}

void AddressEntry::backspace(int box) {
    if (box > 0 && text(box).empty())
        moveTo(endOf(box - 1));
}

void AddressEntry::empty(int box) { shownText(box).clear(); }

void AddressEntry::goTo(int box) { moveTo(whole(box)); }

AddressPlace AddressEntry::whole(int box) const {
    return {box, 0, static_cast<int>(text(box).size())};
}

AddressPlace AddressEntry::endOf(int box) const {
    const int end = static_cast<int>(text(box).size());
    return {box, end, end};
}

void AddressEntry::moveTo(const AddressPlace &place) {
    view.cursor = place;
    ++view.cursorMoved;
}

AddressPlace AddressEntry::put(AddressPlace where, std::string_view piece) {
    piece = trimmed(piece);
    if (const auto address = addressIn(piece)) {
        for (int box = 0; box < BoxCount; ++box)
            store(box, address->at(at(box)));
        return endOf(BoxCount - 1);
    }
    if (piece == ".")
        return putDot(where);
    if (piece.empty() || !isNumber(piece))
        return where;
    return putDigits(where, piece);
}

AddressPlace AddressEntry::putDot(AddressPlace where) const {
    // Nothing typed here yet: the dot belongs to the full box before, which led here by itself.
    const bool untouched = text(where.box).empty() || where.from != where.to;
    return untouched || where.box == BoxCount - 1 ? where : whole(where.box + 1);
}

AddressPlace AddressEntry::putDigits(AddressPlace where, std::string_view digits) {
    std::string number = text(where.box);
    number.erase(at(where.from), at(where.to - where.from));
    if (number.size() >= at(BoxDigits))
        return where;
    digits = digits.substr(0, at(BoxDigits) - number.size());
    number.insert(at(where.from), digits);
    store(where.box, std::move(number));
    const std::size_t length = text(where.box).size();
    if (length == at(BoxDigits) && where.box != BoxCount - 1)
        return whole(where.box + 1);
    const int cursor = static_cast<int>(std::min(at(where.from) + digits.size(), length));
    return {where.box, cursor, cursor};
}

void AddressEntry::store(int box, std::string text) {
    std::string &shown = shownText(box);
    shown = std::move(text);
    const double value = leadingNumber(shown);
    if (value >= 0.0 && value <= HighestNumber) {
        quads.at(at(box)) = decimalText(value);
    } else {
        shown.clear();
        quads.at(at(box)).clear();
    }
}
